// Asking for memory before it is needed.
#include "backend/platform/memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>

namespace vexa {
namespace {

TEST(Memory, IsThereForLittle) { EXPECT_NO_THROW(requireMemory(std::uint64_t{1} << 20U)); }

// No machine has addresses for so much.
TEST(Memory, IsNotThereForMoreThanThereCanBe) {
    EXPECT_THROW(requireMemory(std::uint64_t{1} << 60U), std::bad_alloc);
}

}  // namespace
}  // namespace vexa
