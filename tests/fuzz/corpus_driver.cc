// Runs a fuzz target over files and folders of inputs, once each: the corpus as an ordinary test.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int runFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    return 1;
}

int run(const std::filesystem::path& path) {
    if (!std::filesystem::is_directory(path)) {
        return runFile(path);
    }
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
        count += entry.is_regular_file() ? runFile(entry.path()) : 0;
    }
    return count;
}

}  // namespace

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        count += run(argv[i]);
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
