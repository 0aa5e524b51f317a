// REPORT: a web report, as plain HTML or in one file.

#include <vector>

#include "backend/tokens/token_sequence.h"
#include "module/export/format_values.h"
#include "module/export/formats.h"
#include "module/export/targets.h"
#include "module/frame/given_values.h"
#include "module/frame/xml_text.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr Choice kReportFormats[] = {{"HTML", 0}, {"MHT", 1}};
constexpr auto kReportFormatWords = wordsOf(kReportFormats);

struct Exclusion {
    std::string_view keyword;
    void (ExportReportSpec::*exclude)();
};

constexpr Exclusion kExclusions[] = {{"TEXTS", &ExportReportSpec::excludeTexts},
                                     {"LOGS", &ExportReportSpec::excludeLogs},
                                     {"NOTES", &ExportReportSpec::excludeNotes},
                                     {"WARNINGS", &ExportReportSpec::excludeWarnings}};
constexpr std::string_view kExcluded[] = {"TEXTS", "LOGS", "NOTES", "WARNINGS"};

constexpr ParameterRow kParameters[] = {
    kDocumentFile,
    optionalParameter("TITLE", Spec::tokens, "{'text'|FILENAME}"),
    optionalParameter("FORMAT", Spec::word).of(kReportFormatWords),
    optionalParameter("EXCLUDE", Spec::words).of(kExcluded),
    optionalParameter("URL", Spec::tokens, "('url' 'label', ...)"),
    yesOrNo("RESTYLE"),
};

constexpr KeywordOption<ExportReportSpec> kKeywords[] = {
    {"FORMAT", kReportFormats, setNumber<ExportReportSpec, &ExportReportSpec::setMHT>},
};

constexpr SystemText kInvalidUrl = "URL must specify a valid URL"_text;
constexpr SystemText kNotSeparated = "URLs must be separated"_text;

/// A quoted title, or the file's path for FILENAME. False when it was refused.
bool readTitle(const SubComObj& given, const std::string& path, ParserMessage& messages,
               ExportReportSpec& report) {
    const ParamObj* const title = given.getParamObj("TITLE");
    if (title == nullptr) {
        return true;
    }
    const std::optional<TextValue> value = textValue(*title);
    if (value && value->isLiteral) {
        report.setTitle(escapeXml(value->text));
    } else if (value && AreStringsEqualCase(value->text, "FILENAME")) {
        report.setTitle(escapeXml(path));
    } else {
        messages.InvalidParamValue(title->joinedTokens(), "TITLE", "REPORT");
        return false;
    }
    return true;
}

void readExclusions(const SubComObj& given, ExportReportSpec& report) {
    std::vector<std::string_view> words;
    if (const ParamObj* const excluded = given.getParamObj("EXCLUDE")) {
        // The parser lets nothing but the keywords through.
        static_cast<void>(excluded->getStringList(words));
    }
    for (const std::string_view word : words) {
        for (const Exclusion& each : kExclusions) {
            if (AreStringsEqualCase(word, each.keyword)) {
                (report.*each.exclude)();
            }
        }
    }
}

/// Walks the pairs between the parentheses.
class UrlReader {
  public:
    UrlReader(std::span<const TokenInfoObj> tokens, ParserMessage& messages, ExportReportSpec& report)
        : tokens_(tokens), messages_(messages), report_(report) {}

    bool read() {
        while (valid_ && at_ < tokens_.size()) {
            readPair();
        }
        return valid_;
    }

  private:
    [[nodiscard]] bool isSeparator(std::size_t at) const {
        return tokens_[at].getOperatorCode() == TokenSequenceBase::separator;
    }

    void readPair() {
        const std::size_t label = at_ + 1;
        if (isSeparator(at_) || label >= tokens_.size() || isSeparator(label)) {
            refuse(kInvalidUrl);
            return;
        }
        const std::size_t next = label + 1;
        if (next < tokens_.size() && !isSeparator(next)) {
            refuse(kNotSeparated);
        }
        report_.addURL(tokens_[at_].getString(), tokens_[label].getString());
        at_ = next + 1;
    }

    void refuse(SystemText message) {
        messages_.GenericError(message);
        valid_ = false;
    }

    std::span<const TokenInfoObj> tokens_;
    ParserMessage& messages_;
    ExportReportSpec& report_;
    std::size_t at_ = 0;
    bool valid_ = true;
};

bool readUrls(const SubComObj& given, ParserMessage& messages, ExportReportSpec& report) {
    constexpr std::size_t kFewestTokens = 4;
    const ParamObj* const urls = given.getParamObj("URL");
    if (urls == nullptr) {
        return true;
    }
    const std::span<const TokenInfoObj> tokens = urls->getTokenList();
    const int first = tokens.empty() ? 0 : tokens.front().getOperatorCode();
    // A closing parenthesis in the first place is accepted; this is meant.
    const bool opened =
        first == TokenSequenceBase::openParenthesis || first == TokenSequenceBase::closeParenthesis;
    if (!opened) {
        messages.ParenRequired("URL");
    }
    if (tokens.size() < kFewestTokens) {
        messages.GenericError(kInvalidUrl);
        return false;
    }
    return UrlReader(tokens.subspan(1, tokens.size() - 2), messages, report).read() && opened;
}

void readRestyle(const SubComObj& given, ExportReportSpec& report) {
    const ParamObj* const restyle = given.getParamObj("RESTYLE");
    if (restyle != nullptr && restyle->isStringValue("NO")) {
        report.restyle(false);  // YES is the front end's own default and is not set
    }
}

}  // namespace

constexpr SubcommandRow kReportGrammar{"REPORT", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                       kParameters};

bool readReport(const CommandSpec& command, ParserMessage& messages, ExportReportSpec& report,
                std::string& path) {
    const SubComObj* const given = command.getSubComObj("REPORT");
    // Unlike the other formats it stops at a file or a title that was refused.
    if (given == nullptr || !readFileInto(path, *given, messages, report) ||
        !readTitle(*given, path, messages, report)) {
        return false;
    }
    readKeywords<ExportReportSpec>(*given, kKeywords, report);
    readExclusions(*given, report);
    const bool valid = readUrls(*given, messages, report);
    readRestyle(*given, report);
    return finish(report, valid);
}

}  // namespace vexa
