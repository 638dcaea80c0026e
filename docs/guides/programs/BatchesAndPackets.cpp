// Many at a time: arrays of points and boxes, and packets of rays.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <vector>

#include <bv/maths/Batch.h>
#include <bv/maths/View.h>
#include <bv/maths/simd/SSERay.h>
#include <bv/maths/tFrustum.h>

using namespace bv::maths;

namespace
{

//! [records]
struct Vertex
{
    Vector3f position;
    float u, v;
};

void Place(Matrix4f const& world, std::vector<Vertex>& vertices)
{
    tVectorView<float> const positions(vertices, &Vertex::position);
    TransformPoints(world, positions, positions); // in place
}
//! [records]

void ShowVertices()
{
    std::vector<Vertex> vertices;
    for (int i = 0; i < 1000; ++i)
        vertices.push_back({Vector3f(static_cast<float>(i), 1, 2), 0, 0});
    Matrix4f const world = Matrix4f::Translate(Vector3f(1, 2, 3)) * Matrix4f::Scale(2);
    Vector3f const alone = vertices.back().position.Transformed(world);
    Place(world, vertices);
    std::cout << "the last vertex: " << vertices.back().position << '\n';
    bool const isSame = std::memcmp(&alone, &vertices.back().position, sizeof alone) == 0;
    std::cout << "the bits of the single form: " << isSame << '\n';
}

void ShowBoxes()
{
    //! [boxes]
    std::vector<VolumeAABBf> boxes; // a row of cubes, 20 in front of the eye
    for (int i = -10; i <= 10; ++i)
    {
        Vector3f const middle(static_cast<float>(4 * i), 0, -20);
        boxes.emplace_back(middle - Vector3f(0.5F, 0.5F, 0.5F), middle + Vector3f(0.5F, 0.5F, 0.5F));
    }
    Frustumf const view(PerspectiveFromTangent(1.0F, 1, 1, 100));
    std::vector<std::uint32_t> visible(boxes.size());
    visible.resize(ListVisibleBoxes(view, boxes, visible));
    std::cout << "visible: " << visible.size() << " of " << boxes.size() << ", " << visible.front() << " to "
              << visible.back() << '\n';
    //! [boxes]
}

void ShowPackets()
{
    //! [packets]
    std::vector<Rayf> rays; // side by side, down -z
    for (int i = 0; i < 6; ++i)
        rays.emplace_back(Vector3f(static_cast<float>(i), 0, 5), Vector3f(0, 0, -1));
    constexpr std::size_t WIDTH = simd::SSERay::WIDTH; // 4
    std::vector<simd::SSERay> packets((rays.size() + WIDTH - 1) / WIDTH);
    simd::FillPackets(rays, packets); // the last ray fills what is left of the last packet

    VolumeAABBf const box(Vector3f(-1, -1, -1), Vector3f(2.5F, 1, 1));
    for (simd::SSERay const& packet : packets)
    {
        simd::FourFloats entries = {0, 0, 0, 0};
        simd::FourFloats exits = {100, 100, 100, 100};
        simd::FourFloats const mask = packet.Clip(box, entries, exits);
        std::uint32_t hits[WIDTH]; // all bits set, or none
        std::memcpy(hits, &mask, sizeof hits);
        std::cout << "packet:";
        for (std::uint32_t const hit : hits)
            std::cout << (hit != 0 ? " hit" : " miss");
        std::cout << '\n';
    }
    //! [packets]
}

} // namespace

int main()
{
    std::cout << std::boolalpha;
    ShowVertices();
    ShowBoxes();
    ShowPackets();
}
