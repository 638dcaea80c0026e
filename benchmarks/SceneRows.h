#pragma once

/// @file
/// The rows on what renderers do with the operations. The loops are the same for every library; what they call is what
/// that library's users would write, a structure of types and functions with
///
/// - `Matrix`, `Affine`, `Vector`, `Box`, `View`, and `makeMatrix`, `makeAffine`, `makeVector`, `makeBox` from numbers;
/// - `chain`, `product`, `inverse` and `view` (the planes of a combined matrix) of projective matrices;
/// - `composed`, `inverted` and `moved` of the scene graph, `mainView` and `cull` to see what is in view;
/// - `skinned`, a vertex moved by its bones; where a library has a form of a matrix for that, `prepared` makes it in
/// each
///   pass, from every bone;
/// - `normalised` and `enter`, the parameter where a ray enters a box, or -1;
/// - `append`, which gives the numbers of each type, matrices row by row.
///
/// A library leaves out what it has no types for.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Agreement.h"
#include "Bench.h"
#include "SceneData.h"

namespace bench
{

/// The numbers of every element of an array. The rows' numbers come from the pass that is timed, so that its operations
/// are inlined into one place.
template <typename Library, typename Item>
void AppendAll(std::vector<double>& numbers, std::vector<Item> const& items)
{
    for (Item const& item : items)
        Library::append(numbers, item);
}

template <typename T, typename Library>
void AddChain()
{
    using Matrix = typename Library::Matrix;
    std::string const name = Name<T>("scene/chain of three products", Library::NAME);
    auto const a = Build(GeneralMatrices(1), 16, Library::makeMatrix);
    auto const b = Build(GeneralMatrices(2), 16, Library::makeMatrix);
    auto const c = Build(GeneralMatrices(3), 16, Library::makeMatrix);
    auto const d = Build(GeneralMatrices(4), 16, Library::makeMatrix);
    auto const out = std::make_shared<std::vector<Matrix>>(a.size());
    auto run = [=]
    {
        Matrix* const results = out->data();
        benchmark::DoNotOptimize(results);
        for (std::size_t i = 0; i < a.size(); ++i)
            results[i] = Library::chain(a[i], b[i], c[i], d[i]);
    };
    AddRun(name, a.size(), run);
    AddNumbers(name,
               [=]() mutable
               {
                   Pass(run);
                   std::vector<double> numbers;
                   AppendAll<Library>(numbers, *out);
                   return numbers;
               });
}

/// What a camera hands on to a renderer.
template <typename Library>
struct Camera
{
    typename Library::Matrix combined; ///< from the world to clip space
    typename Library::Matrix inverse;
    typename Library::View view;
};

template <typename T, typename Library>
void AddCamera()
{
    using Matrix = typename Library::Matrix;
    std::string const name = Name<T>("scene/camera set-up", Library::NAME);
    auto const views = Build(ViewMatrices(), 16, Library::makeMatrix);
    auto const projections = Build(ProjectionMatrices(), 16, Library::makeMatrix);
    auto const out = std::make_shared<std::vector<Camera<Library>>>(views.size());
    auto run = [=]
    {
        Camera<Library>* const cameras = out->data();
        benchmark::DoNotOptimize(cameras);
        for (std::size_t i = 0; i < views.size(); ++i)
        {
            Matrix const combined = Library::product(projections[i], views[i]);
            cameras[i].combined = combined;
            cameras[i].inverse = Library::inverse(combined);
            cameras[i].view = Library::view(combined);
        }
    };
    AddRun(name, views.size(), run);
    AddNumbers(name,
               [=]() mutable
               {
                   Pass(run);
                   std::vector<double> numbers;
                   for (Camera<Library> const& camera : *out)
                   {
                       Library::append(numbers, camera.combined);
                       Library::append(numbers, camera.inverse);
                       Library::append(numbers, camera.view);
                   }
                   return numbers;
               });
}

/// What a frame makes of the scene graph.
template <typename Library>
struct Frame
{
    std::vector<typename Library::Affine> worlds = std::vector<typename Library::Affine>(NODE_COUNT);
    std::vector<typename Library::Affine> inverses = std::vector<typename Library::Affine>(NODE_COUNT);
    std::vector<typename Library::Box> boxes = std::vector<typename Library::Box>(NODE_COUNT);
    std::vector<std::uint32_t> visible = std::vector<std::uint32_t>(NODE_COUNT); ///< the nodes in view
    std::size_t visibleCount = 0;
};

/// The row's item is a node.
template <typename T, typename Library>
void AddGraph()
{
    std::string const name = Name<T>("scene/frame of 1,000 nodes", Library::NAME);
    auto const locals = Build(NodeMotions(), 16, Library::makeAffine);
    auto const boxes = Build(NodeBoxes(), 6, Library::makeBox);
    auto const view = Library::mainView();
    auto const frame = std::make_shared<Frame<Library>>();
    auto run = [=]
    {
        auto* const worlds = frame->worlds.data();
        auto* const inverses = frame->inverses.data();
        auto* const moved = frame->boxes.data();
        worlds[0] = locals[0];
        for (std::size_t node = 1; node < NODE_COUNT; ++node)
            worlds[node] = Library::composed(worlds[GetParent(node)], locals[node]);
        for (std::size_t node = 0; node < NODE_COUNT; ++node)
            inverses[node] = Library::inverted(worlds[node]);
        for (std::size_t node = 0; node < NODE_COUNT; ++node)
            moved[node] = Library::moved(boxes[node], worlds[node]);
        frame->visibleCount = Library::cull(view, frame->boxes, frame->visible.data());
    };
    AddRun(name, NODE_COUNT, run);
    AddNumbers(name,
               [=]() mutable
               {
                   Pass(run);
                   std::vector<double> numbers;
                   AppendAll<Library>(numbers, frame->worlds);
                   AppendAll<Library>(numbers, frame->inverses);
                   AppendAll<Library>(numbers, frame->boxes);
                   numbers.insert(numbers.end(), frame->visible.begin(),
                                  frame->visible.begin() + static_cast<std::ptrdiff_t>(frame->visibleCount));
                   return numbers;
               });
}

template <typename T, typename Library>
void AddSkinning()
{
    using Vector = typename Library::Vector;
    std::string const name = Name<T>("scene/skinning by four matrices", Library::NAME);
    auto const bones = Build(AffineMotions(321, BONE_COUNT, 1), 16, Library::makeAffine);
    auto const points = Build(Numbers(331, 3 * VERTEX_COUNT, -1, 1), 3, Library::makeVector);
    auto const influences = MakeInfluences<T>();
    auto const out = std::make_shared<std::vector<Vector>>(VERTEX_COUNT);
    auto const skin = [=](auto const* bonesOfPass)
    {
        Vector* const results = out->data();
        benchmark::DoNotOptimize(results);
        for (std::size_t i = 0; i < VERTEX_COUNT; ++i)
            results[i] = Library::skinned(bonesOfPass, influences[i], points[i]);
    };
    auto run = [=]
    {
        if constexpr (requires { Library::prepared(bones[0]); })
        {
            std::vector<decltype(Library::prepared(bones[0]))> prepared;
            prepared.reserve(bones.size());
            for (auto const& bone : bones)
                prepared.push_back(Library::prepared(bone));
            skin(prepared.data());
        }
        else
            skin(bones.data());
    };
    AddRun(name, VERTEX_COUNT, run);
    AddNumbers(name,
               [=]() mutable
               {
                   Pass(run);
                   std::vector<double> numbers;
                   AppendAll<Library>(numbers, *out);
                   return numbers;
               });
}

/// A ray that a camera made, and where it enters the scene's box.
template <typename T, typename Library>
struct TileRay
{
    typename Library::Vector direction;
    T entry;
};

/// The row's item is a ray.
template <typename T, typename Library>
void AddTile()
{
    using Vector = typename Library::Vector;
    std::string const name = Name<T>("scene/tile of camera rays", Library::NAME);
    TileNumbers const tile = MakeTile();
    Vector const eye = Library::makeVector(tile.eye.data());
    Vector const first = Library::makeVector(tile.first.data());
    Vector const right = Library::makeVector(tile.right.data());
    Vector const down = Library::makeVector(tile.down.data());
    auto const box = Library::makeBox(tile.box.data());
    auto const out = std::make_shared<std::vector<TileRay<T, Library>>>(TILE_SIZE * TILE_SIZE);
    auto run = [=]
    {
        TileRay<T, Library>* ray = out->data();
        benchmark::DoNotOptimize(ray);
        for (std::size_t y = 0; y < TILE_SIZE; ++y)
        {
            for (std::size_t x = 0; x < TILE_SIZE; ++x, ++ray)
            {
                Vector const direction =
                    Library::normalised(first + right * static_cast<T>(x) + down * static_cast<T>(y));
                ray->direction = direction;
                ray->entry = Library::enter(eye, direction, box);
            }
        }
    };
    AddRun(name, TILE_SIZE * TILE_SIZE, run);
    AddNumbers(name,
               [=]() mutable
               {
                   Pass(run);
                   std::vector<double> numbers;
                   for (TileRay<T, Library> const& ray : *out)
                   {
                       Library::append(numbers, ray.direction);
                       numbers.push_back(static_cast<double>(ray.entry));
                   }
                   return numbers;
               });
}

/// The list of the boxes that `sees(box)` says are in view.
template <typename Box, typename Sees>
std::size_t ListVisible(std::vector<Box> const& boxes, std::uint32_t* visible, Sees sees)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < boxes.size(); ++i)
    {
        visible[count] = static_cast<std::uint32_t>(i); // without a branch: written over by the next one in view
        count += sees(boxes[i]) ? 1 : 0;
    }
    return count;
}

/// Every row for which the library has what it takes.
template <typename T, typename Library>
void AddSceneRows()
{
    if constexpr (requires { &Library::chain; })
        AddChain<T, Library>();
    if constexpr (requires { &Library::inverse; })
        AddCamera<T, Library>();
    if constexpr (requires { &Library::composed; })
        AddGraph<T, Library>();
    AddSkinning<T, Library>();
    AddTile<T, Library>();
}

} // namespace bench
