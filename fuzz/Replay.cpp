// Runs inputs of a fuzzer once each without the fuzzing library, so that every build that has the
// sanitizers can: PROGRAM FILE-OR-FOLDER... It ends at the first promise that is broken, after the
// name of the input.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize);

namespace {

std::vector<std::filesystem::path> Inputs(int nArgs, char** ppszArgs)
{
    std::vector<std::filesystem::path> files;
    for (int n = 1; n < nArgs; ++n) {
        if (!std::filesystem::is_directory(ppszArgs[n])) {
            files.emplace_back(ppszArgs[n]);
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(ppszArgs[n]))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

int main(int nArgs, char** ppszArgs)
{
    const auto files = Inputs(nArgs, ppszArgs);
    for (const auto& path : files) {
        std::ifstream file(path, std::ios::binary);
        if (!file) {
            std::fprintf(stderr, "cannot read %s\n", path.c_str());
            return 2;
        }
        std::fprintf(stderr, "%s\n", path.c_str());
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu inputs passed\n", files.size());
    return files.empty() ? 2 : 0;
}
