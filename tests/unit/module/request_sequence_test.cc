#include "module/frame/request_sequence.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

TEST(RequestSequence, BeginsWithOne) {
    RequestSequence sequence;
    EXPECT_EQ(sequence.next(), 1);
    EXPECT_EQ(sequence.next(), 2);
}

TEST(RequestSequence, BeginsAgainAfterTwoThousandMillion) {
    RequestSequence sequence(1'999'999'999);
    EXPECT_EQ(sequence.next(), 2'000'000'000);
    EXPECT_EQ(sequence.next(), 1);
    EXPECT_EQ(sequence.next(), 2);
}

}  // namespace
}  // namespace vexa
