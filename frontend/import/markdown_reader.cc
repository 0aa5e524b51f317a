#include "frontend/import/markdown_reader.h"

#include <algorithm>
#include <utility>

#include "backend/platform/file_system.h"
#include "frontend/import/grid_table.h"
#include "frontend/import/pictures.h"
#include "frontend/import/text_input.h"

namespace vexa::frontend {

namespace {

constexpr std::size_t kMostHashes = 6;

/// The fields of a table's row.
std::vector<std::string> fieldsOf(std::string_view line) {
    line = withoutBlanks(line);
    if (line.starts_with('|')) line.remove_prefix(1);
    if (line.ends_with('|') && !line.ends_with("\\|")) line.remove_suffix(1);
    std::vector<std::string> fields(1);
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '|') {
            fields.emplace_back();
        } else if (line[i] == '\\' && i + 1 < line.size() && line[i + 1] == '|') {
            fields.back() += line[++i];
        } else {
            fields.back() += line[i];
        }
    }
    for (std::string& field : fields) field = withoutMarks(withoutBlanks(field));
    return fields;
}

/// Whether a line is the one below a table's header: "| --- | :-: |".
bool isTableRule(std::string_view line) {
    line = withoutBlanks(line);
    return line.find('-') != std::string_view::npos && line.find('|') != std::string_view::npos &&
           line.find_first_not_of("|-: \t") == std::string_view::npos;
}

/// Whether a line is a rule over the page: three or more of one mark.
bool isRule(std::string_view line) {
    line = withoutBlanks(line);
    if (line.empty() || std::string_view("-*_").find(line.front()) == std::string_view::npos) return false;
    const auto marks = std::count(line.begin(), line.end(), line.front());
    const auto blanks = std::count(line.begin(), line.end(), ' ');
    return marks >= 3 && static_cast<std::size_t>(marks + blanks) == line.size();
}

bool isFence(std::string_view line) {
    line = withoutBlanks(line);
    return line.starts_with("```") || line.starts_with("~~~");
}

/// The text of a heading's line, "## Text ##"; false for any other line.
bool readHeading(std::string_view line, std::string& text) {
    const std::size_t hashes = std::min(line.find_first_not_of('#'), line.size());
    if (hashes == 0 || hashes > kMostHashes || (hashes < line.size() && line[hashes] != ' ')) return false;
    std::string_view rest = withoutBlanks(line.substr(hashes));
    const std::size_t end = rest.find_last_not_of('#');
    if (end == std::string_view::npos) rest = {};
    if (end + 1 < rest.size() && rest[end] == ' ') rest = withoutBlanks(rest.substr(0, end));
    text = withoutMarks(rest);
    return true;
}

/// "![alternative text](file)", perhaps with a title behind the file's name, and nothing else.
bool readImage(std::string_view line, std::string& alternative, std::string& file) {
    line = withoutBlanks(line);
    const std::size_t middle = line.find("](");
    if (!line.starts_with("![") || middle == std::string_view::npos || line.find(')') != line.size() - 1)
        return false;
    alternative = withoutMarks(line.substr(2, middle - 2));
    std::string_view target = withoutBlanks(line.substr(middle + 2, line.size() - middle - 3));
    if (target.starts_with('<') && target.ends_with('>'))
        return file = target.substr(1, target.size() - 2), true;
    file = target.substr(0, target.find(' '));
    return !file.empty();
}

