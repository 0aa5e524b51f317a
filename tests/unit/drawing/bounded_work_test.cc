#include "frontend/drawing/bounded_work.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <stdexcept>

using namespace vexa::frontend;

namespace {

TEST(BoundedWork, GivesWhatTheWorkReturned) {
    std::string result = "before";
    const std::string long_(3'000'000, 'x');
    EXPECT_EQ(WorkEnd::done, workApart([&] { return long_; }, {}, result));
    EXPECT_EQ(long_, result);
    EXPECT_EQ(WorkEnd::done, workApart([] { return std::string(); }, {}, result));
    EXPECT_EQ("", result);
}

TEST(BoundedWork, ChangesNothingHere) {
    int changed = 0;
    std::string result;
    EXPECT_EQ(WorkEnd::done, workApart([&] { return changed = 1, std::string("done"); }, {}, result));
    EXPECT_EQ(0, changed);
}

TEST(BoundedWork, OutlivesACrash) {
    std::string result;
    EXPECT_EQ(WorkEnd::crashed, workApart([]() -> std::string { abort(); }, {}, result));
    EXPECT_EQ(WorkEnd::crashed, workApart([]() -> std::string { _exit(0); }, {}, result));
    EXPECT_EQ(WorkEnd::crashed,
              workApart([]() -> std::string { throw std::runtime_error("x"); }, {}, result));
}

TEST(BoundedWork, EndsWhatTakesTooLong) {
    std::string result;
    WorkLimits limits;
    limits.seconds = 1;
    EXPECT_EQ(WorkEnd::tooLong, workApart(
                                    []() -> std::string {
                                        for (;;) pause();
                                    },
                                    limits, result));
}

TEST(BoundedWork, EndsResultsThatAreTooLong) {
    std::string result;
    WorkLimits limits;
    limits.resultBytes = 1000;
    EXPECT_EQ(WorkEnd::tooLong, workApart([] { return std::string(10'000'000, 'x'); }, limits, result));
}

}  // namespace
