#include "frontend/export/drawings_ahead.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/unit/export/export_samples.h"

namespace vexa::frontend {
namespace {

/// Says in `log` what happens to drawings: `+3` one is begun, `-3` it is given away or given up.
class LoggedDrawing {
  public:
    LoggedDrawing(std::string& log, std::size_t number) : log_(log), number_(number) {
        log_ += "+" + std::to_string(number_);
    }
    ~LoggedDrawing() { log_ += "-" + std::to_string(number_); }
    LoggedDrawing(const LoggedDrawing&) = delete;
    LoggedDrawing& operator=(const LoggedDrawing&) = delete;

    [[nodiscard]] std::size_t number() const { return number_; }

  private:
    std::string& log_;
    std::size_t number_;
};

using Ahead = DrawingsAhead<std::unique_ptr<LoggedDrawing>>;

class DrawingsAheadTest : public ::testing::Test {
  protected:
    /// Five charts and, as the third item, a text.
    DrawingsAheadTest() {
        const std::string chart =
            R"({"type":"chart","svg":"<svg xmlns='http://www.w3.org/2000/svg' width='8' height='4'/>"})";
        const std::string between = R"(,{"type":"text","text":"Between"},)";
        fill(document_, chart + "," + chart + between + chart + "," + chart + "," + chart);
        plan_ = planExport(document_.outline(), {});
    }

    [[nodiscard]] const ExportedItem& item(std::size_t number) const { return plan_.items.at(number - 1); }

    Ahead::Begin begin() {
        return [this](const ExportedItem& each) {
            return each.number == 4 ? nullptr : std::make_unique<LoggedDrawing>(log_, each.number);
        };
    }

    ViewerDocument document_;
    ExportPlan plan_;
    std::string log_;
};

TEST_F(DrawingsAheadTest, BeginsWhatComesNext) {
    Ahead drawings(plan_, begin(), 2);
    EXPECT_EQ(1U, drawings.take(item(1))->number());
    EXPECT_EQ("+1+2-1", log_);
    EXPECT_EQ(2U, drawings.take(item(2))->number());
    EXPECT_EQ("+1+2-1+5-2", log_) << "nothing is drawn of the fourth item";
}

TEST_F(DrawingsAheadTest, OfFewBytesAreNotMany) {
    Ahead drawings(plan_, begin(), 9);
    EXPECT_TRUE(drawings.shareLittle());
    EXPECT_EQ(1U, drawings.take(item(1))->number());
    EXPECT_EQ("+1+2+5-1", log_);
}

TEST_F(DrawingsAheadTest, HasNothingOfWhatIsNotDrawn) {
    Ahead drawings(plan_, begin(), 3);
    EXPECT_EQ(nullptr, drawings.take(item(4)));
    EXPECT_EQ("+5+6", log_);
}

TEST_F(DrawingsAheadTest, GivesUpWhatIsPassedOver) {
    Ahead drawings(plan_, begin(), 2);
    EXPECT_EQ(1U, drawings.take(item(1))->number());
    EXPECT_EQ(6U, drawings.take(item(6))->number());
    EXPECT_EQ("+1+2-1-2+6-6", log_);
}

TEST_F(DrawingsAheadTest, GivesUpAtTheEnd) {
    {
        Ahead drawings(plan_, begin(), 2);
        static_cast<void>(drawings.take(item(1)));
    }
    EXPECT_EQ("+1+2-1-2", log_);
}

TEST_F(DrawingsAheadTest, BeginsOneAfterTheOtherWhereNoMoreAreWanted) {
    Ahead drawings(plan_, begin(), 1);
    for (const std::size_t number : {1U, 2U, 5U, 6U})
        EXPECT_EQ(number, drawings.take(item(number))->number());
    EXPECT_EQ("+1-1+2-2+5-5+6-6", log_);
}

}  // namespace
}  // namespace vexa::frontend
