// Numbers as tables show them, beside what the libraries of C and C++ write in a similar form; these round
// halves by the digits of the double, which is not what a reader of the table expects.

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "backend/tables/formats/number_text.h"
#include "bench/measure.h"
#include "bench/ratios.h"

namespace vexa::bench {

namespace {

using tables::DisplayFormat;
using tables::FormatKind;

constexpr std::size_t kNumbers = 4096;

/// What tables hold: counts, numbers of one to three decimals, means.
std::vector<double> tableNumbers() {
    std::mt19937_64 random(20260305);
    std::vector<double> numbers;
    for (std::size_t i = 0; i < kNumbers; ++i) {
        const auto whole = static_cast<double>(random() % 10000000);
        constexpr std::array<double, 4> kParts = {1, 10, 1000, 97};
        numbers.push_back((i % 2 == 0 ? 1 : -1) * whole / kParts.at(i % kParts.size()));
    }
    return numbers;
}

template <typename Append>
void writeNumbers(benchmark::State& state, const std::string& name, Append append) {
    const std::vector<double> numbers = tableNumbers();
    std::string text;
    measure(state, name, kNumbers, [&] {
        text.clear();
        for (const double number : numbers) append(text, number);
        benchmark::DoNotOptimize(text.data());
    });
}

template <typename... Form>
void appendChars(std::string& text, double number, Form... form) {
    std::array<char, 64> buffer{};
    text.append(buffer.data(),
                std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, form...).ptr);
}

void registerFormat(const std::string& name, DisplayFormat format) {
    benchmark::RegisterBenchmark(("NumberText/" + name).c_str(), [name, format](benchmark::State& state) {
        writeNumbers(state, "number " + name, [format](std::string& text, double number) {
            tables::appendNumber(text, number, format);
        });
    });
}

template <typename Append>
void registerPeer(const std::string& name, Append append) {
    benchmark::RegisterBenchmark(("NumberText/" + name).c_str(), [name, append](benchmark::State& state) {
        writeNumbers(state, name, append);
    });
}

void registerPeers() {
    registerPeer("to_chars, 2 decimals", [](std::string& text, double number) {
        appendChars(text, number, std::chars_format::fixed, 2);
    });
    registerPeer("to_chars, 15 digits", [](std::string& text, double number) {
        appendChars(text, number, std::chars_format::general, 15);
    });
    registerPeer("to_chars, shortest", [](std::string& text, double number) { appendChars(text, number); });
    registerPeer("snprintf %.2f", [](std::string& text, double number) {
        std::array<char, 64> buffer{};
        text.append(buffer.data(),
                    static_cast<std::size_t>(std::snprintf(buffer.data(), buffer.size(), "%.2f", number)));
    });
    registerPeer("snprintf %.15g", [](std::string& text, double number) {
        std::array<char, 64> buffer{};
        text.append(buffer.data(),
                    static_cast<std::size_t>(std::snprintf(buffer.data(), buffer.size(), "%.15g", number)));
    });
    registerPeer("snprintf %.2E", [](std::string& text, double number) {
        std::array<char, 64> buffer{};
        text.append(buffer.data(),
                    static_cast<std::size_t>(std::snprintf(buffer.data(), buffer.size(), "%.2E", number)));
    });
}

[[maybe_unused]] const bool registered = [] {
    registerFormat("F8.2", {FormatKind::plain, 8, 2});
    registerFormat("COMMA12.2", {FormatKind::comma, 12, 2});
    registerFormat("E9.2", {FormatKind::scientific, 9, 2});
    registerFormat("DATETIME", {FormatKind::dateTime, 0, 0});
    registerFormat("without format", {});
    registerPeer("number shortest",
                 [](std::string& text, double number) { tables::appendShortest(text, number); });
    registerPeers();
    compareAtEnd("number in F8.2, ns : to_chars", "number F8.2", "to_chars, 2 decimals");
    compareAtEnd("number in F8.2, ns : snprintf", "number F8.2", "snprintf %.2f");
    compareAtEnd("number in COMMA12.2, ns : snprintf without groups", "number COMMA12.2", "snprintf %.2f");
    compareAtEnd("number in E9.2, ns : snprintf", "number E9.2", "snprintf %.2E");
    compareAtEnd("number without format, ns : to_chars", "number without format", "to_chars, 15 digits");
    compareAtEnd("number without format, ns : snprintf", "number without format", "snprintf %.15g");
    compareAtEnd("number, shortest text, ns : to_chars", "number shortest", "to_chars, shortest");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
