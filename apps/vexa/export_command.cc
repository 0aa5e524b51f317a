#include "apps/vexa/export_command.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <vector>

#include "backend/strings/dictionary.h"
#include "backend/syntax/nearest_keyword.h"

namespace vexa::program {

namespace {

struct Format {
    std::string_view extension;
    std::string_view subcommand;
    std::string_view more = {};
    bool isPicture = false;
};

constexpr Format kFormats[] = {
    {"htm", "HTML"},
    {"html", "HTML"},
    {"mht", "REPORT", " FORMAT=MHT"},
    {"mhtml", "REPORT", " FORMAT=MHT"},
    {"txt", "TEXT"},
    {"pdf", "PDF"},
    {"doc", "DOC"},
    {"docx", "DOC"},
    {"rtf", "DOC"},
    {"ppt", "PPT"},
    {"pptx", "PPT"},
    {"xls", "XLS"},
    {"xlsx", "XLSX"},
    {"xlsm", "XLSM"},
    {"png", "PNG", "", true},
    {"jpg", "JPG", "", true},
    {"jpeg", "JPG", "", true},
    {"bmp", "BMP", "", true},
    {"tif", "TIF", "", true},
    {"tiff", "TIF", "", true},
    {"emf", "EMF", "", true},
    {"eps", "EPS", "", true},
};

std::string capitals(std::string_view text) {
    std::string upper(text);
    for (char& each : upper) each = static_cast<char>(std::toupper(static_cast<unsigned char>(each)));
    return upper;
}

std::string quoted(std::string_view text) {
    std::string literal = "'";
    for (const char each : text) {
        literal += each;
        if (each == '\'') literal += each;
    }
    return literal + "'";
}

/// The parameters whose values are texts in quotes.
bool takesText(std::string_view keyword, std::string_view value) {
    constexpr std::string_view kTexts[] = {"DOCUMENTFILE", "IMAGEROOT", "SHEET",
                                           "STARTCELL",    "ROWBORDER", "COLUMNBORDER"};
    if (keyword == "TITLE") return capitals(value) != "FILENAME";
    return std::find(std::begin(kTexts), std::end(kTexts), keyword) != std::end(kTexts);
}

bool isQuoted(std::string_view value) {
    return value.size() > 1 && (value.front() == '\'' || value.front() == '"') &&
           value.back() == value.front();
}

std::string parameter(std::string_view keyword, std::string_view value) {
    const bool quotes = takesText(keyword, value) && !isQuoted(value);
    return " " + std::string(keyword) + "=" + (quotes ? quoted(value) : std::string(value));
}

std::size_t extensionBegin(std::string_view file) {
    const std::size_t point = file.rfind('.');
    const std::size_t folder = file.find_last_of("/\\");
    const bool isThere = point != std::string_view::npos &&
                         (folder == std::string_view::npos || folder + 1 < point) && point > 0;
    return isThere ? point : file.size();
}

const Format* formatOf(const ExportWish& wish) {
    const std::string as = capitals(wish.as);
    const std::size_t begin = extensionBegin(wish.file);
    const std::string extension =
        begin < wish.file.size() ? capitals(std::string_view(wish.file).substr(begin + 1)) : std::string();
    const auto is = [&](const Format& format) { return capitals(format.extension) == extension; };
    const auto* found = std::find_if(std::begin(kFormats), std::end(kFormats), is);
    if (as.empty()) return found == std::end(kFormats) ? nullptr : found;
    if (found != std::end(kFormats) && found->subcommand == as) return found;
    if (as == "REPORT") {
        static constexpr Format kReport{"html", "REPORT"};
        return &kReport;
    }
    const auto isNamed = [&as](const Format& format) { return format.subcommand == as; };
    found = std::find_if(std::begin(kFormats), std::end(kFormats), isNamed);
    return found == std::end(kFormats) ? nullptr : found;
}

bool knows(const SubComDescriptor* subcommand, const std::string& keyword) {
    return subcommand != nullptr && subcommand->findParameter(keyword) != nullptr;
}

std::string objectionToKeyword(const std::string& keyword, const std::string& subcommand,
                               std::initializer_list<const SubComDescriptor*> subcommands) {
    std::vector<std::string_view> known;
    for (const SubComDescriptor* const each : subcommands) {
        if (each == nullptr) continue;
        for (const ParamDescriptor& parameter : each->parameters()) {
            // The file has its own place on the command line.
            const std::string_view name = parameter.name();
            if (!name.empty() && name != "DOCUMENTFILE" && name != "IMAGEROOT") known.push_back(name);
        }
    }
    std::string message = composed(
        R"(OUTPUT EXPORT has no keyword ^1 for ^2. "vexa help OUTPUT EXPORT ^2" shows what it has.)"_text,
        {keyword, subcommand});
    const std::string_view nearest = nearestKeyword(keyword, known);
    appendSentence(message, nearest.empty() ? composed("It takes ^1."_text, {listKeywords(known)})
                                            : composed("Did you mean ^1?"_text, {std::string(nearest)}));
    return message;
}

std::string objectionToFormat(const ExportWish& wish) {
    if (wish.as.empty()) {
        return composed(
            "What ^1 shall be is not known. Give it an extension such as .html, .txt or .pdf, or say it: --as report."_text,
            {wish.file});
    }
    std::vector<std::string_view> known{"REPORT"};
    for (const Format& format : kFormats) {
        if (std::find(known.begin(), known.end(), format.subcommand) == known.end()) {
            known.push_back(format.subcommand);
        }
    }
    const std::string_view nearest = nearestKeyword(wish.as, known);
    std::string message = composed("There is no format ^1."_text, {wish.as});
    appendSentence(message, nearest.empty() ? composed("Give one of these: ^1."_text, {listKeywords(known)})
                                            : composed("Did you mean ^1?"_text, {std::string(nearest)}));
    return message;
}

ExportCommand refused(std::string problem) { return {{}, std::move(problem)}; }

}  // namespace

ExportCommand exportCommand(const ExportWish& wish, const CommandDescriptor& grammar) {
    const Format* const format = formatOf(wish);
    if (format == nullptr) {
        return refused(objectionToFormat(wish));
    }
    const std::string subcommand(format->subcommand);
    const SubComDescriptor* const own = grammar.findSubcommand(subcommand);
    const SubComDescriptor* const contents = grammar.findSubcommand("CONTENTS");
    const SubComDescriptor* const leading =
        grammar.subcommands().empty() ? nullptr : &grammar.subcommands().front();
    std::string ofFormat = format->isPicture
                               ? parameter("IMAGEROOT", wish.file.substr(0, extensionBegin(wish.file)))
                               : parameter("DOCUMENTFILE", wish.file);
    ofFormat += format->more;
    std::string ofContents;
    std::string ofCommand;
    for (const std::string& each : wish.keywords) {
        const std::size_t equals = each.find('=');
        if (equals == std::string::npos || equals == 0 || equals + 1 == each.size()) {
            return refused(composed("^1 is no KEYWORD=VALUE, such as NOTESCAPTIONS=NO."_text, {each}));
        }
        const std::string keyword = capitals(each.substr(0, equals));
        const std::string text = parameter(keyword, std::string_view(each).substr(equals + 1));
        if (knows(own, keyword)) {
            ofFormat += text;
        } else if (knows(contents, keyword)) {
            ofContents += text;
        } else if (knows(leading, keyword)) {
            ofCommand += text;
        } else {
            return refused(objectionToKeyword(keyword, subcommand, {own, contents, leading}));
        }
    }
    if (!ofContents.empty()) ofContents = "\n  /CONTENTS" + ofContents;
    return {"OUTPUT EXPORT" + ofCommand + ofContents + "\n  /" + subcommand + ofFormat + ".\n", {}};
}

}  // namespace vexa::program
