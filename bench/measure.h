// What the benchmarks share: how time is taken, and a folder for files.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "bench/ratios.h"

namespace vexa::bench {

/// Time that this process has had on a processor, in nanoseconds: what other processes take does not count.
double processorTime();
/// Time by the clock, in nanoseconds, for work that several cores share.
double elapsedTime();

/// Runs `work` in every round of `state` and remembers how long one of its `count` pieces takes.
template <typename Work>
void measure(benchmark::State& state, const std::string& name, std::int64_t count, Work work) {
    const double start = processorTime();
    for (auto _ : state) {
        work();
    }
    const double pieces = static_cast<double>(state.iterations() * count);
    const double each = (processorTime() - start) / pieces;
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["ns each"] = each;
    remember(name, each);
}

/// A folder of its own, gone with the object.
class ScratchFolder {
  public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] std::string operator/(const char* name) const { return (path_ / name).string(); }
    [[nodiscard]] std::string path() const { return path_.string(); }

  private:
    std::filesystem::path path_;
};

}  // namespace vexa::bench
