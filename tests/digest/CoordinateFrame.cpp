#include <cstddef>
#include <vector>

#include <bv/maths/tCoordinateFrame.h>

#include "Matrices.h"
#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Frames(Digests& digests, Workload&)
{
    std::vector<tCoordinateFrame<T>> frames;
    for (unsigned char x = 0; x < 7; ++x)
        for (unsigned char y = 0; y < 7; ++y)
            for (unsigned char z = 0; z < 7; ++z)
            {
                tCoordinateFrame<T> set;
                digests["construction"].Try([&] { return set.Set(x, y, z).GetX(); });
                digests["construction"].Add(set.GetX(), set.GetY(), set.GetZ());
                digests["construction"].Try(
                    [&]
                    {
                        tCoordinateFrame<T> const frame(x, y, z);
                        frames.push_back(frame);
                        return frame.GetHandedness();
                    });
            }
    for (std::size_t i = 0; i < frames.size(); ++i)
    {
        for (unsigned char direction = 0; direction < 8; ++direction)
            digests["vectors"].Add(frames[i].GetVector(direction));
        for (std::size_t k = i % 5; k < frames.size(); k += 5)
        {
            AddWhole(digests["rotations"], frames[i].CreateRotationMatrix(frames[k]));
            unsigned char faces[6] = {9, 9, 9, 9, 9, 9};
            frames[i].MapCubeMap(frames[k], faces);
            for (unsigned char const face : faces)
                digests["cube-maps"].Add(face);
            unsigned char const x = frames[k].GetX();
            unsigned char const y = frames[k].GetY();
            unsigned char const z = frames[k].GetZ();
            AddWhole(digests["rotations-to-axes"], frames[i].CreateRotationMatrix(x, y, z));
            frames[i].MapCubeMap(x, y, z, faces);
            for (unsigned char const face : faces)
                digests["cube-maps-to-axes"].Add(face);
        }
    }
}

} // namespace

void RunCoordinateFrames()
{
    RunBoth("frames", Frames<float>, Frames<double>);
}

} // namespace digest
