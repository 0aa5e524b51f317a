// An export specification: what a command wants exported, to which formats, with which settings. The commands
// fill it; `ExportXML` turns it into the XML that the front end reads.
//
// A setting that is not made is not written; its default belongs to the front end. Texts are in the back
// end's character set. They are escaped when they are written, but for those of `setName`, `setDocumentFile`
// and `setTitle`, which take text that is escaped for XML already.
//
// Characters that XML cannot hold (control characters other than tab and line ends, U+FFFE, U+FFFF) and bytes
// that are no characters are written as U+FFFD: what is left out could make the name of another file.
#pragma once

#include <cstdint>
#include <string_view>

#include "backend/viewerxml/export_settings.h"

namespace vexa {

class ExportGlobalSpec : public ExportElement {
  public:
    enum class PRINT_OPTION : std::uint32_t { ALWAYS = 0, NEVER = 1, ERRORS = 2 };

    /// The viewer document to export.
    void setName(std::string_view escaped) { putText(ExportSetting::name, escaped); }
    void setPrintOption(PRINT_OPTION option) {
        printOption_ = option;
        putChoice(ExportSetting::printOption, option);
    }
    /// ALWAYS until another one is set.
    [[nodiscard]] PRINT_OPTION getPrintOption() const { return printOption_; }

  private:
    PRINT_OPTION printOption_ = PRINT_OPTION::ALWAYS;
};

class ExportContentsSpec : public ExportElement {
  public:
    enum class EXPORT_TYPE { ALL = 0, VISIBLE = 1 };
    enum class LAYERS_TYPE { PRINTSETTING = 0, ALL = 1, VISIBLE = 2 };
    enum class MODELVIEWS_TYPE { PRINTSETTING = 0, ALL = 1, VISIBLE = 2 };

    void setExport(EXPORT_TYPE what) { putChoice(ExportSetting::exportType, what); }
    void setLayers(LAYERS_TYPE which) { putChoice(ExportSetting::layers, which); }
    void setModelViews(MODELVIEWS_TYPE which) { putChoice(ExportSetting::modelViews, which); }
};

class ExportDocSpec : public DocumentFileSetting,
                      public NotesAndCaptionsSetting,
                      public WideTablesSetting,
                      public MarginSettings {
  public:
    void setPageSizeWidth(MEASUREMENT_TYPE unit, double number, std::string_view text) {
        putMeasure(ExportSetting::pageSizeWidth, unit, number, text);
    }
    void setPageSizeHeight(MEASUREMENT_TYPE unit, double number, std::string_view text) {
        putMeasure(ExportSetting::pageSizeHeight, unit, number, text);
    }
    void setPageBreaks(bool on) { putFlag(ExportSetting::pageBreaks, on); }
};

class ExportHTMLSpec : public DocumentFileSetting, public NotesAndCaptionsSetting, public ImageFormatSetting {
  public:
    void setStyling(bool on) { putFlag(ExportSetting::styling, on); }
    void setInteractiveLayers(bool on) { putFlag(ExportSetting::interactiveLayers, on); }
};

class ExportReportSpec : public DocumentFileSetting {
  public:
    void setTitle(std::string_view escaped) { putText(ExportSetting::title, escaped); }
    /// True for one file that holds everything, false for plain HTML.
    void setMHT(bool on) { putFlag(ExportSetting::mht, on); }
    void excludeTexts() { putFlag(ExportSetting::excludeTexts, true); }
    void excludeLogs() { putFlag(ExportSetting::excludeLogs, true); }
    void excludeNotes() { putFlag(ExportSetting::excludeNotes, true); }
    void excludeWarnings() { putFlag(ExportSetting::excludeWarnings, true); }
    /// Adds a link; there may be any number.
    void addURL(std::string_view url, std::string_view label) { putUrl(url, label); }
    void restyle(bool on) { putFlag(ExportSetting::restyle, on); }
};

class ExportPDFSpec : public DocumentFileSetting {
  public:
    void setEmbedBookmarks(bool on) { putFlag(ExportSetting::embedBookmarks, on); }
    void setEmbedFonts(bool on) { putFlag(ExportSetting::embedFonts, on); }
};

class ExportPPTSpec : public DocumentFileSetting,
                      public NotesAndCaptionsSetting,
                      public WideTablesSetting,
                      public MarginSettings {
  public:
    void setSlideTitles(bool on) { putFlag(ExportSetting::slideTitles, on); }
    void setSlideSizeWidth(MEASUREMENT_TYPE unit, double number, std::string_view text) {
        putMeasure(ExportSetting::slideSizeWidth, unit, number, text);
    }
    void setSlideSizeHeight(MEASUREMENT_TYPE unit, double number, std::string_view text) {
        putMeasure(ExportSetting::slideSizeHeight, unit, number, text);
    }
};

class ExportTextSpec : public DocumentFileSetting, public NotesAndCaptionsSetting, public ImageFormatSetting {
  public:
    enum class ENCODING { LOCALE = 0, UTF8 = 1, UTF16 = 2 };
    enum class SEPARATOR { SPACE = 0, TAB = 1 };

