#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

// Runs a fuzz target over all files of the folders given, without the fuzzer. Fails when there is
// no file, so that a lost corpus is noticed.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int ReplayFolder(const std::filesystem::path& folder) {
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) {
            continue;
        }
        // An exact-size buffer, so that AddressSanitizer sees every byte read behind it.
        std::vector<std::uint8_t> input(static_cast<std::size_t>(entry.file_size()));
        std::ifstream(entry.path(), std::ios::binary)
            .read(reinterpret_cast<char*>(input.data()),
                  static_cast<std::streamsize>(input.size()));
        LLVMFuzzerTestOneInput(input.data(), input.size());
        ++files;
    }
    return files;
}

} // namespace

int main(int argc, char** argv) {
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        files += ReplayFolder(argv[i]);
    }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
