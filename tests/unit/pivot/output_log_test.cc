#include "backend/pivot/output_log.h"

#include <gtest/gtest.h>

#include "tests/unit/pivot/collected_log.h"

namespace vexa {
namespace {

class NumberedListener : public LogListener {
  public:
    NumberedListener(int number, std::vector<int>& order) : number_(number), order_(order) {}
    void receive(const LogEvent&) override { order_.push_back(number_); }

  private:
    int number_;
    std::vector<int>& order_;
};

TEST(OutputLog, ReachesItsListenersInTheOrderInWhichTheyWereAdded) {
    OutputLog log;
    std::vector<int> order;
    NumberedListener first(1, order);
    NumberedListener second(2, order);
    NumberedListener third(3, order);
    EXPECT_FALSE(log.hasListeners());
    log.publish(LogFlushed{});
    for (LogListener* listener : {&first, &second, &third}) log.addListener(*listener);
    EXPECT_TRUE(log.hasListeners());
    log.publish(LogFlushed{});
    log.removeListener(second);
    log.publish(LogFlushed{});
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3, 1, 3}));
}

TEST(OutputLog, IsFlushedByTheBackEndsOperation) {
    const CollectedLog log;
    BP_FLUSHLOG();
    EXPECT_EQ(log.all<LogFlushed>().size(), 1U);
}

#ifndef NDEBUG
class MeddlingListener : public LogListener {
  public:
    explicit MeddlingListener(OutputLog& log) : log_(log) {}
    void receive(const LogEvent&) override { log_.removeListener(*this); }

  private:
    OutputLog& log_;
};

TEST(OutputLogDeathTest, RefusesThatAListenerLeavesWhileItIsCalled) {
    OutputLog log;
    MeddlingListener listener(log);
    log.addListener(listener);
    EXPECT_DEATH(log.publish(LogFlushed{}), "publishing_");
}
#endif

}  // namespace
}  // namespace vexa