    void setEncoding(ENCODING encoding) { putChoice(ExportSetting::encoding, encoding); }
    /// `width` in characters; 0, with the text "0", when `autofit` is true.
    void setColumnWidth(std::int64_t width, std::string_view text, bool autofit) {
        putWhole(ExportSetting::columnWidth, width);
        putText(ExportSetting::columnWidth, text, ExportAttributePart::text);
        putFlag(ExportSetting::columnWidth, autofit, ExportAttributePart::autofit);
    }
    void setSeparator(SEPARATOR separator) { putChoice(ExportSetting::separator, separator); }
    /// Borders are one character each, of one byte or several.
    void setRowBorder(std::string_view character) { putText(ExportSetting::rowBorder, character); }
    void setColumnBorder(std::string_view character) { putText(ExportSetting::columnBorder, character); }
};

/// One of the three spreadsheet formats.
class ExportXLSSpec : public DocumentFileSetting, public NotesAndCaptionsSetting {
  public:
    enum class OPERATION { CREATEFILE = 0, CREATESHEET = 1, MODIFYSHEET = 2 };
    enum class LOCATION { LASTCOLUMN = 0, LASTROW = 1, STARTCELL = 2 };

    void setOperation(OPERATION operation) { putChoice(ExportSetting::operation, operation); }
    void setSheet(std::string_view sheet) { putText(ExportSetting::sheet, sheet); }
    void setLocation(LOCATION location) { putChoice(ExportSetting::location, location); }
    void setStartCell(std::string_view cell) { putText(ExportSetting::startCell, cell); }
};

class ExportBMPSpec : public ImageRootSetting, public PercentSizeSetting {
  public:
    void setCompress(bool on) { putFlag(ExportSetting::compress, on); }
};

class ExportEMFSpec : public ImageRootSetting, public PercentSizeSetting {};

class ExportEPSSpec : public ImageRootSetting {
  public:
    enum class UNITS { PERCENT = 0, CENTIMETERS = 1, INCHES = 2, POINTS = 3 };
    enum class FONT_HANDLING { REFERENCES = 0, CURVES = 1 };

    void setWidth(UNITS unit, double number, std::string_view text) {
        putMeasure(ExportSetting::width, unit, number, text);
    }
    void setPreview(bool on) { putFlag(ExportSetting::preview, on); }
    void setFontHandling(FONT_HANDLING how) { putChoice(ExportSetting::fontHandling, how); }
};

class ExportJPGSpec : public ImageRootSetting, public PercentSizeSetting {
  public:
    void setGrayscale(bool on) { putFlag(ExportSetting::grayscale, on); }
};

class ExportPNGSpec : public ImageRootSetting, public PercentSizeSetting {
  public:
    enum class DEPTH {
        SCREEN = 0,
        BLACKWHITE = 1,
        GRAYS256 = 2,
        COLORS16 = 3,
        COLORS256 = 4,
        TRUE24BIT = 5,
        TRUE32BIT = 6
    };

