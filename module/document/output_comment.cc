// OUTPUT COMMENT: puts lines of text into the output, as a table of one column without a visible title. Sends
// nothing to the output controller.

#include <algorithm>
#include <iterator>
#include <vector>

#include "backend/text/character_set.h"
#include "module/document/commands.h"
#include "module/frame/command.h"
#include "module/frame/date_time_symbols.h"
#include "module/frame/given_values.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr CommandIdentity kIdentity{"OUTPUT COMMENT", "Output Comment"_text, "Output Comment"};

constexpr std::string_view kBoldValues[] = {"YES", "NO", "TRUE", "FALSE"};

constexpr auto kText =
    optionalParameter("TEXT", Spec::tokens, "'text'").readOnly(UPSpecTypes::ReadValue::text);
constexpr std::string_view kColorLabel =
    "{black|blue|cyan|darkGray|gray|green|lightGray|magenta|orange|pink|white|yellow|#RRGGBB}";
constexpr auto kColor = optionalParameter("COLOR", Spec::tokens, kColorLabel);
constexpr auto kBackground = optionalParameter("BGCOLOR", Spec::tokens, kColorLabel);
constexpr auto kBold = optionalParameter("BOLD", Spec::word).of(kBoldValues);

constexpr double kNarrowest = 10.0;
constexpr double kWidest = 1000.0;

constexpr ParameterRow kParameters[] = {
    kColor, kBackground, optionalParameter("WIDTH", Spec::number), kBold, kText,
};

constexpr ParameterRow kLineParametersAtFirst[] = {kText, kColor, kBackground};
constexpr ParameterRow kLineParameters[] = {kText, kColor, kBackground, kBold};

/// LINE is described twice; this is meant. The later description holds.
constexpr SubcommandRow kGrammar[] = {
    {"", UPSpecTypes::SubComSpec::keywordParameters, false, false, kParameters},
    {"LINE", UPSpecTypes::SubComSpec::keywordParameters, false, true, kLineParametersAtFirst},
    {"LINE", UPSpecTypes::SubComSpec::keywordParameters, false, true, kLineParameters},
};

/// The names of colors, in exactly these spellings.
constexpr std::string_view kColorNames[] = {
    "black",  "BLACK",  "blue",  "BLUE",  "cyan",      "CYAN",       "darkGray", "DARK_GRAY",
    "gray",   "GRAY",   "green", "GREEN", "lightGray", "LIGHT_GRAY", "magenta",  "MAGENTA",
    "orange", "ORANGE", "pink",  "PINK",  "white",     "WHITE",      "yellow",   "YELLOW"};

constexpr int kTranslatable = 1;
constexpr int kUserText = 0;

/// A line of the comment; the comment itself has the same settings for lines that have none of their own.
struct CommentLine {
    bool bold = false;
    bool boldGiven = false;
    std::string color;
    std::string bgColor;
    std::string text;
};

struct Comment {
    CommentLine whole;
    std::int32_t width = -1;
    std::vector<CommentLine> lines;
};

bool isHexadecimal(char each) {
    return (each >= '0' && each <= '9') || (each >= 'a' && each <= 'f') || (each >= 'A' && each <= 'F');
}

/// A number sign and six characters more. One hexadecimal digit among them is enough; this is meant.
bool isTriple(const std::string& text) {
    constexpr int kLengthOfTriple = 7;
    int characters = 0;
    bool hexadecimal = false;
    const char* at = text.c_str();
    for (int length = 0; (length = VEXAMBmbclen_A(at)) > 0; at += length) {
        characters++;
        hexadecimal = hexadecimal || (length == 1 && isHexadecimal(*at));
    }
    const bool whole = at == text.c_str() + text.size();
    return whole && characters == kLengthOfTriple && text.front() == '#' && hexadecimal;
}

bool isColor(std::string_view text) {
    return isTriple(std::string(text)) ||
           std::find(std::begin(kColorNames), std::end(kColorNames), text) != std::end(kColorNames);
}

std::string readText(const SubComObj& given) {
    const ParamObj* const text = given.getParamObj("TEXT");
    const std::optional<TextValue> value = text != nullptr ? textValue(*text) : std::nullopt;
    return value ? ExpandDateTimeSymbols(value->text) : std::string();
}