class MarkdownReader {
  public:
    MarkdownReader(std::string_view text, std::string file, const ImportOptions& options,
                   const ImportContext& context, std::vector<Item>& items, ImportProblem& problem)
        : file_(std::move(file)), options_(options), context_(context), items_(items), problem_(problem) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            lines_.push_back(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

    bool read() {
        while (at_ < lines_.size()) {
            const std::string_view line = lines_[at_];
            std::string heading;
            if (withoutBlanks(line).empty() || isRule(line)) {
                ++at_;
            } else if (readHeading(line, heading)) {
                add(HeadingContent{{std::move(heading), {}}});
                ++at_;
            } else if (isFence(line)) {
                readFenced();
            } else if (beginsTable()) {
                if (!readTable()) return false;
            } else if (!readParagraph()) {
                return false;
            }
        }
        return true;
    }

  private:
    void add(ItemContent content) { items_.emplace_back().content = std::move(content); }

    bool refuse(std::size_t line, std::string message) {
        problem_.place = {line + 1, 1};
        problem_.message = std::move(message);
        return false;
    }

    void readFenced() {
        const std::string_view fence = withoutBlanks(lines_[at_++]).substr(0, 3);
        std::string text;
        for (; at_ < lines_.size() && !withoutBlanks(lines_[at_]).starts_with(fence); ++at_) {
            text += text.empty() ? "" : "\n";
            text += lines_[at_];
        }
        ++at_;
        add(TextContent{{std::move(text), {}}});
    }

    [[nodiscard]] bool beginsTable() const {
        return at_ + 1 < lines_.size() && lines_[at_].find('|') != std::string_view::npos &&
               isTableRule(lines_[at_ + 1]);
    }

    bool readTable() {
        TextGrid grid;
        const std::size_t first = at_;
        grid.headerRows = 1;
        for (; at_ < lines_.size() && lines_[at_].find('|') != std::string_view::npos; ++at_) {
            if (at_ == first + 1) continue;  // the rule
            std::vector<std::string> fields = fieldsOf(lines_[at_]);
            if (grid.columns == 0) grid.columns = fields.size();
            if (fields.size() > grid.columns) {
                return refuse(at_, otherNumberOfFields(fields.size(), grid.columns));
            }
            fields.resize(grid.columns);
            for (std::string& field : fields) grid.places.push_back({std::move(field), 0});
        }
        grid.labelColumns = options_.labelColumns.value_or(grid.columns > 1 ? 1 : 0);
        if (grid.hasData()) {
            add(makeGridTable(grid, options_.decimal, context_));
        } else {
            add(makeLabelGrid(grid, {}));
        }
        return true;
    }

    [[nodiscard]] bool endsParagraph() const {
        const std::string_view line = lines_[at_];
        std::string heading;
        return withoutBlanks(line).empty() || isFence(line) || readHeading(line, heading) || beginsTable();
    }

    /// Lines up to an empty one. Those of lists and quotations stay lines, others are joined.
    bool readParagraph() {
        std::string alternative;
        std::string picture;
        if (readImage(lines_[at_], alternative, picture)) return readPictureFile(alternative, picture);
        std::string text;
        for (; at_ < lines_.size() && (text.empty() || !endsParagraph()); ++at_) {
            const std::string_view line = withoutBlanks(lines_[at_]);
            const bool isUnderline = !text.empty() &&
                                     line.find_first_not_of(line.front()) == std::string_view::npos &&
                                     (line.front() == '=' || line.front() == '-');
            if (isUnderline) {
                ++at_;
                add(HeadingContent{{std::move(text), {}}});
                return true;
            }
            const bool isItem = isListItem(line);
            const bool isQuotation = line.starts_with('>');
            const std::string shown = withoutMarks(isQuotation ? withoutBlanks(line.substr(1)) : line);
            const bool isBroken = isItem || (at_ > 0 && lines_[at_ - 1].ends_with("  "));
            if (!text.empty()) text += isBroken ? '\n' : ' ';
            text += shown;
        }
        add(TextContent{{std::move(text), {}}});
        return true;
    }

    static bool isListItem(std::string_view line) {
        if (line.starts_with("- ") || line.starts_with("* ") || line.starts_with("+ ")) return true;
        const std::size_t digits = line.find_first_not_of("0123456789");
        return digits != 0 && digits != std::string_view::npos &&
               (line.substr(digits).starts_with(". ") || line.substr(digits).starts_with(") "));
    }

    bool readPictureFile(std::string& alternative, const std::string& name) {
        const std::size_t folder = name.starts_with('/') ? std::string::npos : file_.find_last_of("/\\");
        const std::string path = folder == std::string::npos ? name : file_.substr(0, folder + 1) + name;
        std::string bytes;
        if (const FileResult result = FileSystem::current().read(path, bytes, maximalPictureBytes); !result) {
            return refuse(at_, composed("The file ^1 cannot be read: ^2."_text, {path, shownReason(result)}));
        }
        std::string reason;
        ChartContent chart;
        chart.picture = readPicture(std::move(bytes), reason);
        if (chart.picture == nullptr) return refuse(at_, reason);
        chart.alternativeText = std::move(alternative);
        add(std::move(chart));
        ++at_;
        return true;
    }

    std::string file_;
    const ImportOptions& options_;
    const ImportContext& context_;
    std::vector<Item>& items_;
    ImportProblem& problem_;
    std::vector<std::string_view> lines_;
    std::size_t at_ = 0;
};

}  // namespace

bool readMarkdown(std::string_view text, const std::string& file, const ImportOptions& options,
                  const ImportContext& context, std::vector<Item>& items, ImportProblem& problem) {
    return MarkdownReader(text, file, options, context, items, problem).read();
}

}  // namespace vexa::frontend
