// Runs a fuzz target on every file of a folder, where there is no fuzzer.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "Fuzz.h"

int main(int argc, char** argv)
{
    unsigned count = 0;
    for (int i = 1; i < argc; ++i)
        for (auto const& entry : std::filesystem::recursive_directory_iterator(argv[i]))
        {
            std::ifstream file(entry.path(), std::ios::binary);
            std::string const bytes{std::istreambuf_iterator<char>(file), {}};
            std::fprintf(stderr, "%s\n", entry.path().string().c_str());
            LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
            ++count;
        }
    std::printf("%u inputs\n", count);
    return count == 0 ? 1 : 0;
}
