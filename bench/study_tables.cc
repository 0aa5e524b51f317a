#include "bench/study_tables.h"

#include <utility>
#include <vector>

namespace vexa::bench {

namespace {

tables::TableDimension numbered(const std::string& label, std::size_t categories) {
    tables::TableDimension made;
    made.label = label;
    for (std::size_t i = 0; i < categories; ++i) {
        made.categories.push_back({label + ' ' + std::to_string(i), tables::noGroup, {}, {}, {}});
    }
    return made;
}

}  // namespace

StudyValues measured(std::size_t seed) {
    StudyValues values{};
    std::uint32_t random = static_cast<std::uint32_t>(seed) * 2654435761U + 1;
    for (double& value : values) {
        random = random * 1664525U + 1013904223U;
        value = static_cast<double>(random >> 8) / 1000;
    }
    return values;
}

std::string titleOf(std::size_t seed) { return "Measured values of study " + std::to_string(seed); }

tables::Table studyTable(std::size_t seed) {
    std::vector<tables::TableDimension> dimensions{numbered("Variable", kStudyRows),
                                                   numbered("Statistic", kStudyColumns)};
    for (tables::TableCategory& category : dimensions[1].categories) {
        category.format = {tables::FormatKind::plain, 8, 2};
    }
    tables::TableDataBuilder data(std::move(dimensions));
    tables::Place place = 0;
    for (const double value : measured(seed)) data.setNumber(place++, value);
    tables::TableView view;
    view.title = titleOf(seed);
    view.rows = {0};
    view.columns = {1};
    return tables::makeTable(data.finish(), std::move(view));
}

frontend::ViewerDocument documentOf(std::int64_t count) {
    frontend::ViewerDocument document;
    for (std::int64_t i = 0; i < count; ++i) {
        frontend::Item item;
        item.label = "Measured values";
        item.content = frontend::TableContent{studyTable(static_cast<std::size_t>(i))};
        document.add(std::move(item));
    }
    return document;
}

std::unique_ptr<frontend::ViewerDocument>& documentAlone() {
    static std::unique_ptr<frontend::ViewerDocument> document;
    return document;
}

}  // namespace vexa::bench
