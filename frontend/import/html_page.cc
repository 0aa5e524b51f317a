#include "frontend/import/html_page.h"

#include <libxml/HTMLparser.h>
#include <libxml/tree.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "frontend/import/html_tables.h"

namespace vexa::frontend {

namespace {

constexpr std::size_t kDeepestElement = 512;
constexpr std::size_t kMostSpan = 65534;

struct FreeDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};

std::string_view nameOf(const xmlNode* node) {
    if (node->type != XML_ELEMENT_NODE || node->name == nullptr) return {};
    return reinterpret_cast<const char*>(node->name);
}

/// Collects texts as a browser shows them: blanks joined, a line end for <br> and between paragraphs.
class ShownText {
  public:
    void add(std::string_view text) {
        for (const char c : text) {
            const bool blank = c == ' ' || (c >= '\t' && c <= '\r');
            if (!blank) {
                if (isBlankPending_ && !text_.empty() && text_.back() != '\n') text_ += ' ';
                text_ += c;
            }
            isBlankPending_ = blank;
        }
    }
    void breakLine() {
        if (!text_.empty()) text_ += '\n';
        isBlankPending_ = false;
    }
    void breakParagraph() {
        if (!text_.empty() && text_.back() != '\n') breakLine();
    }
    [[nodiscard]] std::string take() {
        while (!text_.empty() && text_.back() == '\n') text_.pop_back();
        return std::move(text_);
    }

  private:
    std::string text_;
    bool isBlankPending_ = false;
};

bool isHidden(std::string_view name) { return name == "script" || name == "style" || name == "template"; }
bool isBlock(std::string_view name) {
    return name == "p" || name == "div" || name == "li" || name == "ul" || name == "ol";
}

/// The text under a node, without that of tables in it.
void collectText(const xmlNode* node, ShownText& text, std::size_t depth) {
    if (depth > kDeepestElement) return;
    for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
        if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE) {
            if (child->content != nullptr) text.add(reinterpret_cast<const char*>(child->content));
            continue;
        }
        const std::string_view name = nameOf(child);
        if (name.empty() || name == "table" || isHidden(name)) continue;
        if (name == "br") text.breakLine();
        if (isBlock(name)) text.breakParagraph();
        collectText(child, text, depth + 1);
        if (isBlock(name)) text.breakParagraph();
    }
}

std::string textOf(const xmlNode* node) {
    ShownText text;
    collectText(node, text, 0);
    return text.take();
}

std::size_t spanOf(xmlNode* node, const char* attribute) {
    xmlChar* const value = xmlGetProp(node, reinterpret_cast<const xmlChar*>(attribute));
    if (value == nullptr) return 1;
    const std::string_view text(reinterpret_cast<const char*>(value));
    std::size_t span = 0;
    std::size_t digits = 0;
    while (digits < text.size() && text[digits] >= '0' && text[digits] <= '9') {
        span = std::min(span * 10 + static_cast<std::size_t>(text[digits] - '0'), kMostSpan);
        ++digits;
    }
    xmlFree(value);
    return digits == 0 ? 1 : span;
}

bool isCell(const xmlNode* node) { return nameOf(node) == "td" || nameOf(node) == "th"; }

void readCell(xmlNode* node, HtmlRow& row) {
    HtmlCell& cell = row.cells.emplace_back();
    cell.text = textOf(node);
    cell.isHeader = nameOf(node) == "th";
    cell.rowSpan = spanOf(node, "rowspan");
    cell.columnSpan = std::max<std::size_t>(spanOf(node, "colspan"), 1);
}

void readRow(const xmlNode* node, HtmlRow& row) {
    for (xmlNode* child = node->children; child != nullptr; child = child->next) {
        if (isCell(child)) readCell(child, row);
    }
}

/// Whether a cell without a row around it begins a row: the cells before it, up to a row, are in one with it.
bool beginsRow(const xmlNode* cell) {
    const xmlNode* before = cell->prev;
    while (before != nullptr && nameOf(before).empty()) before = before->prev;
    return before == nullptr || !isCell(before);
}

void readPart(const xmlNode* node, bool isHead, std::size_t& parts, HtmlTable& table) {
    const std::size_t part = ++parts;
    for (xmlNode* child = node->children; child != nullptr; child = child->next) {
        const std::string_view name = nameOf(child);
        const bool isRow = name == "tr";
        if (isRow || (isCell(child) && beginsRow(child))) {
            HtmlRow& row = table.rows.emplace_back();
            row.isHead = isHead;
            row.part = part;
        }
        if (isRow) {
            readRow(child, table.rows.back());
        } else if (isCell(child)) {
            readCell(child, table.rows.back());
        } else if (name == "thead" || name == "tbody" || name == "tfoot") {
            readPart(child, name == "thead", parts, table);
        } else if (name == "caption") {
            table.caption = textOf(child);
        }
    }
}

void findTables(const xmlNode* node, std::vector<HtmlTable>& tables, std::size_t depth) {
    if (depth > kDeepestElement) return;
    for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
        if (nameOf(child) == "table") {
            std::size_t parts = 0;
            readPart(child, false, parts, tables.emplace_back());
        }
        findTables(child, tables, depth + 1);
    }
}

}  // namespace

std::vector<HtmlTable> readHtmlPage(const std::string& text) {
    // What the page says of its encoding was true of its bytes.
    constexpr int kOptions = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                             HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC;
    const std::unique_ptr<xmlDoc, FreeDocument> document(
        htmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", kOptions));
    std::vector<HtmlTable> tables;
    const xmlNode* const root = document == nullptr ? nullptr : xmlDocGetRootElement(document.get());
    if (root != nullptr)
        findTables(root->parent == nullptr ? root : reinterpret_cast<const xmlNode*>(root->parent), tables,
                   0);
    return tables;
}

}  // namespace vexa::frontend
