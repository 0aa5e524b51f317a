// Random commands, run by the module itself: what is read from each request is what the command said.

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "backend/text/character_set.h"
#include "frontend/requests/modify_request_reader.h"
#include "module/modify/commands.h"
#include "tests/unit/module/command_fixture.h"
#include "tests/unit/requests/request_text.h"

namespace vexa::frontend {
namespace {

/// Draws commands, and with each what its request must say.
class CommandDraw {
  public:
    explicit CommandDraw(std::uint32_t seed) : random_(seed) {}

    std::string syntax;
    ModifyRequest request;

    void draw() {
        request.documentName = "*";
        if (chance(2)) syntax += " NAME=" + literal(request.documentName = drawText());
        if (chance(4)) {
            request.debug = true;
            syntax += " DEBUG";
        }
        for (int count = 1 + below(3); count > 0; --count) drawGroup(request.groups.emplace_back());
    }

  private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<std::uint32_t>(limit)); }
    bool chance(int one) { return below(one) == 0; }
    std::int32_t wholeFrom1() { return 1 + below(chance(4) ? 2'000'000'000 : 9); }

    /// Never the beginning of an element or an attribute of the form: those nobody could tell from it.
    std::string drawText() {
        constexpr const char* kPieces[] = {
            "\"",       "\"/>",         "&",  "&lt;", "<", ">", "/>",   " ",   "=\"",  " x=\"", "Mean", "ab",
            "\xC3\xA9", "\xE3\x83\x82", "\t", "\x01", "'", ";", "<!--", "]]>", "</x>", "1.5",   "#",    "*"};
        std::string text;
        for (int count = 1 + below(4); count > 0; --count) text += kPieces[below(std::size(kPieces))];
        return text;
    }
    static std::string literal(const std::string& text) {
        std::string quoted = "'";
        for (const char each : text) quoted.append(each == '\'' ? 2 : 1, each);
        return quoted + "'";
    }
    std::optional<bool> flagOf(bool given, bool on) { return given ? std::optional(on) : std::nullopt; }

    void drawGroup(ModifyGroup& group) {
        drawTypes(group.types);
        if (chance(2)) drawCriteria(group);
        if (chance(3)) drawIndex(group);
        if (chance(4)) {
            group.deletes = true;
            syntax += "\n/DELETEOBJECT";
        }
        if (chance(3)) {
            syntax += "\n/GRAPHS";
            if (chance(2))
                syntax += " VIZSTYLESHEET=" + literal(group.graph.emplace().styleSheet = drawText());
        }
        if (chance(3)) drawObject(group.object.emplace());
        if (chance(2)) drawTable(group.table.emplace());
        for (int count = below(3); count > 0; --count) drawCells(group.cells.emplace_back());
        if (chance(2)) drawTexts(group.text.emplace());
    }

    void drawTypes(TypeSelection& types) {
        constexpr const char* kTypes[] = {"CHARTS",  "HEADINGS", "LOGS",      "NOTES",    "MODELS",
                                          "TABLES",  "TEXTS",    "TREES",     "WARNINGS", "OUTLINEHEADERS",
                                          "UNKNOWN", "OTHER",    "PAGETITLES"};
        syntax += "\n/SELECT";
        types.all = chance(2);
        if (types.all) syntax += " ALL EXCEPT=[";
        for (int count = types.all ? 1 + below(3) : below(4); count > 0; --count) {
            const int type = below(static_cast<int>(kSelectedTypes));
            std::bitset<kSelectedTypes>& named = types.all ? types.excepted : types.selected;
            if (types.all || !named.test(static_cast<std::size_t>(type)))
                syntax += std::string(" ") + kTypes[type];
            named.set(static_cast<std::size_t>(type));
        }
        if (types.all) syntax += ']';
    }

    void drawCriteria(ModifyGroup& group) {
        syntax += "\n/IF";
        if (chance(2)) {
            syntax += " COMMANDS=[";
            for (int count = 1 + below(3); count > 0; --count) drawCommand(group.commands.emplace_back());
            syntax += "]";
        }
        if (chance(2)) {
            syntax += " SUBTYPES=[";
            for (int count = 1 + below(3); count > 0; --count) {
                syntax += " " + literal(group.subtypes.emplace_back(drawText()));
            }
            syntax += "]";
        }
        if (chance(2)) drawLabels(group.labels);
        if (chance(3)) {
            syntax += " INSTANCES=[";
            for (int count = 1 + below(3); count > 0; --count) {
                InstanceCriterion& instance = group.instances.emplace_back();
                if (chance(2)) instance.number = wholeFrom1();
                syntax += instance.isLast() ? " LAST" : " " + std::to_string(*instance.number);
            }
            syntax += "]";
        }
        if (chance(3)) {
            group.visibleOnly = true;
            syntax += " VISIBLEONLY=YES";
        }
    }

    void drawCommand(CommandCriterion& command) {
        if (chance(4)) {
            command.last = true;
            syntax += " LAST";
            return;
        }
        std::string text = command.name = drawText();
        if (chance(3)) {
            command.run = wholeFrom1();
            text += "(" + std::to_string(*command.run) + ")";
        } else if (chance(3)) {
            command.last = true;
            text += "(last)";
        }
        syntax += " " + literal(text);
    }

    void drawLabels(std::vector<LabelCriterion>& labels) {
        syntax += " LABELS=[";
        constexpr const char* kModes[] = {"EXACT", "BEGINS", "ENDS", "CONTAINS"};
        for (int mode = 0; mode < 4; ++mode) {
            if (mode != 3 && chance(2)) continue;
            syntax += std::string(" ") + kModes[mode] + "(";
            for (int count = 1 + below(2); count > 0; --count) {
                labels.push_back({drawText(), static_cast<LabelMatch>(mode)});
                syntax += " " + literal(labels.back().text);
            }
            syntax += ")";
        }
        syntax += "]";
    }

    void drawIndex(ModifyGroup& group) {
        constexpr const char* kTypes[] = {"NUMBER", "LETTERLOW", "LETTERCAP", "ROMANLOW", "ROMANCAP"};
        constexpr const char* kStarts[] = {"-7", "'ab'", "'C'", "'iv'", "'XIV'"};
        constexpr std::int32_t kValues[] = {-7, 28, 3, 4, 14};
        const int type = below(5);
        group.index = {static_cast<IndexNotation>(type), kValues[type]};
        syntax += std::string("\n/INDEXING INDEXTYPE=") + kTypes[type] + " INDEXSTART=" + kStarts[type];
    }

    void drawObject(ObjectChange& object) {
        syntax += "\n/OBJECTPROPERTIES";
        if (chance(2)) {
            constexpr const char* kVisible[] = {"ASIS", "YES", "NO"};
            const int visible = below(3);
            object.visible = static_cast<VisibilityChange>(visible);
            syntax += std::string(" VISIBLE=") + kVisible[visible];
        }
        if (chance(2)) syntax += " OUTLINELABEL=" + literal(object.label = drawText());
        switch (below(4)) {
            case 0:
                object.widthPoints = 12.25;
                object.heightPoints = 144.0;
                syntax += " SIZE=POINTS(12.25 144)";
                break;
            case 1:
                object.heightPercent = 33.3333;
                syntax += " SIZE=PERCENT(PROPORTIONAL 33.33333)";
                break;
            case 2:
                object.widthPoints = 144.0;
                syntax += " SIZE=INCHES(2 0)";
                break;
            default:
                break;
        }
    }

    void drawTable(TableChange& table) {
        syntax += "\n/TABLE";
        if (chance(2)) syntax += " TABLETITLE=" + literal(table.title = drawText());
        if (chance(2)) syntax += " TABLESUMMARY=" + literal(table.summary = drawText());
        if (chance(3)) {
            table.transpose = true;
            syntax += " TRANSPOSE=YES";
        }
        if (chance(3)) {
            const std::string format = drawText();
            table.format = toUpperCase(format);
            syntax += " FORMAT=" + literal(format);
        }
        if (chance(4)) {
            table.defaultLook = true;
            syntax += " TLOOK=NONE";
        }
        drawLayers(table.layers);
        if (chance(2)) drawSort(table.sort.emplace());
    }

    LayerDesignator drawDesignator(const char* keyword) {
        LayerDesignator designator;
        const int kind = below(3);
        if (kind == 0) {
            syntax += " " + literal(designator.label.emplace(drawText()));
        } else {
            designator.number = kind == 1 ? 0 : wholeFrom1();
            syntax += " " + (kind == 1 ? keyword : std::to_string(designator.number));
        }
        return designator;
    }
    void drawLayers(std::vector<LayerChange>& layers) {
        if (chance(2)) return;
        syntax += " SELECTEDLAYER=[";
        for (int count = 1 + below(4); count > 0; --count) {
            LayerChange& layer = layers.emplace_back();
            layer.layer = drawDesignator("ALL");
            layer.category = drawDesignator("LAST");
        }
        syntax += "]";
        std::stable_sort(layers.begin(), layers.end(), [](const LayerChange& left, const LayerChange& right) {
            return std::pair(!left.layer.label, !left.category.label) <
                   std::pair(!right.layer.label, !right.category.label);
        });
    }
    void drawSort(SortChange& sort) {
        switch (below(3)) {
            case 0:
                syntax += " SORT(COLLABEL=" + literal(sort.label = drawText()) + ")";
                break;
            case 1:
                sort.position = below(5) - 1;
                syntax += " SORT(COLPOSITION=" + std::to_string(sort.position) + ")";
                break;
            default:
                syntax += " SORT()";
        }
        if (chance(2)) {
            sort.ascending = chance(2);
            syntax += sort.ascending ? " SORTDIRECTION=ASCENDING" : " SORTDIRECTION=DESCENDING";
        }
    }

    void drawCells(CellsChange& cells) {
        constexpr const char* kKinds[] = {"CORRELATIONS", "COUNT",     "MEAN",  "MEDIAN",
                                          "PERCENT",      "RESIDUAL",  "BODY",  "SIGNIFICANCE",
                                          "HEADERS",      "FOOTNOTES", "TITLE", "CAPTION"};
        syntax += "\n/TABLECELLS SELECT=[";
        for (int count = below(3); count > 0; --count) {
            const int kind = below(static_cast<int>(kCellKinds));
            cells.kinds.set(static_cast<std::size_t>(kind));
            syntax += std::string(" ") + kKinds[kind];
        }
        for (int count = below(3); count > 0; --count) {
            const std::string label = drawText();
            cells.labels += (cells.labels.empty() ? "" : ";") + label;
            syntax += " " + literal(label);
        }
        if (chance(3)) {
            cells.positions = {wholeFrom1(), wholeFrom1()};
            syntax += " POSITION(" + std::to_string(cells.positions[0]) + " " +
                      std::to_string(cells.positions[1]) + ")";
        }
        syntax += "]";
        drawCellChoice(cells);
        drawCellLook(cells);
        if (chance(3)) {
            syntax += " REPLACE=" + literal(cells.replacement.emplace().text.emplace(drawText()));
        } else if (chance(3)) {
            cells.replacement.emplace().number = -2.5;
            syntax += " REPLACE=-2.5";
        } else if (chance(4)) {
            cells.replacement.emplace();
            syntax += " REPLACE=''";
        }
    }
    void drawCellChoice(CellsChange& cells) {
        if (chance(2)) {
            constexpr const char* kDimensions[] = {"COLUMNS", "ROWS", "BOTH"};
            const int dimension = below(3);
            cells.dimension = static_cast<CellDimension>(dimension);
            syntax += std::string(" SELECTDIMENSION=") + kDimensions[dimension];
        }
        using Kind = CellCondition::Kind;
        constexpr const char* kComparisons[] = {">", ">=", "<", "<=", "=", "<>"};
        const std::int32_t count = wholeFrom1();
        const int comparison = below(6);
        switch (below(6)) {
            case 0:
                cells.condition.kind = Kind::all;
                syntax += " SELECTCONDITION=ALL";
                break;
            case 1:
                cells.condition.kind = Kind::missing;
                syntax += " SELECTCONDITION=SYSMIS";
                break;
            case 2:
            case 3:
                cells.condition = {chance(2) ? Kind::top : Kind::bottom, count, Comparison::equal, 0.0};
                syntax +=
                    cells.condition.kind == Kind::top ? " SELECTCONDITION=TOP(" : " SELECTCONDITION=BOTTOM(";
                syntax += std::to_string(count) + ")";
                break;
            case 4:
                cells.condition = {Kind::comparison, 0, static_cast<Comparison>(comparison), -12.5};
                syntax += std::string(" SELECTCONDITION=[") + kComparisons[comparison] + " -12.5]";
                break;
            default:
                break;
        }
        if (chance(3)) {
            constexpr const char* kReaches[] = {"CELL",    "COLUMN",       "ROW",      "COLUMNDATA",
                                                "ROWDATA", "COLUMNHEADER", "ROWHEADER"};
            const int reach = below(7);
            cells.reach = static_cast<CellReach>(reach);
            syntax += std::string(" APPLYTO=") + kReaches[reach];
        }
    }
    void drawCellLook(CellsChange& cells) {
        if (chance(4)) {
            cells.revertToDefault = true;
            syntax += " REVERTTODEFAULT=YES";
        }
        if (chance(3)) {
            cells.columnWidth = 28;
            syntax += " COLUMNWIDTH=CENTIMETERS(1)";
        }
        if (chance(3)) {
            cells.fontSize = 10.5;
            syntax += " FONTSIZE=10.5";
        }
        drawStyle(cells.bold, cells.italic, cells.underline);
        drawColor(" TEXTCOLOR=", cells.textColor);
        drawColor(" BACKGROUNDCOLOR=", cells.backgroundColor);
        const std::string format = drawText();
        const std::string font = drawText();
        if (chance(2)) {
            cells.format = toUpperCase(format);
            syntax += " FORMAT=" + literal(format);
        }
        if (chance(2)) {
            cells.font = toUpperCase(font);
            syntax += " FONT=" + literal(font);
        }
    }
    void drawStyle(std::optional<bool>& bold, std::optional<bool>& italic, std::optional<bool>& underline) {
        const bool regular = chance(3);
        const bool isBold = chance(3);
        const bool isItalic = chance(3);
        if (!regular && !isBold && !isItalic) return;
        bold = flagOf(regular || isBold, isBold);
        italic = flagOf(regular || isItalic, isItalic);
        underline = flagOf(regular, false);
        syntax += std::string(" STYLE=") + (regular ? " REGULAR" : "") + (isBold ? " BOLD" : "") +
                  (isItalic ? " ITALIC" : "");
    }
    void drawColor(const char* keyword, std::optional<RequestedColor>& color) {
        if (chance(2)) return;
        if (chance(2)) {
            color = RequestedColor{255, 200, 0};
            syntax += std::string(keyword) + "ORANGE";
            return;
        }
        color =
            RequestedColor{static_cast<std::uint8_t>(below(256)), static_cast<std::uint8_t>(below(256)), 0};
        syntax += std::string(keyword) + "RGB(" + std::to_string(color->red) + " " +
                  std::to_string(color->green) + " 0)";
    }

    void drawTexts(TextChange& text) {
        syntax += "\n/TEXTS";
        if (chance(2)) syntax += " TEXT=" + literal(text.text = drawText());
        if (chance(2)) syntax += " FONT=" + literal(text.font = drawText());
        if (chance(2)) {
            text.fontSize = 9.0;
            syntax += " FONTSIZE=9";
        }
        drawStyle(text.bold, text.italic, text.underline);
        drawColor(" TEXTCOLOR=", text.color);
    }

    std::mt19937 random_;
};

class RandomRequests : public CommandFixture {
  protected:
    [[nodiscard]] std::string complaints() const {
        std::string text;
        for (const auto& each : all<SyntaxErrorReported>()) text += "\n" + each.message;
        for (const auto& each : all<ParserMessageReported>()) text += "\n" + each.message;
        return text;
    }
};

TEST_F(RandomRequests, SayWhatTheirCommandsSaid) {
    constexpr std::uint32_t kCommands = 3000;
    for (std::uint32_t seed = 1; seed <= kCommands; ++seed) {
        CommandDraw draw(seed);
        draw.draw();
        adapter.modifications.clear();
        testing::internal::CaptureStdout();
        run(outputModify, draw.syntax);
        static_cast<void>(testing::internal::GetCapturedStdout());
        ASSERT_EQ(adapter.modifications.size(), 1U) << seed << draw.syntax << complaints();
        const std::string& text = adapter.modifications.front();
        const auto read = readModifyRequest(text);
        const auto* const refusal = std::get_if<RequestRefusal>(&read);
        ASSERT_EQ(refusal, nullptr) << draw.syntax << "\n" << text << "\n" << refusal->message;
        ASSERT_EQ(std::get<ModifyRequest>(read), draw.request) << seed << draw.syntax << "\n"
                                                               << text << "\n"
                                                               << writeModifyRequest(draw.request);
        events.clear();
    }
}

}  // namespace
}  // namespace vexa::frontend
