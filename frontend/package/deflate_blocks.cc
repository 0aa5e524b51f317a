#include "frontend/package/deflate_blocks.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <span>

namespace vexa::frontend {
namespace {

constexpr unsigned longestCode = 15;
constexpr std::size_t letterCount = 288;
constexpr std::size_t distanceCount = 32;
constexpr std::size_t endOfBlock = 256;

/// The bits of a byte string, the lowest one of each byte first. Behind the end there are zeros.
class BitReader {
  public:
    explicit BitReader(std::string_view bytes) : bytes_(bytes) {}

    /// After it, 56 bits at least can be looked at and passed: a letter and a distance take 48.
    void fill() {
        if (std::endian::native == std::endian::little && next_ + sizeof bits_ <= bytes_.size()) {
            std::uint64_t next = 0;
            std::memcpy(&next, bytes_.data() + next_, sizeof next);
            bits_ |= next << count_;
            next_ += (63 - count_) / 8;
            count_ |= 56U;
            return;
        }
        while (count_ <= 56) {  // near the end
            const std::uint64_t byte = next_ < bytes_.size() ? static_cast<unsigned char>(bytes_[next_]) : 0;
            bits_ |= byte << count_;
            ++next_;
            count_ += 8;
        }
    }
    [[nodiscard]] std::uint64_t bits() const { return bits_; }
    void pass(unsigned count) {
        bits_ >>= count;
        count_ -= count;
    }
    unsigned take(unsigned count) {
        const auto value = static_cast<unsigned>(bits_ & ((1U << count) - 1));
        pass(count);
        return value;
    }
    [[nodiscard]] std::uint64_t position() const { return std::uint64_t{next_} * 8 - count_; }
    void goTo(std::uint64_t byte) {
        next_ = byte;
        bits_ = 0;
        count_ = 0;
    }
    [[nodiscard]] bool isBehindEnd() const { return position() > std::uint64_t{bytes_.size()} * 8; }

  private:
    std::string_view bytes_;
    std::uint64_t next_ = 0;
    std::uint64_t bits_ = 0;
    unsigned count_ = 0;
};

/// What a code stands for, as far as it matters how long it is.
struct Meaning {
    std::uint8_t length = 0;  ///< of the code; 0 for one that there is not
    std::uint8_t extra = 0;   ///< bits behind it
    std::uint16_t symbol = 0;
};

/// A code by the bits that it begins with.
template <unsigned TableBits>
class CodeTable {
  public:
    /// `lengths` are those of the codes of each symbol; `extraOf` says how many bits follow one.
    template <typename Extra>
    bool make(std::span<const std::uint8_t> lengths, Extra extraOf) {
        std::array<unsigned, longestCode + 2> counts{};
        for (const std::uint8_t length : lengths) ++counts[length];
        counts[0] = 0;
        std::array<unsigned, longestCode + 2> codes{};
        for (unsigned length = 1; length <= longestCode; ++length) {
            codes[length + 1] = (codes[length] + counts[length]) << 1U;
            if (codes[length] + counts[length] > 1U << length) return false;
        }
        table_.fill({});
        longCount_ = 0;
        for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
            const unsigned length = lengths[symbol];
            if (length == 0) continue;
            put(mirrored(codes[length]++, length),
                {static_cast<std::uint8_t>(length), static_cast<std::uint8_t>(extraOf(symbol)),
                 static_cast<std::uint16_t>(symbol)});
        }
        return true;
    }

    [[nodiscard]] Meaning find(std::uint64_t bits) const {
        const Meaning found = table_[bits & (table_.size() - 1)];
        return found.length != 0 || longCount_ == 0 ? found : findLong(bits);
    }

  private:
    static unsigned mirrored(unsigned code, unsigned length) {
        unsigned mirror = 0;
        for (unsigned i = 0; i < length; ++i) mirror |= (code >> i & 1U) << (length - 1 - i);
        return mirror;
    }

    void put(unsigned code, Meaning meaning) {
        if (meaning.length > TableBits) {
            long_[longCount_++] = {code, meaning};
            return;
        }
        for (std::size_t at = code; at < table_.size(); at += std::size_t{1} << meaning.length) {
            table_[at] = meaning;
        }
    }

    /// Codes that are longer than the table knows: few, and rarely met.
    [[nodiscard]] Meaning findLong(std::uint64_t bits) const {
        for (std::size_t i = 0; i < longCount_; ++i) {
            const auto& [code, meaning] = long_[i];
            if ((bits & ((1U << meaning.length) - 1)) == code) return meaning;
        }
        return {};
    }

    struct LongCode {
        unsigned code = 0;
        Meaning meaning;
    };
    std::array<Meaning, std::size_t{1} << TableBits> table_{};
    std::array<LongCode, letterCount> long_{};
    std::size_t longCount_ = 0;
};

constexpr unsigned extraOfLetter(std::size_t symbol) {
    return symbol < 265 || symbol >= 285 ? 0 : static_cast<unsigned>(symbol - 261) / 4;
}
constexpr unsigned extraOfDistance(std::size_t symbol) {
    return symbol < 4 ? 0 : static_cast<unsigned>(symbol) / 2 - 1;
}

class BlockWalk {
  public:
    explicit BlockWalk(std::string_view packed) : packed_(packed), bits_(packed) {}