std::string readColor(const SubComObj& given, std::string_view keyword, ParserMessage& messages) {
    const ParamObj* const color = given.getParamObj(keyword);
    if (color == nullptr) {
        return {};
    }
    const std::optional<TextValue> value = textValue(*color);
    if (value && isColor(value->text)) {
        return std::string(value->text);
    }
    messages.IgnoredParamValue(keyword, given.name(),
                               value ? std::string(value->text) : color->joinedTokens());
    return {};
}

CommentLine readLine(const SubComObj& given, ParserMessage& messages) {
    CommentLine line;
    line.text = readText(given);
    line.color = readColor(given, "COLOR", messages);
    line.bgColor = readColor(given, "BGCOLOR", messages);
    if (const ParamObj* const bold = given.getParamObj("BOLD")) {
        line.boldGiven = true;
        line.bold = bold->isStringValueCase("YES") || bold->isStringValueCase("TRUE");
    }
    return line;
}

std::int32_t readWidth(const SubComObj& leading, ParserMessage& messages) {
    constexpr int kInclusive = 1;
    const ParamObj* const given = leading.getParamObj("WIDTH");
    if (given == nullptr) {
        return -1;
    }
    // Out of bounds in whatever form, and also where 32 bits do not hold it.
    const double width = given->getDoubleValue().value_or(-1.0);  // the parser lets only numbers through
    if (width < kNarrowest || width > kWidest) {
        messages.ParamValueBreakBdry(width, kNarrowest, kInclusive, kWidest, kInclusive, "WIDTH", "");
        return -1;
    }
    const std::optional<std::int32_t> whole = given->getIntegerValue();
    if (!whole) {
        messages.IgnoredParamValue("WIDTH", "", given->joinedTokens());
    }
    return whole.value_or(-1);
}

Comment readComment(Command& command) {
    Comment comment;
    comment.width = readWidth(command.leading(), command.messages());
    comment.whole = readLine(command.leading(), command.messages());
    if (!comment.whole.text.empty()) {
        comment.lines.push_back(comment.whole);
    }
    std::vector<const SubComObj*> lines;
    command.spec().getSubComObj(lines, "LINE");
    for (const SubComObj* const line : lines) {
        comment.lines.push_back(readLine(*line, command.messages()));
    }
    return comment;
}

/// A width of exactly 10 sets nothing; this is meant.
void setWidth(std::int32_t width, BpPivotTable& table) {
    constexpr int kNarrowestColumn = 100;
    constexpr int kWidestColumn = 200;
    if (width > kNarrowest) {
        table.MinDataColumnWidth(width);
        table.MaxDataColumnWidth(width);
    } else if (width <= 0) {
        table.MinDataColumnWidth(kNarrowestColumn);
        table.MaxDataColumnWidth(kWidestColumn);
    }
}

void addLine(const CommentLine& line, const CommentLine& whole, BpCategory category) {
    category.Cell(BpString(line.text, kUserText));
    if (line.boldGiven ? line.bold : whole.bold) {
        category.Bold();
    }
    const std::string& color = line.color.empty() ? whole.color : line.color;
    if (!color.empty()) {
        category.Color(color);
    }
    const std::string& background = line.bgColor.empty() ? whole.bgColor : line.bgColor;
    if (!background.empty()) {
        category.Background(background);
    }
}

void buildTable(const Comment& comment, BpProcedure& procedure) {
    constexpr int kDimensionKind = 2;
    const BpString title("Comment"_text, kTranslatable);
    BpPivotTable table = procedure.PivotTable(title, BpString("", kUserText), true);
    table.Caption(title);
    setWidth(comment.width, table);
    table.HideTitle();
    BpDimension dimension = table.Dimension(title, kDimensionKind);
    dimension.Position(0, 1, 1, 1);
    int index = 0;
    for (const CommentLine& line : comment.lines) {
        addLine(line, comment.whole, dimension.Category(BpNumber(index++, BpProcedure::Count)));
    }
}

}  // namespace

GrammarTable outputCommentGrammar() { return kGrammar; }

void outputComment() {
    Command command(kIdentity, kGrammar);
    if (command.parse()) {
        buildTable(readComment(command), command.procedure());
    }
}

}  // namespace vexa
