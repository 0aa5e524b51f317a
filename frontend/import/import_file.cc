#include "frontend/import/import_file.h"

#include <array>
#include <utility>

#include "backend/platform/file_system.h"
#include "frontend/import/csv_reader.h"
#include "frontend/import/html_tables.h"
#include "frontend/import/markdown_reader.h"
#include "frontend/import/pictures.h"
#include "frontend/import/results_reader.h"
#include "frontend/import/text_input.h"

namespace vexa::frontend {

namespace {

constexpr std::array<std::pair<std::string_view, ImportForm>, 12> kForms{{{"json", ImportForm::json},
                                                                          {"csv", ImportForm::csv},
                                                                          {"tsv", ImportForm::tsv},
                                                                          {"tab", ImportForm::tsv},
                                                                          {"html", ImportForm::html},
                                                                          {"htm", ImportForm::html},
                                                                          {"svg", ImportForm::svg},
                                                                          {"png", ImportForm::png},
                                                                          {"md", ImportForm::markdown},
                                                                          {"markdown", ImportForm::markdown},
                                                                          {"txt", ImportForm::text},
                                                                          {"text", ImportForm::text}}};

/// Sets what the file did not say of one item.
class Completion {
  public:
    Completion(const ImportOptions& options, Outline& outline) : options_(options), outline_(outline) {}

    void complete(ItemId id, bool isTop) {
        const OutlineNode& node = *outline_.find(id);
        const std::vector<ItemId> children = node.children;
        if (lacks(node.item, isTop)) fill(outline_.change(id), isTop);
        for (const ItemId child : children) complete(child, false);
    }

  private:
    static bool isTabular(const Item& item) {
        return item.type() == ItemType::table || item.type() == ItemType::grid;
    }
    static bool isPicture(const Item& item) {
        return item.type() == ItemType::chart || item.type() == ItemType::tree;
    }

    /// A header is no result; what stands on the top level has no more that says what it is.
    static bool takesSubtype(const Item& item, bool isTop) {
        return isTabular(item) || isPicture(item) || (isTop && item.type() != ItemType::header);
    }

    [[nodiscard]] bool lacks(const Item& item, bool isTop) const {
        const bool wantsTop = !options_.command.empty() || !options_.label.empty();
        return (isTop && wantsTop) || (takesSubtype(item, isTop) && !options_.subtype.empty()) ||
               (isTabular(item) && !options_.title.empty()) ||
               (isPicture(item) && !options_.alternativeText.empty());
    }

    static void setEmpty(std::string& value, const std::string& given) {
        if (value.empty()) value = given;
    }

    void fill(Item& item, bool isTop) const {
        if (isTop) {
            setEmpty(item.command, options_.command);
            setEmpty(item.label, options_.label);
        }
        if (takesSubtype(item, isTop)) setEmpty(item.subtype, options_.subtype);
        if (auto* const table = std::get_if<TableContent>(&item.content)) {
            tables::TableView view = *table->table.view;
            setEmpty(view.title, options_.title);
            table->table.view = std::make_shared<const tables::TableView>(std::move(view));
        } else if (auto* const grid = std::get_if<GridContent>(&item.content)) {
            tables::FlatTable changed = *grid->grid;
            setEmpty(changed.title, options_.title);
            grid->grid = std::make_shared<const tables::FlatTable>(std::move(changed));
        } else if (auto* const chart = std::get_if<ChartContent>(&item.content)) {
            setEmpty(chart->alternativeText, options_.alternativeText);
        } else if (auto* const tree = std::get_if<TreeContent>(&item.content)) {
            setEmpty(tree->alternativeText, options_.alternativeText);
        }
    }

    const ImportOptions& options_;
    Outline& outline_;
};

bool readPictureItem(ImportForm form, std::string bytes, Item& item, ImportProblem& problem) {
    ChartContent chart;
    chart.picture = form == ImportForm::svg ? readSvg(std::move(bytes), problem.message)
                                            : readPng(std::move(bytes), problem.message);
    if (chart.picture == nullptr) return false;
    item.content = std::move(chart);
    return true;
}

bool readTextItem(std::string text, Item& item, ImportProblem& problem) {
    while (text.ends_with('\n')) text.pop_back();
    if (text.empty()) {
        problem.message = translated("The file is empty."_text);
        return false;
    }
    item.content = TextContent{{std::move(text), {}}};
    return true;
}

/// The items of a file of any form but JSON.
bool readItems(ImportForm form, std::string bytes, const std::string& file, const ImportOptions& options,
               const ImportContext& context, std::vector<Item>& items, ImportProblem& problem) {
    if (form == ImportForm::html) return readHtmlTables(bytes, options, context, items, problem);
    if (form == ImportForm::svg || form == ImportForm::png) {
        return readPictureItem(form, std::move(bytes), items.emplace_back(), problem);
    }
    std::string text;
    if (!readText(std::move(bytes), options.encoding, text, problem)) return false;
    text = withPlainLineEnds(std::move(text));
    if (form == ImportForm::markdown) return readMarkdown(text, file, options, context, items, problem);
    if (form == ImportForm::text) return readTextItem(std::move(text), items.emplace_back(), problem);
    return readSeparated(text, form == ImportForm::tsv, options, context, items.emplace_back(), problem);
}

bool readForm(ImportForm form, std::string bytes, const std::string& file, const ImportOptions& options,
              const ImportContext& context, Imported& imported, ImportProblem& problem) {
    // A name that is wrong is told of files as well that have no need of it.
    if (!checkEncoding(options.encoding, problem)) return false;
    if (form == ImportForm::json) return readResults(bytes, file, context, imported, problem);
    std::vector<Item> items;
    if (!readItems(form, std::move(bytes), file, options, context, items, problem)) return false;
    for (Item& item : items) imported.outline.add(std::move(item));
    return true;
}

}  // namespace

std::optional<ImportForm> formOfWord(std::string_view word) {
    std::string small(word);
    for (char& c : small) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    for (const auto& [name, form] : kForms) {
        if (name == small) return form;
    }
    return std::nullopt;
}

std::optional<ImportForm> formOfFile(std::string_view file) {
    const std::size_t point = file.find_last_of("./\\");
    return point == std::string_view::npos || file[point] != '.' ? std::nullopt
                                                                 : formOfWord(file.substr(point + 1));
}

bool importFile(const std::string& file, const ImportOptions& options, const ImportContext& context,
                Imported& imported, ImportProblem& problem, std::string* standardInput) {
    problem = {};
    problem.file = file;
    const std::optional<ImportForm> form = options.form ? options.form : formOfFile(file);
    if (!form) {
        problem.message = translated(
            "The form of this file is not known. Name it: --as json, csv, tsv, html, svg, png, md or txt."_text);
        return false;
    }
    std::string bytes;
    if (standardInput != nullptr) {
        bytes = std::move(*standardInput);
    } else if (const FileResult result = FileSystem::current().readStream(file, bytes, maximalImportBytes);
               !result) {
        problem.isFile = true;
        problem.message = composed("The file cannot be read: ^1."_text, {shownReason(result)});
        return false;
    }
    const std::size_t before = imported.outline.roots().size();
    if (!readForm(*form, std::move(bytes), file, options, context, imported, problem)) {
        if (problem.file.empty()) problem.file = file;
        return false;
    }
    const std::vector<ItemId> roots = imported.outline.roots();
    Completion completion(options, imported.outline);
    for (std::size_t i = before; i < roots.size(); ++i) completion.complete(roots[i], true);
    return true;
}

}  // namespace vexa::frontend
