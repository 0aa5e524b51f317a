#include "module/frame/special_bytes.h"

#include <algorithm>
#include <cstring>

// Not on Windows, where g++ does not align what it keeps of such values on the stack (its bug 54412).
#if defined(__x86_64__) && !defined(_WIN32)
#define VEXA_WITH_AVX2
#include <immintrin.h>
#endif

namespace vexa {

namespace {

constexpr std::size_t kBlock = 64;

/// & and ' differ in one bit, < and > in another.
constexpr bool isSpecial(unsigned char byte) {
    return byte == '"' || (byte | 1U) == '\'' || (byte | 2U) == '>';
}

/// Without a branch in the loop, so that the compiler can look at many bytes at a time.
bool hasSpecial(const char* block) {
    unsigned char found = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const bool special = isSpecial(static_cast<unsigned char>(block[i]));
        found = static_cast<unsigned char>(found | static_cast<unsigned char>(special));
    }
    return found != 0;
}

#if defined(VEXA_WITH_AVX2)
/// The five have different low halves, by which a table of 16 bytes gives the only special byte that each
/// byte can be. (A byte above 127 gives 0, which it is not.)
__attribute__((target("avx2"))) void markAvx2(const char* text, std::size_t blocks, std::uint64_t* masks) {
    const __m256i candidates =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(1, 0, '"', 0, 0, 0, '&', '\'', 0, 0, 0, 0, '<', 0, '>', 0));
    for (std::size_t block = 0; block < blocks; ++block, text += kBlock) {
        __m256i left;
        __m256i right;
        std::memcpy(&left, text, sizeof left);
        std::memcpy(&right, text + sizeof left, sizeof right);
        const __m256i inLeft = _mm256_cmpeq_epi8(_mm256_shuffle_epi8(candidates, left), left);
        const __m256i inRight = _mm256_cmpeq_epi8(_mm256_shuffle_epi8(candidates, right), right);
        masks[block] = static_cast<std::uint32_t>(_mm256_movemask_epi8(inLeft)) |
                       static_cast<std::uint64_t>(_mm256_movemask_epi8(inRight)) << 32U;
    }
}
#endif

}  // namespace

void markSpecialBytesAnywhere(const char* text, std::size_t blocks, std::uint64_t* masks) {
    for (std::size_t block = 0; block < blocks; ++block, text += kBlock) {
        masks[block] = 0;
        for (std::size_t i = 0; hasSpecial(text) && i < kBlock; ++i) {
            const bool special = isSpecial(static_cast<unsigned char>(text[i]));
            masks[block] |= static_cast<std::uint64_t>(special) << i;
        }
    }
}

MarkSpecialBytes fastestMarkSpecialBytes() {
#if defined(VEXA_WITH_AVX2)
    if (__builtin_cpu_supports("avx2") != 0) {
        return markAvx2;
    }
#endif
    return markSpecialBytesAnywhere;
}

bool SpecialBytes::markMore() {
    static const MarkSpecialBytes mark = fastestMarkSpecialBytes();
    const std::string_view rest = text_.substr(marked_);
    from_ = marked_;
    block_ = 0;
    blocks_ = std::min(rest.size() / kBlock, kBlocksAtOnce);
    if (blocks_ > 0) {
        mark(rest.data(), blocks_, masks_.data());
        marked_ += blocks_ * kBlock;
    } else if (!rest.empty()) {
        std::array<char, kBlock> last{};
        std::memcpy(last.data(), rest.data(), rest.size());
        mark(last.data(), 1, masks_.data());
        blocks_ = 1;
        marked_ = text_.size();
    }
    return blocks_ > 0;
}

}  // namespace vexa
