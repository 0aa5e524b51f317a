#include "module/modify/cell_selection.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>

#include "backend/tokens/token_sequence.h"
#include "module/frame/xml_text.h"

namespace vexa {

namespace {

struct CellKeyword {
    std::string_view keyword;
    CellKind kind;
};

constexpr CellKeyword kKeywords[] = {
    {"CORRELATION", CellKind::correlation},
    {"CORRELATIONS", CellKind::correlation},
    {"COUNT", CellKind::count},
    {"MEAN", CellKind::mean},
    {"MEDIAN", CellKind::median},
    {"PERCENT", CellKind::percent},
    {"RESIDUAL", CellKind::residual},
    {"RESIDUALS", CellKind::residual},
    {"SIGNIFICANCE", CellKind::significance},
    {"BODY", CellKind::body},
    {"HEADERS", CellKind::headers},
    {"FOOTNOTES", CellKind::footnotes},
    {"TITLE", CellKind::title},
    {"CAPTION", CellKind::caption},
};

/// One for each `CellKind`, in its order.
constexpr std::string_view kAttributes[] = {"correlation", "count",     "mean",  "median",
                                            "percent",     "residual",  "body",  "significance",
                                            "headers",     "footnotes", "title", "caption"};

constexpr std::uint32_t bitOf(CellKind kind) { return 1U << static_cast<unsigned>(kind); }

/// Walks the tokens behind the opening bracket. An error does not end the walk, but for an unknown word.
class CellSelectionReader {
  public:
    CellSelectionReader(std::span<const TokenInfoObj> tokens, ParserMessage& messages,
                        CellSelection& selection)
        : tokens_(tokens), messages_(messages), selection_(selection) {}

    bool read() {
        bool known = true;
        while (known && at_ < tokens_.size()) {
            known = readItem(tokens_[at_++]);
        }
        return valid_;
    }

  private:
    /// False for a word that is none of the keywords.
    bool readItem(const TokenInfoObj& token) {
        if (token.isLiteral() && !token.getString().empty()) {
            selection_.expressions.push_back(escapeXml(token.getString()));
        } else if (token.spells("POSITION")) {
            readPositions();
        } else if (token.isWordLike()) {
            return readKeyword(token);
        }
        return true;  // numbers, operators and the closing bracket mean nothing
    }

    bool readKeyword(const TokenInfoObj& token) {
        const auto* const found =
            std::find_if(std::begin(kKeywords), std::end(kKeywords),
                         [&](const CellKeyword& each) { return token.spells(each.keyword); });
        if (found == std::end(kKeywords)) {
            messages_.InvalidParam(token.getString(), "TABLECELLS");
            valid_ = false;
            return false;
        }
        selection_.kinds |= bitOf(found->kind);
        return true;
    }

    /// The list in parentheses behind POSITION.
    void readPositions() {
        if (!isAt(TokenSequenceBase::openParenthesis)) {
            refuseList();
            return;
        }
        const std::size_t before = selection_.positions.size();
        bool allIntegers = true;
        for (++at_; at_ < tokens_.size() && !isAt(TokenSequenceBase::closeParenthesis); ++at_) {
            if (!isAt(TokenSequenceBase::separator)) {
                allIntegers = readPosition(tokens_[at_]) && allIntegers;
            }
        }
        if (at_ == tokens_.size() || selection_.positions.size() == before) {
            refuseList();
        } else if (!allIntegers) {
            refusePosition();
        }
    }

    /// False for a token that is no integer.
    bool readPosition(const TokenInfoObj& token) {
        const std::optional<std::int32_t> position = token.getIntegerValue();
        if (position) {
            selection_.positions.push_back(*position);
        }
        if (position && *position < 1) {
            refusePosition();
        }
        return position.has_value();
    }

    void refuseList() {
        messages_.ParenRequired("TABLECELLS");
        valid_ = false;
    }

    void refusePosition() {
        messages_.ParamNeedIntegerList("POSITION", "TABLECELLS");
        valid_ = false;
    }

    [[nodiscard]] bool isAt(int code) const {
        return at_ < tokens_.size() && tokens_[at_].getOperatorCode() == code;
    }

    std::span<const TokenInfoObj> tokens_;
    ParserMessage& messages_;
    CellSelection& selection_;
    std::size_t at_ = 0;
    bool valid_ = true;
};

template <typename Values, typename ToText>
std::string joined(const Values& values, ToText toText) {
    std::string text;
    for (const auto& value : values) {
        text += (text.empty() ? "" : ";") + toText(value);
    }
    return text;
}

}  // namespace

bool readCellSelection(const SubComObj& cells, ParserMessage& messages, CellSelection& selection) {
    const ParamObj* const select = cells.getParamObj("SELECT");
    if (select == nullptr) {
        messages.ParamRequiredForSubCom("SELECT", "TABLECELLS");
        return false;
    }
    const std::span<const TokenInfoObj> tokens = select->getTokenList();
    if (tokens.size() < 2 || tokens.front().getOperatorCode() != TokenSequenceBase::openBracket ||
        tokens.back().getOperatorCode() != TokenSequenceBase::closeBracket) {
        messages.SquareBracketRequired("SELECT", "TABLECELLS");
        return false;
    }
    return CellSelectionReader(tokens.subspan(1), messages, selection).read();
}

void writeCellSelection(const CellSelection& selection, std::string& request) {
    for (std::size_t i = 0; i < std::size(kAttributes); ++i) {
        if ((selection.kinds & bitOf(static_cast<CellKind>(i))) != 0) {
            appendFlag(request, kAttributes[i], true);
        }
    }
    if (!selection.expressions.empty()) {
        appendText(request, "selectExpression",
                   joined(selection.expressions, [](const std::string& each) { return each; }));
    }
    if (!selection.positions.empty()) {
        appendAsIs(request, "selectPosition",
                   joined(selection.positions, [](std::int32_t each) { return std::to_string(each); }));
    }
}

}  // namespace vexa
