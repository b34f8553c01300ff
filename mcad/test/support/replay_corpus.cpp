// Runs a fuzzer's target without the fuzzer: on every file of a corpus, and on that file cut at every length
// and with every byte changed.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

/// On a copy of exactly that size, so that a sanitizer sees a read beyond it.
void runOn(std::vector<std::uint8_t> input) { LLVMFuzzerTestOneInput(input.data(), input.size()); }

void replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::uint8_t> input{std::istreambuf_iterator<char>(file), {}};
    runOn(input);
    for (std::size_t length = 0; length < input.size(); ++length) {
        runOn({input.begin(), input.begin() + static_cast<std::ptrdiff_t>(length)});
    }
    for (std::uint8_t& byte : input) {
        for (const std::uint8_t change : {0x01, 0x80, 0xff}) {
            byte ^= change;
            runOn(input);
            byte ^= change;
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            replay(entry.path());
            ++files;
        }
    }
    std::cout << files << " files replayed\n";
    return files > 0 ? 0 : 1; // an empty corpus tests nothing
}
