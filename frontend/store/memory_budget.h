// How much memory opening a file may take: small files must not become large documents. The same numbers are
// looked at when a document is saved, so that what is saved can be opened.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string_view>

namespace vexa::frontend {

struct MemoryLimits {
    std::uint64_t kept = 0;      ///< by the document, bytes
    std::uint64_t borrowed = 0;  ///< while entries are parsed, at any time
};

/// For all threads that open one document. Whether something fits does not depend on who comes first.
class MemoryBudget {
  public:
    explicit MemoryBudget(const MemoryLimits& limits) : limits_(limits) {}

    /// Takes memory that the document keeps; false when there is not so much.
    [[nodiscard]] bool keep(std::uint64_t bytes);
    /// Takes memory for a while, and waits for others to give back theirs; false when even that would not do.
    /// Who has `held` already must be the only one that borrows more, since two of them could wait for each
    /// other.
    [[nodiscard]] bool borrow(std::uint64_t bytes, std::uint64_t held = 0);
    void giveBack(std::uint64_t bytes);
    /// Whether `keep` has ever answered false.
    [[nodiscard]] bool wasExceeded();

  private:
    std::mutex mutex_;
    std::condition_variable givenBack_;
    MemoryLimits limits_;
    std::uint64_t kept_ = 0;
    std::uint64_t borrowed_ = 0;
    bool exceeded_ = false;
};

/// Memory that is borrowed as long as this lives.
class BorrowedMemory {
  public:
    explicit BorrowedMemory(MemoryBudget& budget) : budget_(budget) {}
    ~BorrowedMemory() { budget_.giveBack(bytes_); }
    BorrowedMemory(const BorrowedMemory&) = delete;
    BorrowedMemory& operator=(const BorrowedMemory&) = delete;

    [[nodiscard]] bool borrow(std::uint64_t bytes) {
        if (!budget_.borrow(bytes, bytes_)) return false;
        bytes_ += bytes;
        return true;
    }

  private:
    MemoryBudget& budget_;
    std::uint64_t bytes_ = 0;
};

/// What a file of so many bytes may take: one of 1 MB less than 300 MB in all.
[[nodiscard]] MemoryLimits memoryFor(std::uint64_t fileBytes);
/// What an item keeps for its XML of so many bytes, the cells of a table apart.
[[nodiscard]] std::uint64_t memoryOfItem(std::uint64_t xmlBytes);
/// What it keeps beside that for line ends that stand in its texts as they are.
[[nodiscard]] std::uint64_t memoryOfLineEnds(std::string_view xml);
/// The same of a look.
[[nodiscard]] std::uint64_t memoryOfLook(std::uint64_t xmlBytes);
/// What a text takes when it is parsed as XML.
[[nodiscard]] std::uint64_t memoryOfXml(std::string_view xml);
/// What the cells of a table keep, and what putting them in order takes.
[[nodiscard]] std::uint64_t memoryOfCells(std::uint64_t places, std::uint64_t filled);
/// What values of `bytes` bytes for `count` places of a table keep.
[[nodiscard]] std::uint64_t memoryOfPlaceValues(std::uint64_t places, std::uint64_t count,
                                                std::uint64_t bytes);

/// How often a byte stands in a text.
[[nodiscard]] std::uint64_t countByte(std::string_view text, char byte);

}  // namespace vexa::frontend
