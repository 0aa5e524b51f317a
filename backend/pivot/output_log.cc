#include "backend/pivot/output_log.h"

#include <algorithm>
#include <cassert>

namespace vexa {

OutputLog& OutputLog::current() {
    static OutputLog log;
    return log;
}

void OutputLog::addListener(LogListener& listener) {
    assert(!publishing_);
    assert(std::find(listeners_.begin(), listeners_.end(), &listener) == listeners_.end());
    listeners_.push_back(&listener);
}

void OutputLog::removeListener(LogListener& listener) {
    assert(!publishing_);
    const auto found = std::find(listeners_.begin(), listeners_.end(), &listener);
    assert(found != listeners_.end());
    if (found != listeners_.end()) listeners_.erase(found);
}

void OutputLog::publish(const LogEvent& event) {
    assert(!publishing_);
    struct Publishing {
        explicit Publishing(bool& flag) : flag_(flag) { flag_ = true; }
        ~Publishing() { flag_ = false; }
        Publishing(const Publishing&) = delete;
        Publishing& operator=(const Publishing&) = delete;
        bool& flag_;
    } publishing(publishing_);
    for (LogListener* listener : listeners_) listener->receive(event);
}

void BP_FLUSHLOG() {
    OutputLog& log = OutputLog::current();
    if (log.hasListeners()) log.publish(LogFlushed{});
}

}  // namespace vexa