    std::optional<DeflateBlock> last() {
        while (true) {
            DeflateBlock block{bits_.position(), 0};
            bits_.fill();
            const bool isLast = bits_.take(1) == 1;
            if (!passBlock(bits_.take(2)) || bits_.isBehindEnd()) return std::nullopt;
            block.end = bits_.position();
            if (isLast) return block;
        }
    }

  private:
    bool passBlock(unsigned kind) {
        switch (kind) {
            case 0:
                return passStored();
            case 1:
                return makeFixed() && passSymbols();
            case 2:
                return readTables() && passSymbols();
            default:
                return false;
        }
    }

    bool passStored() {
        const std::uint64_t at = (bits_.position() + 7) / 8;
        if (at + 4 > packed_.size()) return false;
        const auto byte = [&](std::size_t i) {
            return static_cast<unsigned>(static_cast<unsigned char>(packed_[at + i]));
        };
        const unsigned length = byte(0) | byte(1) << 8U;
        bits_.goTo(at + 4 + length);
        return (length ^ (byte(2) | byte(3) << 8U)) == 0xFFFFU;
    }

    bool makeFixed() {
        std::array<std::uint8_t, letterCount> letters{};
        for (std::size_t i = 0; i < letters.size(); ++i) {
            letters[i] = i < 144 ? 8 : i < 256 ? 9 : i < 280 ? 7 : 8;
        }
        std::array<std::uint8_t, distanceCount> distances{};
        distances.fill(5);
        return letters_.make(letters, extraOfLetter) && distances_.make(distances, extraOfDistance);
    }

    bool readTables() {
        constexpr std::array<std::uint8_t, 19> order{16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                     11, 4,  12, 3, 13, 2, 14, 1, 15};
        const std::size_t letters = bits_.take(5) + 257;
        const std::size_t distances = bits_.take(5) + 1;
        const std::size_t count = bits_.take(4) + 4;
        std::array<std::uint8_t, order.size()> lengths{};
        for (std::size_t i = 0; i < count; ++i) {
            bits_.fill();
            lengths[order[i]] = static_cast<std::uint8_t>(bits_.take(3));
        }
        constexpr auto noExtra = [](std::size_t) { return 0U; };
        std::array<std::uint8_t, letterCount + distanceCount> all{};
        if (letters > letterCount || !lengths_.make(lengths, noExtra) ||
            !readLengths(std::span(all).first(letters + distances))) {
            return false;
        }
        const std::span<const std::uint8_t> read(all);
        return letters_.make(read.first(letters), extraOfLetter) &&
               distances_.make(read.subspan(letters, distances), extraOfDistance);
    }

    bool readLengths(std::span<std::uint8_t> lengths) {
        for (std::size_t i = 0; i < lengths.size();) {
            bits_.fill();
            const Meaning found = lengths_.find(bits_.bits());
            if (found.length == 0) return false;
            bits_.pass(found.length);
            if (found.symbol < 16) {
                lengths[i++] = static_cast<std::uint8_t>(found.symbol);
                continue;
            }
            const bool repeats = found.symbol == 16;
            if (repeats && i == 0) return false;
            const std::size_t count = found.symbol == 16   ? bits_.take(2) + 3
                                      : found.symbol == 17 ? bits_.take(3) + 3
                                                           : bits_.take(7) + 11;
            if (count > lengths.size() - i) return false;
            std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(i), count,
                        repeats ? lengths[i - 1] : 0);
            i += count;
        }
        return true;
    }

    bool passSymbols() {
        while (!bits_.isBehindEnd()) {
            bits_.fill();
            Meaning found = letters_.find(bits_.bits());
            // There are bits enough for three literals, not for a distance behind two of them.
            for (int i = 0; i < 2 && found.symbol < endOfBlock && found.length != 0; ++i) {
                bits_.pass(found.length);
                found = letters_.find(bits_.bits());
            }
            if (found.symbol > endOfBlock) bits_.fill();
            bits_.pass(found.length + found.extra);
            if (found.length == 0) return false;
            if (found.symbol == endOfBlock) return true;
            if (found.symbol > endOfBlock) {
                const Meaning distance = distances_.find(bits_.bits());
                if (distance.length == 0) return false;
                bits_.pass(distance.length + distance.extra);
            }
        }
        return false;
    }

    std::string_view packed_;
    BitReader bits_;
    CodeTable<11> letters_;
    CodeTable<9> distances_;
    CodeTable<7> lengths_;
};

}  // namespace

std::optional<DeflateBlock> lastDeflateBlock(std::string_view packed) { return BlockWalk(packed).last(); }

void appendEmptyBlock(std::string& packed, std::uint64_t freeBits) {
    // Its first byte is its kind, three bits, and what is missing to a whole byte; it may be there already.
    constexpr std::string_view block("\x00\x00\x00\xFF\xFF", 5);
    constexpr std::uint64_t kindBits = 3;
    packed += freeBits >= kindBits ? block.substr(1) : block;
}

}  // namespace vexa::frontend
