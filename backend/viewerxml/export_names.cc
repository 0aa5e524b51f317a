#include "backend/viewerxml/export_names.h"

#include <cstddef>

namespace vexa {

namespace {

using Kind = SettingKind;
using Set = ExportSetting;
using Part = ExportAttributePart;

constexpr int kPageUnits = 2;

/// In the order of `ExportSetting`.
constexpr SettingForm kSettings[] = {{"name", Kind::escapedText},
                                     {"printOption", Kind::choice, 3},
                                     {"export", Kind::choice, 2},
                                     {"layers", Kind::choice, 3},
                                     {"modelViews", Kind::choice, 3},
                                     {"documentFile", Kind::escapedText},
                                     {"notesAndCaptions", Kind::flag},
                                     {"wideTables", Kind::choice, 3},
                                     {"pageSizeWidth", Kind::measure, kPageUnits},
                                     {"pageSizeHeight", Kind::measure, kPageUnits},
                                     {"slideSizeWidth", Kind::measure, kPageUnits},
                                     {"slideSizeHeight", Kind::measure, kPageUnits},
                                     {"topMargin", Kind::measure, kPageUnits},
                                     {"bottomMargin", Kind::measure, kPageUnits},
                                     {"leftMargin", Kind::measure, kPageUnits},
                                     {"rightMargin", Kind::measure, kPageUnits},
                                     {"pageBreaks", Kind::flag},
                                     {"imageFormat", Kind::choice, 3},
                                     {"styling", Kind::flag},
                                     {"interactiveLayers", Kind::flag},
                                     {"title", Kind::escapedText},
                                     {"mHT", Kind::flag},
                                     {"excludeTexts", Kind::flag},
                                     {"excludeLogs", Kind::flag},
                                     {"excludeNotes", Kind::flag},
                                     {"excludeWarnings", Kind::flag},
                                     {"restyle", Kind::flag},
                                     {"embedBookmarks", Kind::flag},
                                     {"embedFonts", Kind::flag},
                                     {"slideTitles", Kind::flag},
                                     {"encoding", Kind::choice, 3},
                                     {"columnWidth", Kind::columnWidth},
                                     {"separator", Kind::choice, 2},
                                     {"rowBorder", Kind::text},
                                     {"columnBorder", Kind::text},
                                     {"operation", Kind::choice, 3},
                                     {"sheet", Kind::text},
                                     {"location", Kind::choice, 3},
                                     {"startCell", Kind::text},
                                     {"imageRoot", Kind::text},
                                     {"percentSize", Kind::percent},
                                     {"compress", Kind::flag},
                                     {"width", Kind::measure, 4},
                                     {"preview", Kind::flag},
                                     {"fontHandling", Kind::choice, 2},
                                     {"grayscale", Kind::flag},
                                     {"depth", Kind::choice, 7}};
static_assert(std::size(kSettings) == static_cast<std::size_t>(Set::depth) + 1);

constexpr std::string_view kEndings[] = {"", "Unit", "Text", "Autofit"};
static_assert(std::size(kEndings) == static_cast<std::size_t>(Part::autofit) + 1);

constexpr Part kValue[] = {Part::value};
constexpr Part kMeasure[] = {Part::value, Part::unit, Part::text};
constexpr Part kPercent[] = {Part::value, Part::text};
constexpr Part kColumnWidth[] = {Part::value, Part::text, Part::autofit};

constexpr Set kGlobal[] = {Set::name, Set::printOption};
constexpr Set kContents[] = {Set::exportType, Set::layers, Set::modelViews};
constexpr Set kDoc[] = {Set::documentFile,   Set::notesAndCaptions, Set::wideTables,   Set::pageSizeWidth,
                        Set::pageSizeHeight, Set::topMargin,        Set::bottomMargin, Set::leftMargin,
                        Set::rightMargin,    Set::pageBreaks};
constexpr Set kHtml[] = {Set::documentFile, Set::notesAndCaptions, Set::imageFormat, Set::styling,
                         Set::interactiveLayers};
constexpr Set kReport[] = {Set::documentFile,    Set::title,       Set::mht,
                           Set::excludeTexts,    Set::excludeLogs, Set::excludeNotes,
                           Set::excludeWarnings, Set::restyle};
constexpr Set kPdf[] = {Set::documentFile, Set::embedBookmarks, Set::embedFonts};
constexpr Set kPpt[] = {Set::documentFile,    Set::notesAndCaptions, Set::wideTables,   Set::slideSizeWidth,
                        Set::slideSizeHeight, Set::topMargin,        Set::bottomMargin, Set::leftMargin,
                        Set::rightMargin,     Set::slideTitles};
constexpr Set kText[] = {Set::documentFile, Set::notesAndCaptions, Set::imageFormat, Set::encoding,
                         Set::columnWidth,  Set::separator,        Set::rowBorder,   Set::columnBorder};
constexpr Set kXls[] = {Set::documentFile, Set::notesAndCaptions, Set::operation,
                        Set::sheet,        Set::location,         Set::startCell};
constexpr Set kBmp[] = {Set::imageRoot, Set::percentSize, Set::compress};
constexpr Set kSized[] = {Set::imageRoot, Set::percentSize};
constexpr Set kEps[] = {Set::imageRoot, Set::width, Set::preview, Set::fontHandling};
constexpr Set kJpg[] = {Set::imageRoot, Set::percentSize, Set::grayscale};
constexpr Set kPng[] = {Set::imageRoot, Set::percentSize, Set::depth};

constexpr std::array<ExportElementForm, kExportElements> kElements = {{{"global", kGlobal},
                                                                       {"contents", kContents},
                                                                       {"doc", kDoc},
                                                                       {"html", kHtml},
                                                                       {"report", kReport, true},
                                                                       {"pdf", kPdf},
                                                                       {"ppt", kPpt},
                                                                       {"text", kText},
                                                                       {"xls", kXls},
                                                                       {"xlsx", kXls},
                                                                       {"xlsm", kXls},
                                                                       {"bmp", kBmp},
                                                                       {"emf", kSized},
                                                                       {"eps", kEps},
                                                                       {"jpg", kJpg},
                                                                       {"png", kPng},
                                                                       {"tif", kSized}}};

}  // namespace

const SettingForm& formOf(ExportSetting setting) { return kSettings[static_cast<std::size_t>(setting)]; }

std::string_view endingOf(ExportAttributePart part) { return kEndings[static_cast<std::size_t>(part)]; }

std::span<const ExportAttributePart> partsOf(SettingKind kind) {
    switch (kind) {
        case SettingKind::measure:
            return kMeasure;
        case SettingKind::percent:
            return kPercent;
        case SettingKind::columnWidth:
            return kColumnWidth;
        default:
            return kValue;
    }
}

const std::array<ExportElementForm, kExportElements>& exportElements() { return kElements; }

}  // namespace vexa
