// Reads JSON from its beginning to its end and reports what it finds, without keeping any of it.
//
// The library's own reader takes longer than the peers that imports are measured beside; what it reports to
// is the library's interface.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace vexa::frontend {

using JsonEvents = nlohmann::json_sax<nlohmann::json>;

/// The text is not owned. Takes what RFC 8259 calls JSON, in UTF-8, with a byte order mark or without;
/// nesting costs a bit a level.
class JsonReader {
  public:
    explicit JsonReader(std::string_view text)
        : text_(text), at_(text.data()), end_(text.data() + text.size()), token_(at_) {}
    ~JsonReader() = default;
    JsonReader(const JsonReader&) = delete;
    JsonReader& operator=(const JsonReader&) = delete;

    /// Reports the whole text; false when it is no JSON, or as soon as `events` answers false.
    bool read(JsonEvents& events);

    /// Why the text is no JSON, as shown; empty when it is, or when `events` stopped the reading. It stands
    /// at `tokenBegin`.
    [[nodiscard]] const std::string& failure() const { return failure_; }
    /// The offset of what was reported last, and the one behind it.
    [[nodiscard]] std::size_t tokenBegin() const { return static_cast<std::size_t>(token_ - text_.data()); }
    [[nodiscard]] std::size_t offset() const { return static_cast<std::size_t>(at_ - text_.data()); }
    [[nodiscard]] std::string_view text() const { return text_; }

  private:
    /// What may come next.
    enum class State { value, valueOrEnd, key, keyOrEnd, colon, behindValue, end };

    bool step(JsonEvents& events);
    bool readValue(JsonEvents& events);
    bool readKey(JsonEvents& events);
    bool open(JsonEvents& events, bool isList);
    bool close(JsonEvents& events);
    bool readBehindValue(JsonEvents& events);
    bool readWord(std::string_view word, JsonEvents& events);
    bool readNumber(JsonEvents& events);
    bool reportNumber(JsonEvents& events, const char* begin, bool isWhole);
    bool readText();
    bool readEscape();
    bool readCode(unsigned& code);
    void skipBlanks();
    void ended() { state_ = open_.empty() ? State::end : State::behindValue; }
    bool fail(const char* at, std::string_view expected);
    bool failWith(const char* at, std::string message);

    std::string_view text_;
    const char* at_;
    const char* end_;
    const char* token_;
    State state_ = State::value;
    std::vector<bool> open_;  // true for a list
    std::string value_;
    std::string failure_;
};

}  // namespace vexa::frontend