    void setDepth(DEPTH depth) { putChoice(ExportSetting::depth, depth); }
};

class ExportTIFSpec : public ImageRootSetting, public PercentSizeSetting {};

/// The whole specification. Its parts live as long as it does.
class ExportSpec {
  public:
    [[nodiscard]] ExportGlobalSpec& global() { return global_; }
    [[nodiscard]] const ExportGlobalSpec& global() const { return global_; }
    [[nodiscard]] ExportContentsSpec& contents() { return contents_; }
    [[nodiscard]] const ExportContentsSpec& contents() const { return contents_; }
    [[nodiscard]] ExportDocSpec& doc() { return doc_; }
    [[nodiscard]] const ExportDocSpec& doc() const { return doc_; }
    [[nodiscard]] ExportHTMLSpec& html() { return html_; }
    [[nodiscard]] const ExportHTMLSpec& html() const { return html_; }
    [[nodiscard]] ExportReportSpec& report() { return report_; }
    [[nodiscard]] const ExportReportSpec& report() const { return report_; }
    [[nodiscard]] ExportPDFSpec& pdf() { return pdf_; }
    [[nodiscard]] const ExportPDFSpec& pdf() const { return pdf_; }
    [[nodiscard]] ExportPPTSpec& ppt() { return ppt_; }
    [[nodiscard]] const ExportPPTSpec& ppt() const { return ppt_; }
    [[nodiscard]] ExportTextSpec& text() { return text_; }
    [[nodiscard]] const ExportTextSpec& text() const { return text_; }
    [[nodiscard]] ExportXLSSpec& xls() { return xls_; }
    [[nodiscard]] const ExportXLSSpec& xls() const { return xls_; }
    [[nodiscard]] ExportXLSSpec& xlsx() { return xlsx_; }
    [[nodiscard]] const ExportXLSSpec& xlsx() const { return xlsx_; }
    [[nodiscard]] ExportXLSSpec& xlsm() { return xlsm_; }
    [[nodiscard]] const ExportXLSSpec& xlsm() const { return xlsm_; }
    [[nodiscard]] ExportBMPSpec& bmp() { return bmp_; }
    [[nodiscard]] const ExportBMPSpec& bmp() const { return bmp_; }
    [[nodiscard]] ExportEMFSpec& emf() { return emf_; }
    [[nodiscard]] const ExportEMFSpec& emf() const { return emf_; }
    [[nodiscard]] ExportEPSSpec& eps() { return eps_; }
    [[nodiscard]] const ExportEPSSpec& eps() const { return eps_; }
    [[nodiscard]] ExportJPGSpec& jpg() { return jpg_; }
    [[nodiscard]] const ExportJPGSpec& jpg() const { return jpg_; }
    [[nodiscard]] ExportPNGSpec& png() { return png_; }
    [[nodiscard]] const ExportPNGSpec& png() const { return png_; }
    [[nodiscard]] ExportTIFSpec& tif() { return tif_; }
    [[nodiscard]] const ExportTIFSpec& tif() const { return tif_; }

  private:
    ExportGlobalSpec global_;
    ExportContentsSpec contents_;
    ExportDocSpec doc_;
    ExportHTMLSpec html_;
    ExportReportSpec report_;
    ExportPDFSpec pdf_;
    ExportPPTSpec ppt_;
    ExportTextSpec text_;
    ExportXLSSpec xls_;
    ExportXLSSpec xlsx_;
    ExportXLSSpec xlsm_;
    ExportBMPSpec bmp_;
    ExportEMFSpec emf_;
    ExportEPSSpec eps_;
    ExportJPGSpec jpg_;
    ExportPNGSpec png_;
    ExportTIFSpec tif_;
};

}  // namespace vexa
