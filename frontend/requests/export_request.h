// What an export asks for, as plain values: every setting that the command did not make has its default here.
// What it is read from is docs/formats/export-specification.md.
//
// Texts are UTF-8, without entities. Measures are points.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "backend/viewerxml/export_spec.h"

namespace vexa::frontend {

inline constexpr double kPointsOfInch = 72.0;
inline constexpr double kPointsOfMillimetre = 72.0 / 25.4;

/// When the command reports what became of the export.
enum class PrintRule { always, never, errors };
enum class ExportedItems { all, visible };
/// Of layers and of views: what the item itself says of printing, every one, or the one that is shown.
enum class ExportedLayers { printSetting, all, visible };
enum class WideTables { asIs, shrink, wrap };
enum class PageImageFormat { jpg, png, bmp };
enum class ReportFormat { html, mht };
enum class TextEncoding { locale, utf8, utf16 };
enum class TextSeparator { space, tab };
enum class SheetOperation { createFile, createSheet, modifySheet };
enum class SheetLocation { lastColumn, lastRow, startCell };
enum class PngDepth { blackWhite, grays256, colors16, colors256, true24Bit, true32Bit };
enum class FontHandling { references, curves };

struct Extent {
    double width = 0.0;
    double height = 0.0;

    bool operator==(const Extent&) const = default;
};
inline constexpr Extent kA4{210.0 * kPointsOfMillimetre, 297.0 * kPointsOfMillimetre};
inline constexpr Extent kWideSlide{13.333 * kPointsOfInch, 7.5 * kPointsOfInch};

struct Margins {
    static constexpr double kUsual = 25.0 * kPointsOfMillimetre;

    double top = kUsual;
    double bottom = kUsual;
    double left = kUsual;
    double right = kUsual;

    bool operator==(const Margins&) const = default;
};

/// What every document has: the whole path of its file.
struct DocumentTarget {
    std::string file;

    bool operator==(const DocumentTarget&) const = default;
};

struct DocExport : DocumentTarget {
    bool notesAndCaptions = true;
    WideTables wideTables = WideTables::wrap;
    Extent page = kA4;
    Margins margins;
    bool pageBreaks = true;

    bool operator==(const DocExport&) const = default;
};

struct HtmlExport : DocumentTarget {
    bool notesAndCaptions = true;
    std::optional<PageImageFormat> imageFormat;  ///< nothing: pictures within the page
    bool styling = true;
    bool interactiveLayers = false;

    bool operator==(const HtmlExport&) const = default;
};

struct ReportLink {
    std::string address;
    std::string label;

    bool operator==(const ReportLink&) const = default;
};

struct ReportExport : DocumentTarget {
    std::optional<std::string> title;  ///< nothing: the document's name
    ReportFormat format = ReportFormat::html;
    bool excludeTexts = false;
    bool excludeLogs = false;
    bool excludeNotes = false;
    bool excludeWarnings = false;
    bool restyle = true;
    std::vector<ReportLink> links;

    bool operator==(const ReportExport&) const = default;
};

struct PdfExport : DocumentTarget {
    bool embedBookmarks = true;
    bool embedFonts = true;

    bool operator==(const PdfExport&) const = default;
};

struct PptExport : DocumentTarget {
    bool notesAndCaptions = true;
    WideTables wideTables = WideTables::wrap;
    Extent slide = kWideSlide;
    Margins margins;
    bool slideTitles = true;

    bool operator==(const PptExport&) const = default;
};

struct TextExport : DocumentTarget {
    bool notesAndCaptions = true;
    std::optional<PageImageFormat> imageFormat;  ///< nothing: no pictures beside the text
    TextEncoding encoding = TextEncoding::locale;
    std::optional<std::int64_t> columnWidth;  ///< characters, from 1; nothing: as wide as needed
    TextSeparator separator = TextSeparator::space;
    std::string rowBorder = "-";  ///< one character, as the column border
    std::string columnBorder = "|";

    bool operator==(const TextExport&) const = default;
};

/// One of the three kinds of workbooks.
struct WorkbookExport : DocumentTarget {
    bool notesAndCaptions = true;
    SheetOperation operation = SheetOperation::createFile;
    std::string sheet = "Output";
    SheetLocation location = SheetLocation::lastRow;
    std::string startCell;  ///< as typed; for `SheetLocation::startCell`

    bool operator==(const WorkbookExport&) const = default;
};

/// What pictures have: `root` is what the names of their files are formed from; where it is empty, the
/// document's file says it.
struct PictureTarget {
    std::string root;

    bool operator==(const PictureTarget&) const = default;
};

struct SizedPicture : PictureTarget {
    double percentSize = 100.0;

    bool operator==(const SizedPicture&) const = default;
};

struct BmpExport : SizedPicture {
    bool compress = false;

    bool operator==(const BmpExport&) const = default;
};

struct EmfExport : SizedPicture {
    bool operator==(const EmfExport&) const = default;
};

struct EpsExport : PictureTarget {
    std::optional<double> widthPoints;  ///< instead of the percentage
    double widthPercent = 100.0;        ///< of the picture's own width
    bool preview = false;
    FontHandling fontHandling = FontHandling::references;

    bool operator==(const EpsExport&) const = default;
};

struct JpgExport : SizedPicture {
    bool grayscale = false;

    bool operator==(const JpgExport&) const = default;
};

struct PngExport : SizedPicture {
    PngDepth depth = PngDepth::true24Bit;  ///< also what the command calls the screen's

    bool operator==(const PngExport&) const = default;
};

struct TifExport : SizedPicture {
    bool operator==(const TifExport&) const = default;
};

/// A format that is not asked for is nothing.
struct ExportRequest {
    std::string name = "*";  ///< of the document; `*` for the active one
    PrintRule print = PrintRule::always;
    ExportedItems items = ExportedItems::visible;
    ExportedLayers layers = ExportedLayers::printSetting;
    ExportedLayers modelViews = ExportedLayers::printSetting;

    std::optional<DocExport> doc;
    std::optional<HtmlExport> html;
    std::optional<ReportExport> report;
    std::optional<PdfExport> pdf;
    std::optional<PptExport> ppt;
    std::optional<TextExport> text;
    std::optional<WorkbookExport> xls;
    std::optional<WorkbookExport> xlsx;
    std::optional<WorkbookExport> xlsm;
    std::optional<BmpExport> bmp;
    std::optional<EmfExport> emf;
    std::optional<EpsExport> eps;
    std::optional<JpgExport> jpg;
    std::optional<PngExport> png;
    std::optional<TifExport> tif;

    [[nodiscard]] bool namesActive() const { return name == "*"; }
    bool operator==(const ExportRequest&) const = default;
};

/// What `spec` asks for, which must hold what `readExportSpec` lets through: numbers where they belong.
[[nodiscard]] ExportRequest exportRequestOf(const ExportSpec& spec);

}  // namespace vexa::frontend
