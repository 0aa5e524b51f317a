// Writing and reading archives and XML, beside zip, unzip, zlib and the bare parser on the same bytes: 1,000
// entries of 20 KiB of table XML.

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "bench/process_memory.h"
#include "bench/ratios.h"
#include "frontend/package/output_files.h"
#include "frontend/package/xml_reader.h"
#include "frontend/package/xml_writer.h"
#include "frontend/package/zip_reader.h"
#include "frontend/package/zip_writer.h"

namespace vexa::bench {

namespace {

using namespace frontend;

constexpr std::size_t kEntries = 1000;

void require(bool ok) {
    if (!ok) {
        std::abort();
    }
}

std::string makeXml(std::size_t seed) {
    XmlWriter xml(officeXml);
    xml.begin("table").attribute("title", "Measured values of study " + std::to_string(seed));
    std::uint32_t random = static_cast<std::uint32_t>(seed) * 2654435761U + 1;
    for (int i = 0; i < 500; ++i) {
        random = random * 1664525U + 1013904223U;
        const double number = static_cast<double>(random >> 8) / 1000;
        xml.begin("c").attribute("n", number).text(std::to_string(number)).end();
    }
    xml.end();
    return xml.take();
}

const std::vector<std::string>& contents() {
    static const std::vector<std::string> all = [] {
        std::vector<std::string> made;
        for (std::size_t i = 0; i < kEntries; ++i) {
            made.push_back(makeXml(i));
        }
        return made;
    }();
    return all;
}

std::string nameOf(std::size_t index) { return "items/" + std::to_string(index) + ".xml"; }

std::string archive(unsigned threads) {
    std::string bytes;
    ZipWriter writer(gatherInto(bytes), {}, threads);
    for (std::size_t i = 0; i < kEntries; ++i) {
        require(static_cast<bool>(writer.add(nameOf(i), contents()[i])));
    }
    require(static_cast<bool>(writer.finish()));
    return bytes;
}

double elapsed() {
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// Remembers the processor's time and the wall's of one round, and the megabytes that came out.
template <typename Work>
void rounds(benchmark::State& state, const std::string& name, Work work) {
    const double processor = processorTime();
    const double wall = elapsed();
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = work();
    }
    const auto count = static_cast<double>(state.iterations());
    remember("package " + name, (processorTime() - processor) / count / 1e6);
    remember("package " + name + " wall", (elapsed() - wall) / count / 1e6);
    remember("package " + name + " bytes", static_cast<double>(bytes) / 1e6);
}

void write(benchmark::State& state) {
    contents();
    rounds(state, "write", [] { return archive(0).size(); });
}

void writeToFile(benchmark::State& state) {
    const ScratchFolder folder;
    contents();
    rounds(state, "write file", [&] {
        OutputFiles files;
        const std::string bytes = archive(0);
        require(static_cast<bool>(files.add(folder / "ours.zip", bytes)) &&
                static_cast<bool>(files.commit()));
        return bytes.size();
    });
}

/// What zlib alone needs for the same entries at its usual level.
void writeZlib(benchmark::State& state) {
    contents();
    rounds(state, "zlib", [] {
        std::size_t bytes = 0;
        for (const std::string& content : contents()) {
            uLongf length = compressBound(content.size());
            std::string packed(length, '\0');
            require(compress2(reinterpret_cast<Bytef*>(packed.data()), &length,
                              reinterpret_cast<const Bytef*>(content.data()), content.size(), 6) == Z_OK);
            bytes += length;
        }
        return bytes;
    });
}

void makeParts(const ScratchFolder& folder) {
    std::filesystem::create_directories(folder / "parts/items");
    for (std::size_t i = 0; i < kEntries; ++i) {
        std::ofstream(folder / ("parts/" + nameOf(i)).c_str(), std::ios::binary) << contents()[i];
    }
    std::ofstream(folder / "ours.zip", std::ios::binary) << archive(0);
}

void peer(benchmark::State& state, const std::string& name, const Arguments& command) {
    const ScratchFolder folder;
    makeParts(folder);
    double time = 0;
    const double wall = elapsed();
    for (auto _ : state) {
        std::filesystem::remove(folder / "again.zip");
        time += timeOfProgram(command, folder / "parts");
    }
    const auto count = static_cast<double>(state.iterations());
    remember("package " + name, time / count / 1e6);
    remember("package " + name + " wall", (elapsed() - wall) / count / 1e6);
    if (std::filesystem::exists(folder / "again.zip")) {
        remember("package " + name + " bytes",
                 static_cast<double>(std::filesystem::file_size(folder / "again.zip")) / 1e6);
    }
}

void zip(benchmark::State& state) { peer(state, "zip", {"zip", "-q", "-r", "../again.zip", "."}); }
void unzip(benchmark::State& state) { peer(state, "unzip", {"unzip", "-q", "-o", "../ours.zip"}); }

void read(benchmark::State& state) {
    const std::string bytes = archive(0);
    rounds(state, "read", [&bytes] {
        ZipReader reader;
        require(static_cast<bool>(reader.open(bytes)));
        std::string content;
        std::size_t total = 0;
        for (std::size_t place = 0; place < reader.count(); ++place) {
            require(static_cast<bool>(reader.read(place, content)));
            total += content.size();
        }
        return total;
    });
}

void parse(benchmark::State& state, const std::string& name, bool checked) {
    contents();
    rounds(state, name, [checked] {
        std::size_t cells = 0;
        for (const std::string& content : contents()) {
            if (checked) {
                XmlReader reader;
                require(static_cast<bool>(reader.parse(content, "table")));
                cells += reader.size().tags;
            } else {
                std::string copy = content;
                pugi::xml_document document;
                require(static_cast<bool>(document.load_buffer_inplace(copy.data(), copy.size())));
                ++cells;
            }
        }
        return cells;
    });
}

void parseOurs(benchmark::State& state) { parse(state, "parse", true); }
void parsePeer(benchmark::State& state) { parse(state, "parse unchecked", false); }

[[maybe_unused]] const bool registered = [] {
    const std::pair<const char*, void (*)(benchmark::State&)> all[] = {
        {"PackageWrite", write},     {"PackageWriteFile", writeToFile},
        {"PackageZlib", writeZlib},  {"PackageZip", zip},
        {"PackageRead", read},       {"PackageUnzip", unzip},
        {"PackageParse", parseOurs}, {"PackageParseUnchecked", parsePeer}};
    for (const auto& [name, function] : all) {
        benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond);
    }
    compareAtEnd("archive of 1,000 entries: write / zlib alone, ms", "package write", "package zlib");
    compareAtEnd("archive of 1,000 entries: write / zlib alone, wall ms", "package write wall",
                 "package zlib wall");
    compareAtEnd("archive of 1,000 entries: write a file / zip, ms", "package write file", "package zip");
    compareAtEnd("archive of 1,000 entries: write a file / zip, wall ms", "package write file wall",
                 "package zip wall");
    compareAtEnd("archive of 1,000 entries: our size / zip's, MB", "package write bytes",
                 "package zip bytes");
    compareAtEnd("archive of 1,000 entries: read / unzip, ms", "package read", "package unzip");
    compareAtEnd("1,000 XML texts: check and parse / parse alone, ms", "package parse",
                 "package parse unchecked");
    return true;
}();

}  // namespace

}  // namespace vexa::bench
