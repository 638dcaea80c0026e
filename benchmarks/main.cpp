#include <benchmark/benchmark.h>

#include "Topics.h"

int main(int argc, char** argv)
{
    bench::AddMatrix();
    bench::peers::AddMatrix();
    bench::AddTransform();
    bench::peers::AddTransform();
    bench::AddScalar();
    bench::peers::AddScalar();
    bench::AddBox();
    bench::peers::AddBox();
    bench::AddSphere();
    bench::peers::AddSphere();
    bench::AddFrustum();
    bench::peers::AddFrustum();
    bench::AddRay();
    bench::peers::AddRay();
    bench::AddNoise();
    bench::peers::AddNoise();
    bench::AddGenerator();
    bench::peers::AddGenerator();
    bench::AddHash();
    bench::peers::AddHash();
    bench::AddString();
    bench::peers::AddString();
    bench::AddBatch();
    bench::peers::AddBatch();
    bench::glm_plain::Add();
    bench::glm_intrinsics::Add();

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
