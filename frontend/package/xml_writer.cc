#include "frontend/package/xml_writer.h"

#include <array>
#include <cassert>
#include <charconv>
#include <utility>

namespace vexa::frontend {
namespace {

/// Of text that is handed on together.
constexpr std::size_t pieceOfText = 256U << 10U;

using Digits = std::array<char, 32>;

template <typename Number>
std::string_view digitsOf(Number number, Digits& digits) {
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), static_cast<std::size_t>(result.ptr - digits.data())};
}

}  // namespace

XmlWriter::XmlWriter(const XmlStyle& style) : style_(style) {
    if (!style_.declaration) {
        return;
    }
    out_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"";
    out_ += style_.standalone ? " standalone=\"yes\"?>\n" : "?>\n";
    tags_ = 1;
    quotes_ = style_.standalone ? 6 : 4;
}

XmlWriter::XmlWriter(const XmlStyle& style, ByteSink sink) : XmlWriter(style) { sink_ = std::move(sink); }

void XmlWriter::passOn() {
    if (sink_ && out_.size() >= pieceOfText) {
        result_ = result_ ? sink_(out_) : result_;
        out_.clear();
    }
}

void XmlWriter::closeStartTag() {
    if (startTagOpen_) {
        out_ += '>';
        startTagOpen_ = false;
    }
}

XmlWriter& XmlWriter::begin(std::string_view name) {
    if (startTagOpen_) {
        out_ += style_.lines ? ">\n" : ">";
    }
    passOn();
    out_ += '<';
    out_ += name;
    open_.push_back(name);
    startTagOpen_ = true;
    ++tags_;
    return *this;
}

XmlWriter& XmlWriter::attribute(std::string_view name, std::string_view text) {
    assert(startTagOpen_);
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    appendXmlValue(out_, text, style_.escapes);
    out_ += '"';
    quotes_ += 2;
    return *this;
}

XmlWriter& XmlWriter::plainAttribute(std::string_view name, std::string_view text) {
    assert(startTagOpen_);
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    out_ += text;
    out_ += '"';
    quotes_ += 2;
    return *this;
}

XmlWriter& XmlWriter::attribute(std::string_view name, std::int64_t number) {
    Digits digits{};
    return plainAttribute(name, digitsOf(number, digits));
}

XmlWriter& XmlWriter::attribute(std::string_view name, double number) {
    Digits digits{};
    return plainAttribute(name, digitsOf(number, digits));
}

XmlWriter& XmlWriter::flag(std::string_view name, bool value) {
    return value ? plainAttribute(name, "true") : *this;
}

XmlWriter& XmlWriter::optional(std::string_view name, std::string_view text) {
    return text.empty() ? *this : attribute(name, text);
}

XmlWriter& XmlWriter::text(std::string_view text) {
    if (!text.empty()) {
        closeStartTag();
        passOn();
        appendXmlText(out_, text, style_.escapes);
    }
    return *this;
}

XmlWriter& XmlWriter::raw(std::string_view xml) {
    if (!xml.empty()) {
        closeStartTag();
        passOn();
        out_ += xml;
    }
    return *this;
}

void XmlWriter::end() {
    assert(!open_.empty());
    if (startTagOpen_ && !style_.pairs) {
        endShort();
        return;
    }
    closeStartTag();
    out_ += "</";
    out_ += open_.back();
    out_ += '>';
    ++tags_;
    closeElement();
}

void XmlWriter::endShort() {
    assert(startTagOpen_);
    out_ += "/>";
    startTagOpen_ = false;
    closeElement();
}

void XmlWriter::closeElement() {
    if (style_.lines) {
        out_ += '\n';
    }
    open_.pop_back();
}

XmlWriter& XmlWriter::element(std::string_view name, std::string_view content) {
    begin(name).text(content).end();
    return *this;
}

std::string XmlWriter::take() {
    assert(open_.empty() && !sink_);
    return std::move(out_);
}

PackageResult XmlWriter::finish() {
    assert(open_.empty() && sink_);
    if (result_ && !out_.empty()) {
        result_ = sink_(out_);
    }
    out_.clear();
    return result_;
}

}  // namespace vexa::frontend
