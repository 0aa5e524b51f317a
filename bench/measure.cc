#include "bench/measure.h"

#include <chrono>
#include <cstdlib>
#include <ctime>

namespace vexa::bench {

double processorTime() { return static_cast<double>(std::clock()) * (1e9 / CLOCKS_PER_SEC); }

double elapsedTime() {
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

ScratchFolder::ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "vexa-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        std::abort();
    }
    path_ = name;
}

ScratchFolder::~ScratchFolder() { std::filesystem::remove_all(path_); }

}  // namespace vexa::bench
