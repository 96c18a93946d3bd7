// Runs a fuzz target over files, and over the files of folders, and over what is cut off and changed in each
// of them: the tests' part of fuzzing, without a fuzzer. What breaks the target is printed in hexadecimal.
//   fuzz_NAME CHANGES FILE...    CHANGES is how often each file is changed

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;
namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& place)
{
    std::vector<fs::path> files;
    if (fs::is_directory(place)) {
        for (const auto& entry : fs::directory_iterator(place))
            files.push_back(entry.path());
    } else {
        files.push_back(place);
    }
    std::sort(files.begin(), files.end());
    return files;
}

Bytes read(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

/// What the target runs on now; null between two inputs.
const Bytes* current = nullptr;

/// Ends the process as the signal would have, with the input on the console.
extern "C" void tellInput(int signal)
{
    if (current) {
        for (const std::uint8_t byte : *current)
            std::fprintf(stderr, "%02x", unsigned(byte));
        std::fputs("\n", stderr);
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

long runVariants(const Bytes& bytes, int changesOfFile, std::mt19937_64& random)
{
    long runs = 0;
    const auto run = [&runs](const Bytes& input) {
        current = &input;
        LLVMFuzzerTestOneInput(input.data(), input.size());
        current = nullptr;
        ++runs;
    };
    run(bytes);
    for (std::size_t length = 0; length < bytes.size(); ++length)
        run(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)));
    for (int i = 0; i < changesOfFile && !bytes.empty(); ++i) {
        Bytes changed = bytes;
        const int changes = 1 + static_cast<int>(random() % 8);
        for (int k = 0; k < changes; ++k)
            changed[random() % changed.size()] = static_cast<std::uint8_t>(random());
        run(changed);
    }
    return runs;
}

}

int main(int argc, char** argv)
{
    constexpr std::uint64_t seed = 20121001;
    std::mt19937_64 random(seed);
    std::signal(SIGILL, tellInput);
    std::signal(SIGABRT, tellInput);
    const int changesOfFile = argc > 1 ? std::atoi(argv[1]) : 0;
    long files = 0;
    long runs = 0;
    for (int i = 2; i < argc; ++i) {
        for (const fs::path& file : filesOf(argv[i])) {
            runs += runVariants(read(file), changesOfFile, random);
            ++files;
        }
    }
    std::printf("%ld files, %ld runs\n", files, runs);
    return files > 0 ? 0 : 1;
}
