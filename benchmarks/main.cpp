#include <cstdio>
#include <string_view>

#include <benchmark/benchmark.h>

#include "Agreement.h"
#include "Counting.h"
#include "Topics.h"

/// Measures the rows; with the arguments `--count FILTER` and under callgrind, counts their instructions; with
/// `--agree`, sees to it that the libraries compute the same.
int main(int argc, char** argv)
{
    bench::AddMatrix();
    bench::peers::AddMatrix();
    bench::AddTransform();
    bench::peers::AddTransform();
    bench::AddQuaternion();
    bench::peers::AddQuaternion();
    bench::AddView();
    bench::peers::AddView();
    bench::AddScalar();
    bench::peers::AddScalar();
    bench::AddComponentwise();
    bench::peers::AddComponentwise();
    bench::AddDirection();
    bench::peers::AddDirection();
    bench::AddBox();
    bench::peers::AddBox();
    bench::AddSphere();
    bench::peers::AddSphere();
    bench::AddFrustum();
    bench::peers::AddFrustum();
    bench::AddBounds();
    bench::peers::AddBounds();
    bench::AddVisibility();
    bench::peers::AddVisibility();
    bench::AddRay();
    bench::peers::AddRay();
    bench::AddIntersect();
    bench::peers::AddIntersect();
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
    bench::AddSampling();
    bench::peers::AddSampling();
    bench::AddScene();
    bench::peers::AddScene();
    bench::glm_plain::Add();
    bench::glm_intrinsics::Add();

    if (argc == 3 && std::string_view(argv[1]) == "--count")
    {
        if (bench::CountInstructions(argv[2]))
            return 0;
        std::fprintf(stderr, "benchmarks: --count needs callgrind to run this program\n");
        return 2;
    }
    if (argc == 2 && std::string_view(argv[1]) == "--agree")
        return bench::DoNumbersAgree() ? 0 : 1;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
