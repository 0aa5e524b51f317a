// TEXT: plain text, with images beside it.

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <system_error>

#include "backend/text/character_set.h"
#include "module/export/read_format.h"
#include "module/frame/given_values.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr Choice kEncodings[] = {{"LOCALE", 0}, {"UTF8", 1}, {"UTF16", 2}};
constexpr Choice kSeparators[] = {{"SPACE", 0}, {"TAB", 1}};
constexpr auto kEncodingWords = wordsOf(kEncodings);
constexpr auto kSeparatorWords = wordsOf(kSeparators);
constexpr std::string_view kAutofit[] = {"AUTOFIT"};

constexpr ParameterRow kParameters[] = {
    kDocumentFile,
    optionalParameter("ENCODING", Spec::word).of(kEncodingWords),
    kNotesCaptions,
    ParameterRow{"COLUMNWIDTH", Spec::integer, false, false, kAutofit}.boundedBy(atLeast(0)).checked(),
    optionalParameter("SEPARATOR", Spec::word).of(kSeparatorWords),
    optionalParameter("ROWBORDER", Spec::literalOrWord, "character"),
    optionalParameter("COLUMNBORDER", Spec::literalOrWord, "character"),
    kImageFormatRow,
};

constexpr KeywordOption<ExportTextSpec> kKeywords[] = {
    {"ENCODING", kEncodings, setNumber<ExportTextSpec, &ExportTextSpec::setEncoding>},
    {"NOTESCAPTIONS", kYesNoChoices, setNumber<ExportTextSpec, &ExportTextSpec::setNotesAndCaptions>},
    {"SEPARATOR", kSeparators, setNumber<ExportTextSpec, &ExportTextSpec::setSeparator>},
    {"IMAGEFORMAT", kImageFormats, setNumber<ExportTextSpec, &ExportTextSpec::setImageFormat>},
};

/// The number of a text of digits, a sign before them; however large, it stays a whole number.
std::optional<std::int64_t> wholeNumber(std::string_view text) {
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number);
    if (stopped != end || error == std::errc::invalid_argument) {
        return std::nullopt;
    }
    using Limits = std::numeric_limits<std::int64_t>;
    return error == std::errc() ? number : text.starts_with('-') ? Limits::min() : Limits::max();
}

bool readColumnWidth(const SubComObj& given, ParserMessage& messages, ExportTextSpec& text) {
    const ParamObj* const width = given.getParamObj("COLUMNWIDTH");
    if (width == nullptr) {
        return true;
    }
    if (width->getTokenListSize() == 1 && width->getTokenObj(0).spells("AUTOFIT")) {
        text.setColumnWidth(0, "0", true);
        return true;
    }
    const std::string typed = width->joinedTokens();
    const std::optional<std::int64_t> number = wholeNumber(typed);
    if (!number || *number <= 0) {
        reportNotAboveZero(typed, "COLUMNWIDTH", messages);
        return false;
    }
    text.setColumnWidth(*number, typed, false);
    return true;
}

/// The first character of the value; empty when the value is, or was not given.
std::string_view readBorder(const SubComObj& given, std::string_view name) {
    const ParamObj* const border = given.getParamObj(name);
    const std::optional<TextValue> value = border != nullptr ? textValue(*border) : std::nullopt;
    if (!value || value->text.empty()) {
        return {};
    }
    return value->text.substr(0,
                              currentCharacterSet().characterLength(value->text.data(), value->text.size()));
}

void readBorders(const SubComObj& given, ExportTextSpec& text) {
    if (const std::string_view border = readBorder(given, "ROWBORDER"); !border.empty()) {
        text.setRowBorder(border);
    }
    if (const std::string_view border = readBorder(given, "COLUMNBORDER"); !border.empty()) {
        text.setColumnBorder(border);
    }
}

bool readWidthAndBorders(const SubComObj& given, ParserMessage& messages, ExportTextSpec& text) {
    readBorders(given, text);
    return readColumnWidth(given, messages, text);
}

}  // namespace

constexpr SubcommandRow kTextGrammar{"TEXT", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                     kParameters};

bool readText(const CommandSpec& command, ParserMessage& messages, ExportTextSpec& text, std::string& path) {
    return readDocument<ExportTextSpec>(kTextGrammar, command, messages, text, path, kKeywords,
                                        readWidthAndBorders);
}

}  // namespace vexa
