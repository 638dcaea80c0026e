// A ball, drawn with letters.
#include <algorithm>
#include <iostream>
#include <string>

#include <bv/maths/View.h>
#include <bv/maths/tPixelRays.h>
#include <bv/maths/tVolumeSphere.h>

using namespace bv::maths;

int main()
{
    //! [camera]
    Vector2f const size(48, 24); // letters, which are twice as high as wide
    Matrix4f const camera = PlaceCamera(Vector3f(0, 1, 4), Vector3f(0, 0, 0), Vector3f(0, 1, 0));
    Matrix4f const projection = PerspectiveFromTangent(0.3F, 1, 0.1F, 100);
    PixelRaysf const rays(size, projection, camera);
    //! [camera]

    //! [scene]
    VolumeSpheref const ball(Vector3f(0, 0, 0), 1); // centre and squared radius
    Vector3f const light = Vector3f(-1, 2, 2).Normalised();
    //! [scene]

    //! [loop]
    for (float y = 0.5F; y < size.y; ++y)
    {
        std::string line;
        for (float x = 0.5F; x < size.x; ++x)
        {
            Rayf const ray = rays(Vector2f(x, y));
            float entry = 0;
            float exit = 0;
            if (!ray.Clip(ball, entry, exit))
            {
                line += ' ';
                continue;
            }
            Vector3f const normal = ray.origin + ray.direction * entry - ball.GetCentre(); // as long as the radius
            float const brightness = std::clamp(normal.Dot(light), 0.0F, 0.999F);
            line += ".:-=+*#%@"[static_cast<int>(brightness * 9)];
        }
        std::cout << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
    //! [loop]
}
