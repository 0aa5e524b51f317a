#include "backend/tables/layout/footnote_letters.h"

#include "backend/tables/layout/table_grid.h"

namespace vexa::tables {

std::string FootnoteLetters::of(FootnoteId id) {
    std::uint32_t& number = numbers_[id];
    if (number == unlettered) number = next_++;
    return footnoteLetters(number);
}

std::vector<FootnoteId> unmarkedFootnotes(const TableData& data) {
    std::vector<bool> referred(data.footnotes().size(), false);
    if (referred.empty()) return {};
    const auto mark = [&](const std::vector<FootnoteId>& footnotes) {
        for (const FootnoteId id : footnotes) {
            if (id < referred.size()) referred[id] = true;
        }
    };
    for (const TableDimension& dimension : data.dimensions()) {
        for (const TableCategory& category : dimension.categories) mark(category.footnotes);
    }
    data.forEachCell([&](Place, const TableCell& cell) {
        if (cell.extras != 0) mark(data.extras(cell).footnotes);
    });
    std::vector<FootnoteId> unmarked;
    for (FootnoteId id = 0; id < referred.size(); ++id) {
        if (!referred[id]) unmarked.push_back(id);
    }
    return unmarked;
}

std::string bracketedMarks(const std::vector<std::string>& marks) {
    std::string text;
    for (const std::string& mark : marks) text.append(text.empty() ? " [" : ",").append(mark);
    return text.empty() ? text : text + ']';
}

std::string footnoteLetters(std::size_t number) {
    constexpr std::size_t letters = 26;
    std::string text(1, static_cast<char>('a' + number % letters));
    while (number >= letters) {
        number = number / letters - 1;
        text.insert(text.begin(), static_cast<char>('a' + number % letters));
    }
    return text;
}

}  // namespace vexa::tables
