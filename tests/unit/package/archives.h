// Short ways to archives and their contents.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

#include "frontend/package/zip_reader.h"
#include "frontend/package/zip_writer.h"

namespace vexa::frontend {

/// A text that can be compressed, different for each seed.
inline std::string sampleText(unsigned seed, std::size_t length) {
    std::mt19937 random(seed);
    std::string text(length, ' ');
    for (char& character : text) {
        character = static_cast<char>('a' + random() % 13);
    }
    return text;
}

inline std::string archiveOf(const std::map<std::string, std::string>& entries, unsigned threads = 0) {
    std::string bytes;
    ZipWriter writer(gatherInto(bytes), {}, threads);
    for (const auto& [name, text] : entries) {
        EXPECT_TRUE(writer.add(name, text)) << name;
    }
    EXPECT_TRUE(writer.finish());
    return bytes;
}

/// How opening an archive and then reading all its entries ends.
inline PackageResult outcomeOf(std::string_view bytes, const ZipLimits& limits = {}) {
    ZipReader reader(limits);
    PackageResult result = reader.open(bytes);
    EXPECT_TRUE(result || reader.count() == 0);
    std::string content;
    for (std::size_t place = 0; result && place < reader.count(); ++place) {
        result = reader.read(place, content);
    }
    return result;
}

}  // namespace vexa::frontend
