#include "backend/platform/standard_output.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>

namespace vexa {
namespace {

using namespace std::string_literals;

/// Another buffer under `std::cout` for the length of one test.
class StandardOutput : public testing::Test {
  protected:
    void under(std::streambuf& buffer) { std::cout.rdbuf(&buffer); }
    ~StandardOutput() override {
        std::cout.clear();
        std::cout.rdbuf(own_);
    }

  private:
    std::streambuf* own_ = std::cout.rdbuf();
};

/// Keeps what arrives, and what had arrived at the last flush.
class CountingBuffer : public std::stringbuf {
  public:
    std::string flushed;

  private:
    int sync() override {
        flushed = str();
        return 0;
    }
};

/// A full disk.
class FullBuffer : public std::streambuf {};

TEST_F(StandardOutput, TakesTheBytesAsTheyAreInOrderAndAtOnce) {
    CountingBuffer buffer;
    under(buffer);
    std::cout << "before ";
    const std::string bytes = "a\0b\xFF\r\n"s;
    writeStandardOutput(bytes);
    EXPECT_EQ(buffer.flushed, "before " + bytes);
    writeStandardOutput("");
    EXPECT_EQ(buffer.flushed, "before " + bytes);
}

TEST_F(StandardOutput, RemembersThatItFailed) {
    FullBuffer buffer;
    under(buffer);
    writeStandardOutput("lost");
    EXPECT_FALSE(std::cout.good());
}

}  // namespace
}  // namespace vexa
