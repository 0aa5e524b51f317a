#include "module/frame/request_sequence.h"

namespace vexa {

namespace {

constexpr std::int32_t kLargest = 2'000'000'000;

}  // namespace

std::int32_t RequestSequence::next() {
    last_ = last_ >= kLargest ? 1 : last_ + 1;
    return last_;
}

RequestSequence& RequestSequence::ofModule() {
    static RequestSequence sequence;
    return sequence;
}

}  // namespace vexa
