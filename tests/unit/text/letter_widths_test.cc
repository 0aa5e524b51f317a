#include "backend/text/letter_widths.h"

#include <gtest/gtest.h>

#include "backend/text/letters.h"

namespace vexa {
namespace {

TEST(LetterWidths, AreThoseOfTheCharacterDatabase) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        ASSERT_EQ(letterWidthByTable(code), letterWidth(code))
            << std::hex << static_cast<std::uint32_t>(code);
    }
}

}  // namespace
}  // namespace vexa
