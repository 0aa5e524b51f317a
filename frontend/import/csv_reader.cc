#include "frontend/import/csv_reader.h"

#include <utility>

#include "frontend/import/grid_table.h"

namespace vexa::frontend {

namespace {

/// Cuts the text into fields and checks that every row has as many as the first.
class FieldReader {
  public:
    FieldReader(std::string_view text, char separator, TextGrid& grid, ImportProblem& problem)
        : text_(text), separator_(separator), grid_(grid), problem_(problem) {}

    bool read() {
        while (at_ < text_.size()) {
            if (text_[at_] == '\n' || text_[at_] == '\r') {  // an empty line
                ++at_;
                continue;
            }
            if (!readRow()) return false;
        }
        return true;
    }

  private:
    bool readRow() {
        const std::size_t begin = at_;
        std::size_t fields = 0;
        for (bool goesOn = true; goesOn; ++fields) {
            SpannedLabel& field = grid_.places.emplace_back();
            const bool isFine =
                at_ < text_.size() && text_[at_] == '"' ? readQuoted(field.text) : readPlain(field.text);
            if (!isFine) return false;
            goesOn = at_ < text_.size() && text_[at_] == separator_;
            if (goesOn) ++at_;
        }
        skipLineEnd();
        if (grid_.columns == 0) grid_.columns = fields;
        return fields == grid_.columns || refuse(begin, otherNumberOfFields(fields, grid_.columns));
    }

    bool readPlain(std::string& field) {
        const std::size_t begin = at_;
        while (at_ < text_.size() && text_[at_] != separator_ && text_[at_] != '\n' && text_[at_] != '\r')
            ++at_;
        field = text_.substr(begin, at_ - begin);
        return true;
    }

    bool readQuoted(std::string& field) {
        const std::size_t begin = at_++;
        while (true) {
            const std::size_t quote = text_.find('"', at_);
            if (quote == std::string_view::npos) {
                return refuse(begin,
                              translated("The quotation mark that begins this field has no partner."_text));
            }
            field += text_.substr(at_, quote - at_);
            at_ = quote + 1;
            if (at_ >= text_.size() || text_[at_] != '"') break;
            field += '"';
            ++at_;
        }
        const bool isEnd =
            at_ >= text_.size() || text_[at_] == separator_ || text_[at_] == '\n' || text_[at_] == '\r';
        return isEnd ||
               refuse(
                   at_,
                   translated(
                       "A separator or a line end must follow the quotation mark that ends a field."_text));
    }

    void skipLineEnd() {
        if (at_ < text_.size() && text_[at_] == '\r') ++at_;
        if (at_ < text_.size() && text_[at_] == '\n') ++at_;
    }

    bool refuse(std::size_t at, std::string message) {
        problem_.place = placeOf(text_, at);
        problem_.message = std::move(message);
        return false;
    }

    std::string_view text_;
    char separator_;
    TextGrid& grid_;
    ImportProblem& problem_;
    std::size_t at_ = 0;
};

}  // namespace

bool readSeparated(std::string_view text, bool isTabbed, const ImportOptions& options,
                   const ImportContext& context, Item& item, ImportProblem& problem) {
    TextGrid grid;
    grid.headerRows = options.headerRows.value_or(1);
    grid.labelColumns = options.labelColumns.value_or(1);
    FieldReader reader(text, options.separator.value_or(isTabbed ? '\t' : ','), grid, problem);
    if (!reader.read()) return false;
    if (grid.rows() <= grid.headerRows || grid.columns <= grid.labelColumns) {
        problem.message = composed(
            "Rows found: ^1. Fields in a row: ^2. Header rows (^3) and label columns (^4) leave no data."_text,
            {std::to_string(grid.rows()), std::to_string(grid.columns), std::to_string(grid.headerRows),
             std::to_string(grid.labelColumns)});
        return false;
    }
    item.content = makeGridTable(grid, options.decimal, context);
    return true;
}

}  // namespace vexa::frontend
