#include "backend/pivot/bp_text.h"

#include <array>
#include <cassert>
#include <charconv>
#include <cmath>

#include "backend/pivot/output_log.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

bool hasMarker(std::string_view text) {
    for (std::size_t at = text.find('^'); at != std::string_view::npos; at = text.find('^', at + 1)) {
        if (at + 1 < text.size() && text[at + 1] >= '1' && text[at + 1] <= '9') return true;
    }
    return false;
}

std::string withList(std::string text, const std::vector<std::string>& items) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        text.append(i == 0 ? " " : ", ").append(items[i]);
    }
    return text;
}

std::string countText(double value) {
    if (!std::isfinite(value)) return ".";
    // Adding zero turns -0 into 0; the largest double has 309 digits.
    const double whole = std::round(value) + 0.0;
    std::array<char, 320> digits{};
    const auto result =
        std::to_chars(digits.data(), digits.data() + digits.size(), whole, std::chars_format::fixed, 0);
    assert(result.ec == std::errc());
    return {digits.data(), result.ptr};
}

}  // namespace

BpString::BpString(std::string_view text, int flag) : text_(toUtf8(text)), translatable_(flag == 1) {}

std::string BpString::shown() const { return translatable_ ? translated(text_) : text_; }

BpComposite::BpComposite(std::string_view text, int flag) : text_(toUtf8(text)), translatable_(flag == 1) {}

BpComposite& BpComposite::Add(const BpString& argument) {
    assert(!finished_);
    arguments_.push_back(argument.shown());
    return *this;
}

void BpComposite::Finish() { finished_ = true; }

std::string BpComposite::shown() const {
    const std::string text = translatable_ ? translated(text_) : text_;
    return hasMarker(text) ? replaceMarkers(text, arguments_) : withList(text, arguments_);
}

BpNumber::BpNumber(double value, BpNumberFormat format) : value_(value), format_(format) {}

std::string BpNumber::shown() const {
    switch (format_) {
        case BpNumberFormat::count:
            return countText(value_);
    }
    assert(false);
    return {};
}

void BpError(const BpCellText& message, BpErrorShow show, BpErrorLevel level) {
    OutputLog& log = OutputLog::current();
    if (!log.hasListeners()) return;
    log.publish(ErrorReported{show, level, message.text(), message.arguments(), message.shown()});
}

}  // namespace vexa
