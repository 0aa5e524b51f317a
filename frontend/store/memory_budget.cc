#include "frontend/store/memory_budget.h"

#include "backend/tables/model/table_data.h"
#include "backend/tables/model/table_look.h"
#include "frontend/document/outline.h"

namespace vexa::frontend {

bool MemoryBudget::keep(std::uint64_t bytes) {
    const std::lock_guard lock(mutex_);
    if (bytes > limits_.kept - kept_) {
        exceeded_ = true;
        return false;
    }
    kept_ += bytes;
    return true;
}

bool MemoryBudget::wasExceeded() {
    const std::lock_guard lock(mutex_);
    return exceeded_;
}

bool MemoryBudget::borrow(std::uint64_t bytes, std::uint64_t held) {
    if (held + bytes > limits_.borrowed) return false;
    std::unique_lock lock(mutex_);
    givenBack_.wait(lock, [&] { return borrowed_ + bytes <= limits_.borrowed; });
    borrowed_ += bytes;
    return true;
}

void MemoryBudget::giveBack(std::uint64_t bytes) {
    {
        const std::lock_guard lock(mutex_);
        borrowed_ -= bytes;
    }
    givenBack_.notify_all();
}

MemoryLimits memoryFor(std::uint64_t fileBytes) {
    constexpr std::uint64_t mebibyte = 1ULL << 20;
    return {100 * mebibyte + 48 * fileBytes, 80 * mebibyte + 32 * fileBytes};
}

std::uint64_t memoryOfItem(std::uint64_t xmlBytes) {
    // Texts in objects of their own take more than in XML.
    return sizeof(OutlineNode) + 256 + 3 * xmlBytes;
}

std::uint64_t memoryOfLineEnds(std::string_view xml) {
    // A writer escapes those of texts; raw ones count as several bytes as well.
    constexpr std::uint64_t further = 6;
    const std::uint64_t ends = countByte(xml, '\n');
    const std::uint64_t tags = countByte(xml, '<');
    return ends > tags ? (ends - tags) * further : 0;
}

std::uint64_t memoryOfLook(std::uint64_t xmlBytes) { return sizeof(tables::TableLook) + 3 * xmlBytes; }

std::uint64_t memoryOfXml(std::string_view xml) {
    constexpr std::uint64_t perElement = 64;
    constexpr std::uint64_t perAttribute = 40;
    return xml.size() + countByte(xml, '<') * perElement + countByte(xml, '"') / 2 * perAttribute;
}

std::uint64_t memoryOfCells(std::uint64_t places, std::uint64_t filled) {
    // As TableDataBuilder does it: small tables have all their cells at once, others are put in order first
    // and become dense when a quarter is filled.
    constexpr std::uint64_t small = 1024;
    constexpr std::uint64_t whileOrdered = 80;
    if (places <= small) return places * sizeof(tables::TableCell);
    const std::uint64_t cells = places / 4 <= filled ? places : filled;
    return cells * sizeof(tables::TableCell) + filled * whileOrdered;
}

std::uint64_t memoryOfPlaceValues(std::uint64_t places, std::uint64_t count, std::uint64_t bytes) {
    constexpr std::uint64_t mostDense = 1ULL << 20;
    constexpr std::uint64_t perEntry = 64;
    if (count == 0) return 0;
    return places <= mostDense ? places * bytes : count * perEntry;
}

std::uint64_t countByte(std::string_view text, char byte) {
    // In blocks whose length the compiler knows, and that a byte can count, so that it takes many bytes at
    // once.
    constexpr std::size_t block = 128;
    std::uint64_t count = 0;
    while (text.size() >= block) {
        std::uint8_t inBlock = 0;
        for (std::size_t i = 0; i < block; ++i)
            inBlock = static_cast<std::uint8_t>(inBlock + (text[i] == byte ? 1 : 0));
        count += inBlock;
        text.remove_prefix(block);
    }
    for (const char each : text) count += each == byte ? 1U : 0U;
    return count;
}

}  // namespace vexa::frontend
