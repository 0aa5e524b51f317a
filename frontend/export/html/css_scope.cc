#include "frontend/export/html/css_scope.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <vector>

namespace vexa::frontend {

namespace {

constexpr int deepestBlocks = 8;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\f";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& each : lower) each = static_cast<char>(std::tolower(static_cast<unsigned char>(each)));
    return lower;
}

std::string withoutComments(std::string_view css) {
    std::string text;
    for (;;) {
        const std::size_t begin = css.find("/*");
        text += css.substr(0, begin);
        if (begin == std::string_view::npos) return text;
        const std::size_t end = css.find("*/", begin + 2);
        if (end == std::string_view::npos) return text;
        css.remove_prefix(end + 2);
        text += ' ';
    }
}

/// The first of `wanted` outside quotes, parentheses and brackets, from `begin` on.
std::size_t findOutside(std::string_view css, std::string_view wanted, std::size_t begin) {
    int depth = 0;
    char quote = 0;
    for (std::size_t i = begin; i < css.size(); ++i) {
        const char each = css[i];
        if (quote != 0) {
            if (each == quote) quote = 0;
        } else if (each == '"' || each == '\'') {
            quote = each;
        } else if (depth == 0 && wanted.find(each) != std::string_view::npos) {
            return i;
        } else if (each == '(' || each == '[') {
            ++depth;
        } else if ((each == ')' || each == ']') && depth > 0) {
            --depth;
        }
    }
    return std::string_view::npos;
}

/// Where the block that begins at `open`, a brace, ends.
std::size_t endOfBlock(std::string_view css, std::size_t open) {
    int depth = 1;
    std::size_t at = open + 1;
    while (depth > 0) {
        at = findOutside(css, "{}", at);
        if (at == std::string_view::npos) return css.size();
        depth += css[at] == '{' ? 1 : -1;
        ++at;
    }
    return at - 1;
}

std::vector<std::string_view> parts(std::string_view css, char divider) {
    std::vector<std::string_view> found;
    std::size_t begin = 0;
    for (;;) {
        const std::size_t end = findOutside(css, std::string_view(&divider, 1), begin);
        found.push_back(trimmed(css.substr(begin, end - begin)));
        if (end == std::string_view::npos) return found;
        begin = end + 1;
    }
}

/// A backslash could hide a word, and `<` could end the style element.
bool isHarmless(std::string_view css) { return css.find_first_of("\\<{}") == std::string_view::npos; }

bool isAllowed(std::string_view property, std::string_view value) {
    constexpr std::string_view forbidden[] = {"expression(", "javascript:", "image(",
                                              "image-set(",  "src(",        "@"};
    if (property == "position" || property == "behavior" || property == "-moz-binding") return false;
    const std::string words = lowered(value);
    return std::none_of(std::begin(forbidden), std::end(forbidden),
                        [&words](std::string_view each) { return words.find(each) != std::string::npos; });
}

std::string renamed(std::string_view selector, const PictureScope& scope) {
    std::string text;
    int bracket = 0;
    for (const char each : selector) {
        if (each == '[') ++bracket;
        if (each == ']' && bracket > 0) --bracket;
        text += each;
        if (bracket == 0 && (each == '#' || each == '.')) text += scope.element + "-";
    }
    return text;
}

std::string scopedSelector(std::string_view selector, const PictureScope& scope) {
    const std::string within = ":where(#" + scope.element + " *)";
    if (lowered(selector) == ":root") return "#" + scope.element + ">svg";
    std::string text = renamed(selector, scope);
    const std::size_t element = text.find("::");
    text.insert(element == std::string::npos ? text.size() : element, within);
    return text;
}

std::string scopedSelectors(std::string_view selectors, const PictureScope& scope) {
    std::string text;
    for (const std::string_view each : parts(selectors, ',')) {
        if (each.empty() || !isHarmless(each)) return {};
        text += (text.empty() ? "" : ",") + scopedSelector(each, scope);
    }
    return text;
}

class RuleScoper {
  public:
    explicit RuleScoper(const PictureScope& scope) : scope_(scope) {}

    void append(std::string& text, std::string_view css, int depth) const {
        for (;;) {
            css = trimmed(css);
            if (css.empty() || depth > deepestBlocks) return;
            const std::size_t open = findOutside(css, css.front() == '@' ? "{;" : "{", 0);
            if (open == std::string_view::npos) return;
            if (css[open] == ';') {  // @import, @charset
                css.remove_prefix(open + 1);
                continue;
            }
            const std::size_t end = endOfBlock(css, open);
            const std::string_view prelude = trimmed(css.substr(0, open));
            const std::string_view block = css.substr(open + 1, end - open - 1);
            if (prelude.starts_with('@')) {
                appendConditional(text, prelude, block, depth);
            } else {
                appendRule(text, prelude, block);
            }
            css.remove_prefix(std::min(end + 1, css.size()));
        }
    }

  private:
    void appendConditional(std::string& text, std::string_view prelude, std::string_view block,
                           int depth) const {
        const std::string words = lowered(prelude);
        const bool isCondition = words.starts_with("@media") || words.starts_with("@supports");
        if (!isCondition || !isHarmless(prelude)) return;
        std::string rules;
        append(rules, block, depth + 1);
        if (!rules.empty()) text.append(prelude).append("{").append(rules).append("}");
    }

    void appendRule(std::string& text, std::string_view prelude, std::string_view block) const {
        const std::string selectors = scopedSelectors(prelude, scope_);
        const std::string declarations = safeDeclarations(block, scope_);
        if (!selectors.empty() && !declarations.empty()) text += selectors + "{" + declarations + "}";
    }

    const PictureScope& scope_;
};

}  // namespace

bool scopeReferences(std::string& value, const PictureScope& scope) {
    std::size_t at = 0;
    for (;;) {
        at = lowered(value).find("url(", at);
        if (at == std::string::npos) return true;
        at += 4;
        while (at < value.size() && (value[at] == ' ' || value[at] == '"' || value[at] == '\'')) ++at;
        if (at >= value.size() || value[at] != '#') return false;
        value.insert(at + 1, scope.element + "-");
    }
}

std::string safeDeclarations(std::string_view css, const PictureScope& scope) {
    std::string text;
    for (const std::string_view each : parts(css, ';')) {
        const std::size_t colon = each.find(':');
        if (colon == std::string_view::npos || !isHarmless(each)) continue;
        const std::string property = lowered(trimmed(each.substr(0, colon)));
        std::string value(trimmed(each.substr(colon + 1)));
        if (property.empty() || value.empty() || !isAllowed(property, value)) continue;
        if (scopeReferences(value, scope)) text.append(property).append(":").append(value).append(";");
    }
    return text;
}

std::string scopedRules(std::string_view css, const PictureScope& scope) {
    std::string text;
    RuleScoper(scope).append(text, withoutComments(css), 0);
    return text;
}

}  // namespace vexa::frontend
