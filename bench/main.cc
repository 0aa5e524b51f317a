#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "bench/process_memory.h"
#include "bench/ratios.h"

namespace vexa::bench {

namespace {

struct Comparison {
    std::string label;
    std::string ours;
    std::string peer;
};

std::map<std::string, double>& measured() {
    static std::map<std::string, double> values;
    return values;
}

std::vector<Comparison>& comparisons() {
    static std::vector<Comparison> list;
    return list;
}

}  // namespace

void remember(const std::string& name, double nanoseconds) { measured()[name] = nanoseconds; }

void compareAtEnd(const std::string& label, const std::string& ours, const std::string& peer) {
    comparisons().push_back({label, ours, peer});
}

void printComparisons() {
    std::printf("\n%-58s %12s %12s %8s\n", "in the same run", "ours", "peer", "ratio");
    for (const Comparison& each : comparisons()) {
        const auto ours = measured().find(each.ours);
        const auto peer = measured().find(each.peer);
        if (ours != measured().end() && peer != measured().end()) {
            std::printf("%-58s %12.1f %12.1f %8.3f\n", each.label.c_str(), ours->second, peer->second,
                        ours->second / peer->second);
        }
    }
}

}  // namespace vexa::bench

int main(int argc, char** argv) {
    if (vexa::bench::runAlone(argc, argv)) {
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    vexa::bench::printComparisons();
    return 0;
}
