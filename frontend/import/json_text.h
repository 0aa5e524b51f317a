// Writes JSON as people read it: one line for what is short, and lines of about the same length for lists.
// Only some kilobytes are held: small documents can be very long as JSON.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexa::frontend {

class JsonText {
  public:
    using Sink = std::function<void(std::string_view)>;

    /// `sink` takes the text piece by piece.
    explicit JsonText(Sink sink) : sink_(std::move(sink)) {}

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginList() { begin('['); }
    void endList() { end(']'); }
    void key(std::string_view name);
    void text(std::string_view value);
    /// The shortest text that reads as the same number; null for one that is not finite.
    void number(double value);
    void whole(std::uint64_t value);
    void flag(bool value) { word(value ? "true" : "false"); }
    void null() { word("null"); }
    /// Bytes as a text in base64.
    void base64(std::string_view bytes);
    /// JSON that is finished.
    void raw(std::string_view json) { word(json); }

    /// The next key or value begins a line that is indented by one blank more than the line of the object or
    /// list that it stands in.
    void newLine() { isLinePending_ = true; }
    /// The same when the line is long already.
    void newLineIfLong();
    /// Blanks before lines that begin now, until the object or list ends.
    void indent(std::size_t blanks) { levels_.back().indentation = blanks; }
    [[nodiscard]] std::size_t indentation() const { return levels_.empty() ? 0 : levels_.back().indentation; }

    /// Hands out what is left, and a line end.
    void finish();

  private:
    struct Level {
        bool isFirst = true;
        std::size_t indentation = 0;
    };

    void begin(char bracket);
    void end(char bracket);
    void word(std::string_view json);
    void separate();
    void handOut();
    void handOutIfLong();
    [[nodiscard]] std::uint64_t written() const { return handedOut_ + out_.size(); }

    Sink sink_;
    std::string out_;              // what is not handed out yet
    std::uint64_t handedOut_ = 0;  // bytes
    std::uint64_t lineBegin_ = 0;
    std::vector<Level> levels_;
    bool isKeyWritten_ = false;
    bool isLinePending_ = false;
};

}  // namespace vexa::frontend
