// The delivered string tables as STB PRINT shows them in a terminal.

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "apps/rendering/table_rendering.h"
#include "backend/paths/path_factory.h"
#include "backend/text/line_breaks.h"
#include "backend/text/text_width.h"
#include "backend/text/utf8.h"
#include "module/stbprint/commands.h"
#include "module/stbprint/table_files.h"
#include "tests/unit/module/command_fixture.h"

namespace vexa {
namespace {

constexpr std::size_t kTerminal = 80;
constexpr std::size_t kNarrowestColumn = 36;  // of text, in these tables

std::vector<std::string> split(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + separator.size()) {
        end = text.find(separator, begin);
        parts.push_back(text.substr(begin, end - begin));
    }
    return parts;
}

/// Letters, digits and the sign of markers: what stands side by side of them is never cut. Ideographs and
/// kana are none of them, Hangul is.
bool isOfWord(char32_t code) {
    if (code < 0x80) return std::isalnum(static_cast<int>(code)) != 0 || code == '^';
    const BreakTraits traits = breakTraitsOf(code, characterWidth(code));
    return !traits.loose && !traits.bindsLeft && !traits.bindsRight && (code < 0x2000 || code >= 0xAC00);
}

std::set<std::string> wordsOf(std::string_view text) {
    std::set<std::string> words;
    std::string word;
    for (std::string_view rest = text; !rest.empty();) {
        const Utf8Character character = decodeUtf8(rest);
        if (isOfWord(character.code)) {
            word += rest.substr(0, character.length);
        } else if (!word.empty()) {
            words.insert(std::exchange(word, ""));
        }
        rest.remove_prefix(character.length);
    }
    if (!word.empty()) words.insert(word);
    return words;
}

/// All words that stand in a table.
std::set<std::string> wordsOf(const PivotTable& table) {
    std::set<std::string> words = wordsOf(table.title);
    for (const PivotDimension& dimension : table.dimensions) {
        words.merge(wordsOf(dimension.label));
        for (const PivotCategory& category : dimension.categories) words.merge(wordsOf(category.label));
    }
    for (const PivotCell& cell : table.cells) words.merge(wordsOf(cell.text));
    words.merge(std::set<std::string>{"empty"});
    return words;
}

/// A closing sign that was torn off what it closes. `)DATE` is a word.
bool beginsWithTornSign(const std::string& line) {
    for (const std::string_view sign :
         {"。", "、", "，", "．", "！", "？", "：", "；", "）", "」", "』", "》",
          "】", "”",  "»",  "…",  "ー", "々", "ぁ", "ぃ", "ぅ", "ぇ", "ぉ", "っ",
          "ゃ", "ゅ", "ょ", "ァ", "ィ", "ゥ", "ェ", "ォ", "ッ", "ャ", "ュ", "ョ"}) {
        if (line.starts_with(sign)) return true;
    }
    return !line.empty() && std::string_view(".,:;!?)]}%").find(line[0]) != std::string_view::npos &&
           wordsOf(line.substr(0, line.find(' '))).empty();
}

/// Whether a line ends with what closes in German: there “ stands behind a word or its punctuation, and where
/// it opens behind a blank, another opening sign or an ideograph.
bool endsWithGermanQuote(std::string_view line) {
    constexpr std::string_view kClosing = "“";
    if (!line.ends_with(kClosing)) return false;
    line.remove_suffix(kClosing.size());
    return !line.empty() &&
           (std::isalnum(static_cast<unsigned char>(line.back())) != 0 || line.ends_with(':'));
}

bool endsWithTornSign(const std::string& line) {
    if (endsWithGermanQuote(line)) return false;
    for (const std::string_view sign : {"（", "「", "『", "《", "【", "“", "«", "„", "(", "[", "¿"}) {
        if (line.ends_with(sign)) return true;
    }
    return false;
}

void expectWellCut(const std::string& line, const std::set<std::string>& words) {
    EXPECT_LE(displayWidth(line), kTerminal) << line;
    for (const std::string& cell : split(line, "│")) {
        const std::size_t begin = std::min(cell.find_first_not_of(' '), cell.size());
        const std::string text = cell.substr(begin, cell.find_last_not_of(' ') + 1 - begin);
        EXPECT_FALSE(beginsWithTornSign(text)) << line;
        EXPECT_FALSE(endsWithTornSign(text)) << line;
        for (const std::string& word : wordsOf(text)) {
            EXPECT_TRUE(words.count(word) > 0 || text.find("─") != std::string::npos) << word << ": " << line;
        }
    }
}

class StbPrintRendering : public CommandFixture {
  protected:
    StbPrintRendering() { installPaths(VEXA_INSTALLATION, "en"); }
    ~StbPrintRendering() override { installPaths("", ""); }
};

TEST_F(StbPrintRendering, CutsNoWordAndTearsNothingOffInAnyLanguage) {
    std::size_t texts = 0;
    for (const std::string_view language : kLanguages) {
        events.clear();
        run(stbPrint, "LANGUAGE='" + std::string(language) + "'");
        for (const TableFinished& event : all<TableFinished>()) {
            const PivotTable& table = *event.table;
            texts += table.cells.size();
            const std::set<std::string> words = wordsOf(table);
            for (const std::string& word : words) {
                ASSERT_LE(displayWidth(word), kNarrowestColumn) << word;
            }
            for (const std::string& line :
                 split(rendering::renderTable(event.shown, {kTerminal, true, false}), "\n")) {
                expectWellCut(line, words);
            }
        }
    }
    EXPECT_GT(texts, 100 * kLanguages.size());
}

TEST_F(StbPrintRendering, StaysWithinTheTerminalWithAllLanguagesTogether) {
    run(stbPrint, "");
    EXPECT_EQ(all<TableFinished>().size(), 2 * kStringTableFiles.size());
    for (const TableFinished& event : all<TableFinished>()) {
        const std::set<std::string> words = wordsOf(*event.table);
        for (const std::string& line :
             split(rendering::renderTable(event.shown, {kTerminal, true, false}), "\n")) {
            expectWellCut(line, words);
        }
    }
    EXPECT_FALSE(all<NotesAdded>().empty());
    for (const NotesAdded& notes : all<NotesAdded>()) {
        for (const std::string& line : split(rendering::renderNotes(notes, {kTerminal, true, false}), "\n")) {
            EXPECT_LE(displayWidth(line), kTerminal) << line;
        }
    }
}

}  // namespace
}  // namespace vexa
