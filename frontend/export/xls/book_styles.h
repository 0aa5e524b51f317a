// The styles of a binary workbook: fonts, number formats, and the format records (XF) that cells name. What
// is there keeps its number; what is added comes behind it, once each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frontend/export/export_report.h"
#include "frontend/export/workbook/sheet_content.h"
#include "frontend/export/xls/book_palette.h"
#include "frontend/export/xls/record_reader.h"

namespace vexa::frontend::biff {

/// What readers of such workbooks take.
inline constexpr std::size_t mostFormats = 4'000;
inline constexpr std::size_t mostFonts = 500;
inline constexpr std::size_t mostNumberFormats = 200;

/// How cells of one style are written.
struct CellFormat {
    std::uint16_t format = 0;      ///< number of the XF
    std::uint16_t raisedFont = 0;  ///< of footnotes' marks
};

class BookStyles {
  public:
    /// The styles of a workbook. `isNew`: its cells are yet to come, so that its palette may change.
    BookStyles(const std::vector<RecordView>& globals, bool isNew);

    /// Adds every style of the content; by id. Where there is no room for all of them, the report says so,
    /// and cells get the format most like theirs. To be called once.
    [[nodiscard]] std::vector<CellFormat> add(const SheetContent& content, ExportReport& report);

    /// Whole records: what was added.
    [[nodiscard]] const std::string& fonts() const { return newFonts_; }
    [[nodiscard]] const std::string& numberFormats() const { return newNumberFormats_; }
    [[nodiscard]] const std::string& formats() const { return newFormats_; }
    [[nodiscard]] const BookPalette& palette() const { return palette_; }

    /// The width of a digit of the workbook's usual font, in dots of 1/96 inch.
    [[nodiscard]] double digitWidth() const { return digitWidth_; }

  private:
    void readFont(std::string_view content);
    void readNumberFormat(std::string_view content);
    void takeColors(const SheetContent& content, ExportReport& report);
    std::uint16_t fontOf(const SheetStyle& style, bool raised);
    std::uint16_t numberFormatOf(const std::string& code);
    [[nodiscard]] std::string formatContent(const SheetStyle& style);
    std::uint16_t formatOf(const SheetContent& content, SheetStyleId id);
    [[nodiscard]] std::uint16_t likest(const SheetContent& content, SheetStyleId id) const;

    bool isNew_;
    BookPalette palette_;
    double digitWidth_ = 7;
    std::size_t fontCount_ = 0;
    std::size_t numberFormatCount_ = 0;
    std::size_t formatCount_ = 0;
    std::uint16_t nextNumberFormat_ = 164;                                ///< lower ones are fixed
    std::unordered_map<std::string, std::uint16_t> fontNumbers_;          ///< by content
    std::unordered_map<std::string, std::uint16_t> numberFormatNumbers_;  ///< by code
    std::unordered_map<std::string, std::uint16_t> formatNumbers_;        ///< by content
    std::vector<CellFormat> added_;                                       ///< by id of the style
    std::vector<SheetStyleId> known_;  ///< styles that have formats of their own
    bool isFull_ = false;
    std::string newFonts_;
    std::string newNumberFormats_;
    std::string newFormats_;
};

}  // namespace vexa::frontend::biff
