#include "bench/message_catalog.h"

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <map>

namespace vexa::bench {

namespace {

// The head: magic number, revision, count of texts, where the tables of keys and texts begin, size and place
// of the hash table.
constexpr std::uint32_t kMagic = 0x950412de;
constexpr std::uint32_t kHeadWords = 7;
constexpr std::uint32_t kWordBytes = 4;

bool isPrime(std::uint32_t number) {
    for (std::uint32_t divisor = 2; divisor * divisor <= number; ++divisor) {
        if (number % divisor == 0) {
            return false;
        }
    }
    return number > 1;
}

/// A third more places than texts, as the catalogue's readers expect, and a prime number.
std::uint32_t hashSize(std::uint32_t texts) {
    std::uint32_t size = texts * 4 / 3 < 5 ? 5 : texts * 4 / 3;
    while (!isPrime(size)) {
        ++size;
    }
    return size;
}

/// The hash that the format prescribes: P. J. Weinberger's.
std::uint32_t hashOf(const std::string& key) {
    constexpr std::uint32_t kHighest = 0xF0000000U;
    std::uint32_t hash = 0;
    for (const char character : key) {
        hash = (hash << 4U) + static_cast<unsigned char>(character);
        const std::uint32_t high = hash & kHighest;
        hash = (hash ^ (high >> 24U)) & ~high;
    }
    return hash;
}

/// Numbers of the keys, beginning at 1, where readers look for them; 0 is a free place.
std::vector<std::uint32_t> hashTable(const std::map<std::string, std::string>& texts) {
    const std::uint32_t size = hashSize(static_cast<std::uint32_t>(texts.size()));
    std::vector<std::uint32_t> table(size);
    std::uint32_t number = 0;
    for (const auto& [key, text] : texts) {
        const std::uint32_t hash = hashOf(key);
        const std::uint32_t step = 1 + hash % (size - 2);
        std::uint32_t place = hash % size;
        while (table[place] != 0) {
            place = (place + step) % size;
        }
        table[place] = ++number;
    }
    return table;
}

/// Adds the length and the place of `text`, which goes to the end of `bytes`.
void add(const std::string& text, std::uint32_t begin, std::vector<std::uint32_t>& words,
         std::string& bytes) {
    words.push_back(static_cast<std::uint32_t>(text.size()));
    words.push_back(begin + static_cast<std::uint32_t>(bytes.size()));
    bytes.append(text).push_back('\0');
}

}  // namespace

bool writeCatalog(const std::filesystem::path& file, const std::vector<keyValueGloss>& entries) {
    std::map<std::string, std::string> texts;  // sorted, as the format wants them
    for (const keyValueGloss& entry : entries) {
        texts.emplace(entry.key, entry.value);
    }
    const auto count = static_cast<std::uint32_t>(texts.size());
    const std::vector<std::uint32_t> hashes = hashTable(texts);
    const std::uint32_t keys = kHeadWords * kWordBytes;
    const std::uint32_t values = keys + count * 2 * kWordBytes;
    const std::uint32_t hash = values + count * 2 * kWordBytes;
    const auto places = static_cast<std::uint32_t>(hashes.size());
    const std::uint32_t strings = hash + places * kWordBytes;
    std::vector<std::uint32_t> words = {kMagic, 0, count, keys, values, places, hash};
    std::string bytes;
    for (const auto& [key, text] : texts) {
        add(key, strings, words, bytes);
    }
    for (const auto& [key, text] : texts) {
        add(text, strings, words, bytes);
    }
    words.insert(words.end(), hashes.begin(), hashes.end());
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(words.data()),
              static_cast<std::streamsize>(words.size() * kWordBytes));
    out << bytes;
    return out.flush().good();
}

bool chooseCatalogs(const char* language) {
    // The locale that every system has; in the bare C locale nothing would be looked up.
    return setenv("LANGUAGE", language, 1) == 0 && std::setlocale(LC_MESSAGES, "C.UTF-8") != nullptr;
}

}  // namespace vexa::bench
