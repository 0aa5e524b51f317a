#include "frontend/import/results_writer.h"

#include <algorithm>

#include "frontend/import/json_item.h"
#include "frontend/import/json_text.h"
#include "frontend/import/table_writer.h"

namespace vexa::frontend {

namespace {

class ResultsWriter {
  public:
    ResultsWriter(const Outline& outline, const StatisticWords& words, const ResultsSink& sink)
        : outline_(outline), words_(words), json_(sink) {}

    void write(const std::string& name) {
        json_.beginObject();
        json_.key("vexaResults");
        json_.whole(1);
        writeText(json_, "name", name);
        json_.key("items");
        writeItems(outline_.roots());
        json_.endObject();
        json_.finish();
    }

  private:
    void writeItems(const std::vector<ItemId>& ids) {
        constexpr std::size_t kStep = 2;
        const std::size_t indentation = (json_.indentation() - 1) / kStep * kStep + kStep;
        json_.beginList();
        json_.indent(indentation);
        for (const ItemId id : ids) {
            json_.newLine();
            writeItem(*outline_.find(id));
        }
        json_.endList();
    }

    void writeItem(const OutlineNode& node) {
        node_ = &node;
        json_.beginObject();
        writeCommon(node.item);
        std::visit([this](const auto& content) { write(content); }, node.item.content);
        json_.endObject();
    }

    /// Its type may be a word that is known here.
    static bool isOfLaterFormat(const Item& item) {
        const auto* const unknown = std::get_if<UnknownContent>(&item.content);
        return unknown != nullptr && unknown->neededVersion != 0;
    }

    void writeCommon(const Item& item) {
        writeText(json_, "type", isOfLaterFormat(item) ? "unknown" : typeWord(item));
        writeText(json_, "label", item.label);
        writeText(json_, "command", item.command);
        writeText(json_, "subtype", item.subtype);
        if (!item.visible) {
            json_.key("visible");
            json_.flag(false);
        }
        writeNumber(json_, "width", item.width);
        writeNumber(json_, "height", item.height);
        writeFlag(json_, "pageBreakBefore", item.pageBreakBefore);
    }

    void write(const HeaderContent& /*content*/) {
        if (node_->children.empty()) return;
        json_.key("items");
        writeItems(node_->children);
    }

    void write(const StyledText& content) {
        writeText(json_, "text", content.text);
        writeStyleAt(json_, "style", content.style);
    }

    void write(const LogContent& content) { writeText(json_, "text", content.text); }

    void write(const WarningContent& content) {
        constexpr int kDefault = 2;
        if (content.level != kDefault) {
            json_.key("level");
            json_.number(content.level);
        }
        writeText(json_, "text", content.text);
    }

    void write(const NotesContent& content) {
        if (content.lines.empty()) return;
        json_.key("lines");
        json_.beginList();
        for (const NoteLine& line : content.lines) {
            json_.newLine();
            json_.beginObject();
            if (line.level != 0) {
                json_.key("level");
                json_.number(line.level);
            }
            writeText(json_, "label", line.label);
            writeText(json_, "value", line.value);
            json_.endObject();
        }
        json_.endList();
    }

    void write(const TableContent& content) { writeTable(json_, content.table, words_); }

    void write(const GridContent& content) {
        const tables::FlatTable& grid = *content.grid;
        writeText(json_, "title", grid.title);
        writeText(json_, "caption", grid.caption);
        if (grid.rows() == 0) return;
        json_.newLine();
        json_.key("rows");
        json_.beginList();
        for (std::size_t row = 0; row < grid.rows(); ++row) {
            if (row > 0) json_.newLine();
            json_.beginList();
            for (std::size_t column = 0; column < grid.columns; ++column) {
                writeGridCell(grid, grid.cells[row * grid.columns + column]);
            }
            json_.endList();
        }
        json_.endList();
        writeCount("headerRows", grid.headerRows);
        writeCount("headerColumns", grid.headerColumns);
    }

    void writeGridCell(const tables::FlatTable& grid, const tables::FlatCell& cell) {
        const tables::CellStyle& style = grid.styles[cell.style];
        if (style.isEmpty()) return json_.text(cell.text);
        json_.beginObject();
        writeText(json_, "text", cell.text);
        writeStyle(json_, style);
        json_.endObject();
    }

    void writeCount(std::string_view key, std::size_t count) {
        if (count == 0) return;
        json_.key(key);
        json_.whole(count);
    }

    void write(const ShownPicture& content) {
        writeText(json_, "alternativeText", content.alternativeText);
        if (!content.templates.empty()) {
            json_.key("templates");
            json_.beginList();
            for (const std::string& each : content.templates) json_.text(each);
            json_.endList();
        }
        writeText(json_, "styleSheet", content.styleSheet);
        const bool isSvg = content.picture->form == PictureForm::svg;
        json_.newLine();
        json_.key(isSvg ? "svg" : "png");
        if (isSvg) return json_.text(content.picture->bytes);
        json_.base64(content.picture->bytes);
    }

    void write(const ModelContent& content) {
        if (content.shown != 0 && content.shown < node_->children.size()) {
            json_.key("shown");
            json_.whole(content.shown + 1);
        }
        if (content.viewPrinting) {
            json_.key("printViews");
            json_.text(*content.viewPrinting == tables::LayerPrinting::all ? "all" : "visible");
        }
        if (node_->children.empty()) return;
        json_.key("views");
        writeItems(node_->children);
    }

    void write(const UnknownContent& content) {
        const Json raw = Json::parse(*content.raw, nullptr, false);
        if (!raw.is_object() || content.neededVersion != 0) return writeFromFile(content);
        for (const auto& [key, value] : raw.items()) {
            json_.key(key);
            json_.raw(value.dump(-1, ' ', false, Json::error_handler_t::replace));
        }
    }

    /// What a document file says of an item that is not known here.
    void writeFromFile(const UnknownContent& content) {
        if (content.neededVersion != 0) {
            writeText(json_, "kind", content.type);
            json_.key("neededVersion");
            json_.number(content.neededVersion);
        }
        json_.key("raw");
        json_.text(*content.raw);
        if (node_->children.empty()) return;
        json_.key("items");
        writeItems(node_->children);
    }

    const Outline& outline_;
    const StatisticWords& words_;
    const OutlineNode* node_ = nullptr;
    JsonText json_;
};

}  // namespace

void writeResults(const Outline& outline, const std::string& name, const StatisticWords& words,
                  const ResultsSink& sink) {
    ResultsWriter(outline, words, sink).write(name);
}

std::string writeResults(const Outline& outline, const std::string& name, const StatisticWords& words) {
    std::string json;
    writeResults(outline, name, words, [&json](std::string_view piece) { json += piece; });
    return json;
}

}  // namespace vexa::frontend
