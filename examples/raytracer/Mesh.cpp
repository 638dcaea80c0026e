#include "Mesh.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <unordered_map>

#include <tiny_obj_loader.h>

#include "ObjText.h"
#include "Options.h"
#include "UserError.h"
#include "bv/maths/Batch.h"
#include "bv/maths/Componentwise.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tTuple3.h"

namespace raytracer
{

namespace
{

constexpr double LONGEST_SIDE = 2;
constexpr float LEAST_COSINE = 0.25F; // between two faces that make a smooth edge

std::string ReadFile(std::string const& path)
{
    if (std::filesystem::is_directory(path))
        throw UserError(path + ": is a folder, not a mesh");
    std::unique_ptr<std::FILE, decltype([](std::FILE* file) { static_cast<void>(std::fclose(file)); })> const file(
        std::fopen(path.c_str(), "rb"));
    if (!file)
        throw UserError(path + ": " + std::generic_category().message(errno));
    std::string text;
    std::array<char, 65536> bytes{};
    while (std::size_t const count = std::fread(bytes.data(), 1, bytes.size(), file.get()))
        text.append(bytes.data(), count);
    if (std::ferror(file.get()) != 0)
        throw UserError(path + ": cannot be read: " + std::generic_category().message(errno));
    return text;
}

/// One line, without the blanks and line ends around it.
std::string OneLine(std::string text)
{
    std::ranges::replace(text, '\n', ' ');
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::vector<Vector3d> GetPositions(std::string const& path, tinyobj::attrib_t const& attributes)
{
    std::vector<Vector3d> positions;
    for (std::size_t i = 0; i + 2 < attributes.vertices.size(); i += 3)
        positions.emplace_back(Vector3f(&attributes.vertices[i]));
    // The reader's numbers overflow on the way, when they have hundreds of digits.
    if (std::ranges::any_of(attributes.vertices, [](float coordinate) { return !std::isfinite(coordinate); }))
        throw UserError(path + ": a coordinate has too many digits");
    return positions;
}

std::vector<Tuple3u> GetTriangles(std::vector<tinyobj::shape_t> const& shapes)
{
    std::vector<Tuple3u> triangles;
    for (tinyobj::shape_t const& shape : shapes)
    {
        std::size_t first = 0;
        for (unsigned const faceSize : shape.mesh.num_face_vertices)
        {
            auto const corner = [&](std::size_t i)
            { return static_cast<unsigned>(shape.mesh.indices[first + i].vertex_index); };
            for (std::size_t i = 2; i < faceSize; ++i)
                triangles.emplace_back(corner(0), corner(i - 1), corner(i));
            first += faceSize;
        }
    }
    return triangles;
}

/// Turns the file's axes into the world's, scales, and sets the mesh on the floor.
std::vector<Vector3f> Place(std::string const& path, std::vector<Vector3d> positions, CoordinateFramef const& axes)
{
    CoordinateFramed const world(WORLD.GetX(), WORLD.GetY(), WORLD.GetZ());
    Matrix4d const turn = world.CreateRotationMatrix(axes.GetX(), axes.GetY(), axes.GetZ());
    TransformPoints(turn, positions, positions);
    VolumeAABBd box;
    ExpandBox(box, positions);

    double const longest = GetMaxComponent(box.GetDiagonal());
    if (!(longest > 0))
        throw UserError(path + ": all vertices are at one point");
    // By hand, since a matrix of huge or tiny elements counts them as zeros when it classifies itself.
    Vector3d const foot(box.GetCentre().x, box.GetMin().y, box.GetCentre().z);
    std::vector<Vector3f> placed;
    for (Vector3d const& position : positions)
        placed.emplace_back((position - foot) * (LONGEST_SIDE / longest));
    return placed;
}

/// Gives each corner the sum of the triangles around it, as far as they lie smoothly to its own. Corners at one place
/// belong together, so that no seam shows where a file repeats a vertex.
void SetNormals(std::vector<Triangle>& triangles)
{
    // Adding zero gives both zeros, which are the same place, the same bits.
    auto const hash = [](Vector3f const& place) { return Tuple3f(place.x + 0, place.y + 0, place.z + 0).GetHash32(); };
    auto const isSame = [](Vector3f const& a, Vector3f const& b) { return a.x == b.x && a.y == b.y && a.z == b.z; };
    std::unordered_map<Vector3f, std::vector<Vector3f>, decltype(hash), decltype(isSame)> around(0, hash, isSame);
    for (Triangle const& triangle : triangles)
    {
        for (Vector3f const& corner : triangle.corners)
            around[corner].push_back(triangle.GetCross());
    }
    for (Triangle& triangle : triangles)
    {
        Vector3f const own = triangle.GetCross();
        for (std::size_t i = 0; i < triangle.corners.size(); ++i)
        {
            Vector3f sum;
            for (Vector3f const& other : around[triangle.corners[i]])
            {
                if (own.Dot(other) >= LEAST_COSINE * own.Length() * other.Length())
                    sum += other;
            }
            triangle.normals[i] = sum.Normalised();
        }
    }
}

} // namespace

Mesh LoadMesh(std::string const& path, CoordinateFramef const& axes)
{
    std::string const text = GetGeometry(path, ReadFile(path));
    tinyobj::ObjReaderConfig config;
    config.triangulate = false; // indices are checked first
    tinyobj::ObjReader reader;
    if (!reader.ParseFromString(text, "", config))
        throw UserError(path + ": " + OneLine(reader.Error()));
    std::vector<Vector3d> const positions = GetPositions(path, reader.GetAttrib());
    if (positions.empty())
        throw UserError(path + ": is not a Wavefront OBJ file, it has no vertex");

    std::vector<Tuple3u> const faces = GetTriangles(reader.GetShapes());
    if (faces.empty())
        throw UserError(path + ": has no triangle");

    std::vector<Vector3f> const corners = Place(path, positions, axes);
    Mesh mesh;
    for (Tuple3u const& face : faces)
        mesh.triangles.push_back({{corners.at(face.x), corners.at(face.y), corners.at(face.z)}, {}});
    ExpandBox(mesh.bounds, corners);
    SetNormals(mesh.triangles);
    return mesh;
}

} // namespace raytracer
