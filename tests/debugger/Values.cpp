/// One value of every type of the library, and more where there is more to show, for a debugger that stops in Stop().
/// What it should show of them is in shown.txt.

#include "BvBaseUtils.h"

#include <array>
#include <limits>

using namespace bv::maths;

namespace
{

[[gnu::noinline]] void Stop()
{
    __asm__ volatile("" : : : "memory");
}

void ShowCore()
{
    bv::String const text("Gr\xC3\xBC\xC3\x9F"
                          "e, \"world\"");
    bv::String const longText("A text that outgrows the buffer of short strings");
    bv::String const emptyText;

    bv::Exception const exception("It failed", "core\\Unit", 12, "bv::Function");
    bv::Exception const withoutPlace("It failed");
    bv::FileIOException const fileIO("No such file", "core\\File", 1, "Open");
    bv::InvalidArgumentException const invalidArgument("Bad argument", "core\\Unit", 2, "Call");
    bv::InvalidObjectException const invalidObject("Bad object", "core\\Unit", 3, "Use");
    bv::NotImplementedException const notImplemented("Not yet", "core\\Unit", 4, "Later");
    bv::ObjectCreationException const objectCreation("Not made", "core\\Unit", 5, "Make");
    bv::ObjectDeletionException const objectDeletion("Not deleted", "core\\Unit", 6, "Delete");
    bv::OutOfMemoryException const outOfMemory("Too much", "core\\Unit", 7, "Allocate");
    bv::ThreadExitException const threadExit("Gone", "core\\Unit", 8, "Run");
    MathsException const maths("Maths", "internal\\Unit", 9, "Compute");
    ArithmeticException const arithmetic("Arithmetic", "internal\\Unit", 10, "Add");
    DivideByZeroException const divideByZero("Zero", "internal\\Unit", 11, "Divide");
    MatrixException const matrixFailure("Singular", "internal\\Unit", 4294967295U, "Invert");
    bv::Exception const& byItsRoot = matrixFailure;
    Stop();
}

void ShowVectors()
{
    tTuple2<int> const tuple2i(-1, 2);
    tTuple3<unsigned int> const tuple3u(1, 2, 4294967295U);
    tTuple2<float> const tuple2f(0.1F, -0.0F);
    tTuple3<double> const tuple3d(0.1, 1e300, 1.0 / 3);
    tVector2<float> const vector2(1, 2.5F);
    tVector3<float> const vector3(0.1F, 16777216, -3);
    tVector3<double> const vector3d(0.1, 16777217, 1e-300);
    tVector3<float> const special(std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                                  1e-45F);
    tQuaternion<float> const quaternion(0.5F, -0.5F, 0.5F, 0.5F);
    Percentage const percentage(2, 6);
    Percentage const nothing;
    RNGenerator const generator(1);
    tExtremes<float> const extremes{-1, 4};
    tExtremes<double> const noExtremes{std::numeric_limits<double>::infinity(),
                                       -std::numeric_limits<double>::infinity()};
    tDifferential2<float> const differential2({1, 2}, {3, 4});
    tDifferential3<double> const differential3({1, 2, 3}, {4, 5, 6});
    tCoordinateFrame<float> const frame;
    tCoordinateFrame<double> const leftHanded(tCoordinateFrame<double>::RIGHT, tCoordinateFrame<double>::UP,
                                              tCoordinateFrame<double>::FORWARDS);
    Stop();
}

void ShowMatrices()
{
    tMatrix4<float> const identity;
    tMatrix4<double> const diagonal = tMatrix4<double>::Scale(tVector3<double>(2, 3, 4));
    tMatrix4<float> const rotation(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    tMatrix4<float> const general(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16.5F);
    tMatrix4<float> staleIdentity;
    staleIdentity(5) = 2; // second row, second column
    tMatrix4<double> staleDiagonal(diagonal);
    staleDiagonal(3) = 7; // first row, fourth column
    tMatrix4<float> staleRotation(rotation);
    staleRotation(10) = 2; // third row, third column
    tMatrix4<float> movedRotation(rotation);
    movedRotation(3) = 5; // a translation does not deny a rotation
    tMatrix4<float> const leftHandedMatrix({0, 1, 0}, {1, 0, 0}, {0, 0, 1});
    tMatrixParts<float> const parts({1, 2, 3}, tQuaternion<float>(), {4, 5, 6}, {0.5F, 0, 0});
    tPreparedTransform<float> const prepared(tMatrix4<float>::Translate(1, 2, 3));
    tPixelRays<float> const pixelRays({4, 2}, identity, identity);
    Stop();
}

void ShowShapes()
{
    tAreaAABB<float> const areaBox({0, 1}, {2, 3});
    tAreaAABB<double> const emptyAreaBox;
    tVolumeAABB<double> const volumeBox({0, 1, 2}, {3, 4, 5.5});
    tVolumeAABB<float> const emptyVolumeBox;
    tVolumeAABB<float> const invertedBox({1, 0, 0}, {0, 1, 1});
    tAreaDisc<float> const disc({1, 2}, 9.0F);
    tVolumeSphere<float> const sphere({1, 2, 3}, 2.0F);
    tVolumeSphere<double> const sphered({1, 2, 3}, 2.0);
    tVolumeSphere<float> const noSphere({0, 0, 0}, -1.0F);
    tOrientedBox<float> const orientedBox({1, 2, 3}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {4, 5, 6});
    tPlane<double> const plane({0, 2, 0}, 6);
    tFrustum<float> const frustum({{1, 0, 0}, 1}, {{-1, 0, 0}, 2}, {{0, 1, 0}, 3}, {{0, -1, 0}, 4}, {{0, 0, -1}, 5},
                                  {{0, 0, 1}, 6});
    Stop();
}

void ShowRays()
{
    tRay<float> const ray({1, 2, 3}, {1, 4, 2});
    tDepthRay<double, bv::IRayPayloadInternal> depthRay({1, 2, 3}, {0, 0, 1});
    depthRay.tMax = 100;
    depthRay.dOriginDu = {0.5, 0, 0};
    depthRay.dDirectionDv = {0, 0.25, 0};
    tReciprocalRay<float> const reciprocalRay(ray);
    tWatertightRay<float> const watertightRay(ray); // mostly along y, so that its axes are z, x and y
    tTriangleHit<double> const hit{2, 0.25, 0.5};
    Stop();
}

void ShowViews()
{
    std::array<float, 3> const numbers{1, 2, 3.5F};
    std::array<tVector3<double>, 2> vectors{tVector3<double>(1, 2, 3), tVector3<double>(4, 5, 6)};
    std::array<tVolumeAABB<float>, 1> const boxes{tVolumeAABB<float>({1, 2, 3}, {4, 5, 6})};
    std::array<tRay<float>, 1> const rays{tRay<float>({1, 2, 3}, {0, 0, 1})};
    std::array<tVolumeSphere<float>, 2> const spheres{tVolumeSphere<float>({1, 2, 3}, 4.0F),
                                                      tVolumeSphere<float>({4, 5, 6}, 25.0F)};
    tNumberView<float const> const numberView(numbers);
    tNumberView<float const> const everySecondNumber(numbers.data(), 2, 8);
    tNumberView<double> const noNumbers;
    tVectorView<double> const vectorView(vectors);
    tBoxView<float const> const boxView(boxes);
    tRayView<float const> const rayView(rays);
    tSphereView<float const> const sphereView(spheres);
    Stop();
}

#if defined __x86_64__
void ShowPackets()
{
    using Ray = tDepthRay<float, bv::IRayPayloadInternal>;
    std::array<Ray, 4> const rays{Ray({0, 0, 0}, {1, 1, 2}), Ray({1, 0, 0}, {1, 1, 2}), Ray({2, 0, 0}, {1, 1, 2}),
                                  Ray({3, 0, 0}, {1, 1, 2})};
    simd::SSERay packet;
    packet.Initialise(rays.data());
    simd::tWatertightPacket<simd::SSERay> const watertightPacket(packet);
    simd::tPacketHits<simd::SSERay> const packetHits{{1, 2, 3, 4}, {0.5F, 0, 0, 0}, {0, 0, 0, 0.25F}};
    Stop();
}
#endif

} // namespace

int main()
{
    ShowCore();
    ShowVectors();
    ShowMatrices();
    ShowShapes();
    ShowRays();
    ShowViews();
#if defined __x86_64__
    ShowPackets();
#endif
}
