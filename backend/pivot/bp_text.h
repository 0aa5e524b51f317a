// Texts for the output log: plain, or composed of a text with the markers ^1, ^2, ... and what replaces them.
//
// Texts come in the back end's character set and are kept as UTF-8. A translatable text is looked up in the
// string tables (`backend/strings/dictionary.h`) when it is shown; a text that they lack is shown as it
// stands.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "backend/text/system_text.h"

namespace vexa {

/// What a message, a label or a cell can hold.
class BpCellText {
  public:
    virtual ~BpCellText() = default;

    /// The text as given, markers and all.
    [[nodiscard]] virtual std::string text() const = 0;
    /// What replaces the markers, in their order; empty for a text without arguments.
    [[nodiscard]] virtual std::vector<std::string> arguments() const { return {}; }
    /// The text as shown: translated where it is translatable, markers replaced.
    [[nodiscard]] virtual std::string shown() const = 0;
    /// The value as a number, for a text that is one.
    [[nodiscard]] virtual std::optional<double> number() const { return std::nullopt; }
};

/// One text.
class BpString : public BpCellText {
  public:
    /// `flag` 1: a text of the system, translatable; 0: text from the user or the surroundings, never
    /// translated.
    BpString(std::string_view text, int flag);

    [[nodiscard]] std::string text() const override { return text_; }
    [[nodiscard]] std::string shown() const override;

  private:
    std::string text_;
    bool translatable_;
};

/// A text with markers, and the texts that replace them: the first added replaces ^1, the second ^2, and so
/// on. A marker without an argument stays as it is; arguments of a text without any marker are shown as a
/// list behind it.
class BpComposite : public BpCellText {
  public:
    BpComposite(std::string_view text, int flag);

    /// Takes the argument as it is shown now.
    BpComposite& Add(const BpString& argument);
    /// Closes the composite; nothing may be added afterwards.
    void Finish();

    [[nodiscard]] std::string text() const override { return text_; }
    [[nodiscard]] std::vector<std::string> arguments() const override { return arguments_; }
    [[nodiscard]] std::string shown() const override;

  private:
    std::string text_;
    bool translatable_;
    bool finished_ = false;
    std::vector<std::string> arguments_;
};

/// How numbers are written. `count`: rounded to a whole number, without separators; a value that is not
/// finite is shown as a period.
enum class BpNumberFormat { count };

/// A number in a cell, a label or a note.
class BpNumber : public BpCellText {
  public:
    BpNumber(double value, BpNumberFormat format);

    [[nodiscard]] std::string text() const override { return shown(); }
    [[nodiscard]] std::string shown() const override;
    [[nodiscard]] std::optional<double> number() const override { return value_; }

  private:
    double value_;
    BpNumberFormat format_;
};

/// How a message is shown; the commands pass 2.
using BpErrorShow = int;
/// How grave a message is: 1 a note, 2 a warning, 3 and above an error.
using BpErrorLevel = int;

/// Puts a message into the output log.
void BpError(const BpCellText& message, BpErrorShow show, BpErrorLevel level);

}  // namespace vexa
