// STB PRINT: prints the keys, texts and help texts of the string tables, a pair of tables for each file.
// Sends nothing to the output controller.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "backend/paths/path_factory.h"
#include "backend/strings/string_table.h"
#include "backend/text/character_set.h"
#include "backend/text/system_text.h"
#include "module/frame/command.h"
#include "module/frame/report.h"
#include "module/stbprint/commands.h"
#include "module/stbprint/table_files.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr CommandIdentity kIdentity{"STB PRINT", "Stb Print"_text, ""};

constexpr ParameterRow kParameters[] = {
    optionalParameter("PROCEDURE", Spec::tokens, "'file'").readOnly(UPSpecTypes::ReadValue::text),
    optionalParameter("LANGUAGE", Spec::tokens, "'language'").readOnly(UPSpecTypes::ReadValue::text),
};

constexpr SubcommandRow kGrammar[] = {
    {"", UPSpecTypes::SubComSpec::keywordParameters, false, false, kParameters},
};

constexpr SystemText kKey = "Key"_text;

constexpr int kTranslatable = 1;
constexpr int kNotTranslatable = 0;

/// What to print.
struct Selection {
    std::span<const std::string_view> files;
    std::span<const std::string_view> languages;
};

/// Two tables under construction: texts, and help texts.
struct TablePair {
    BpPivotTable texts;
    BpPivotTable help;
};

BpString asItStands(std::string_view text) { return {text, kNotTranslatable}; }

/// The value of a parameter. Nothing also for one that is no text, so that ALL means all of them.
std::optional<std::string_view> readText(const SubComObj& given, std::string_view keyword) {
    const ParamObj* const parameter = given.getParamObj(keyword);
    std::string_view text;
    bool isLiteral = false;
    const bool isText = parameter != nullptr && parameter->getStringOrLiteral(text, isLiteral);
    return isText ? std::optional(text) : std::nullopt;
}

/// The same dimension for every language: a label that a table has already names its dimension again.
BpDimension dimensionOf(BpPivotTable& table, SystemText label) {
    constexpr int kDimensionKind = 2;
    return table.Dimension(BpString(label, kTranslatable), kDimensionKind);
}

TablePair beginTables(std::string_view file, BpProcedure& procedure) {
    constexpr int kNarrowestColumn = 150;
    const auto begin = [&procedure](const std::string& title) {
        BpPivotTable table = procedure.PivotTable(asItStands(title), asItStands(""), true);
        table.Caption(asItStands(title));
        return table;
    };
    const std::string title(file);
    TablePair tables{begin(title), begin(title + " Help")};
    tables.texts.MinDataColumnWidth(kNarrowestColumn);
    return tables;
}

/// Adds the texts of one language: a column of each table.
void addLanguage(const std::vector<keyValueGloss>& entries, std::string_view language, TablePair& tables) {
    const auto begin = [language](BpPivotTable& table) {
        dimensionOf(table, "Language"_text).Position(1, 1, 0, 0).Category(asItStands(language));
        return dimensionOf(table, kKey);
    };
    BpDimension texts = begin(tables.texts);
    BpDimension help = begin(tables.help);
    for (const keyValueGloss& entry : entries) {
        const BpString key = asItStands(entry.key);
        texts.Category(key).Cell(entry.value.empty() ? key : asItStands(entry.value));
        if (!entry.gloss.empty()) {
            help.Category(key).Cell(asItStands(entry.gloss));
        }
    }
}

void printFile(std::string_view file, std::span<const std::string_view> languages, const std::string& base,
               BpProcedure& procedure) {
    TablePair tables = beginTables(file, procedure);
    dimensionOf(tables.texts, kKey).Position(0, 1, 0, 0);
    dimensionOf(tables.help, kKey).Position(0, 1, 0, 0);
    std::vector<keyValueGloss> entries;
    for (const std::string_view language : languages) {
        if (leadsOutside(language) || leadsOutside(file)) {
            entries.clear();
            addLanguage(entries, language, tables);
            continue;
        }
        const std::string path = std::string(base).append("\\").append(language).append("\\").append(file);
        // A table that cannot be read has no entries; the library adds a note to the log.
        static_cast<void>(FacSTStringTable().GetKeysAndValues(path, entries));
        addLanguage(entries, language, tables);
    }
    tables.texts.Finish();
    tables.help.Finish();
}

void print(const Selection& selection, BpProcedure& procedure) {
    const std::string base = baseFolder(PathFactory::getPathInstance(PathFactory::kLanguage)->getPath());
    for (const std::string_view file : selection.files) {
        printFile(file, selection.languages, base, procedure);
    }
}

}  // namespace

void stbPrint() {
    Command command(kIdentity, kGrammar);
    if (!command.parse()) {
        return;
    }
    const std::optional<std::string_view> file = readText(command.leading(), "PROCEDURE");
    const std::optional<std::string_view> language = readText(command.leading(), "LANGUAGE");
    for (const std::optional<std::string_view>& given : {file, language}) {
        if (given && leadsOutside(*given)) {
            reportMessage(
                "^1 leads out of the folder of the string tables, and is not read. Name a file or a folder in it."_text,
                *given, kWarningLevel);
        }
    }
    print({file ? std::span(&*file, 1) : std::span<const std::string_view>(kStringTableFiles),
           language ? std::span(&*language, 1) : std::span<const std::string_view>(kLanguages)},
          command.procedure());
}

}  // namespace vexa
