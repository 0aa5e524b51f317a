// The road of one format: is it there, where does it go, what was chosen for it.
#pragma once

#include <span>
#include <string>

#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"

namespace vexa {

/// Reads what only one format has. False when a value was refused.
template <typename Format>
using ReadOwnValues = bool (*)(const SubComObj& given, ParserMessage& messages, Format& format);

/// Reads the document format that `grammar` describes: its file, its keywords, and what else it has. Reading
/// goes on after a refused value.
template <typename Format>
[[nodiscard]] bool readDocument(const SubcommandRow& grammar, const CommandSpec& command,
                                ParserMessage& messages, Format& format, std::string& path,
                                std::span<const KeywordOption<Format>> keywords,
                                ReadOwnValues<Format> readOwnValues = nullptr) {
    const SubComObj* const given = command.getSubComObj(grammar.name);
    if (given == nullptr) {
        return false;
    }
    bool valid = readFileInto(path, *given, messages, format);
    readKeywords(*given, keywords, format);
    valid = (readOwnValues == nullptr || readOwnValues(*given, messages, format)) && valid;
    return finish(format, valid);
}

/// The same for images: their root, their size, which `readWidth` reads, and their keywords.
template <typename Format>
[[nodiscard]] bool readImages(const SubcommandRow& grammar, const CommandSpec& command,
                              ParserMessage& messages, Format& format, bool rootRequired,
                              std::span<const KeywordOption<Format>> keywords,
                              ReadOwnValues<Format> readWidth) {
    const SubComObj* const given = command.getSubComObj(grammar.name);
    if (given == nullptr) {
        return false;
    }
    readImageRoot(*given, rootRequired, messages, format);
    const bool valid = readWidth(*given, messages, format);
    readKeywords(*given, keywords, format);
    return finish(format, valid);
}

/// Images whose size is PERCENTSIZE.
template <typename Format>
[[nodiscard]] bool readSizedImages(const SubcommandRow& grammar, const CommandSpec& command,
                                   ParserMessage& messages, Format& format, bool rootRequired,
                                   std::span<const KeywordOption<Format>> keywords = {}) {
    return readImages<Format>(grammar, command, messages, format, rootRequired, keywords,
                              [](const SubComObj& given, ParserMessage& reports, Format& images) {
                                  return readPercentSize(given, reports, images);
                              });
}

}  // namespace vexa
