// A binary workbook: read, a sheet added, replaced or changed, and written again. Records that are not ours
// stay as they are, but for the places that they name; so do all other streams of the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/xls/book_drawings.h"
#include "frontend/export/xls/book_strings.h"
#include "frontend/export/xls/book_styles.h"
#include "frontend/export/xls/record_reader.h"
#include "frontend/export/xls/sheet_stream.h"
#include "frontend/package/compound_file.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend::biff {

class BinaryBook {
  public:
    /// A new workbook with one empty sheet of this name, and the title of the document.
    void makeNew(std::string_view sheet, std::string_view title);
    /// Reads a workbook; `bytes` are not needed afterwards. Refuses, with the reason as the detail,
    /// what is none, is broken, or is something that cannot be kept with certainty.
    PackageResult read(std::string_view bytes);

    [[nodiscard]] std::optional<std::size_t> findSheet(std::string_view name) const;
    /// Whether it is one of rows and columns, no chart.
    [[nodiscard]] bool isWorksheet(std::size_t sheet) const { return sheets_[sheet].kind == 0; }
    /// Adds an empty sheet behind all others.
    std::size_t addSheet(std::string_view name);
    /// Makes a sheet an empty one, in its place. Refuses for what is no worksheet.
    PackageResult emptySheet(std::size_t sheet);

    /// The records of a sheet, to be changed by one caller.
    PackageResult openSheet(std::size_t sheet, SheetStream& stream);
    /// Puts what `openSheet` gave in its place.
    void closeSheet(std::size_t sheet, SheetStream& stream);

    /// To be had once the workbook is there.
    [[nodiscard]] BookStyles& styles() { return *styles_; }
    [[nodiscard]] BookStrings& strings() { return strings_; }
    [[nodiscard]] BookDrawings& drawings() { return drawings_; }
    [[nodiscard]] bool countsFrom1904() const { return countsFrom1904_; }
    [[nodiscard]] bool isSigned() const { return isSigned_; }

    /// Puts everything together. Refuses what cannot be.
    PackageResult finish();
    /// Writes the file, when it is finished.
    PackageResult write(const ByteSink& sink) const { return file_.write(sink); }

  private:
    struct Sheet {
        std::string name;
        std::string_view entry;  ///< its record in the workbook's globals
        std::uint8_t kind = 0;
        std::size_t at = 0;          ///< where it stands in the stream that was read
        std::string_view substream;  ///< what stands there
        std::string own;             ///< its entry, where it is new
        std::string written;         ///< what takes the place of `substream`
        bool isWritten = false;
    };
    PackageResult readFile(std::string_view bytes);
    PackageResult readGlobals();
    PackageResult readGlobal(const RecordView& record);
    PackageResult readSheets();
    [[nodiscard]] std::string writtenStream();
    void writeGlobals(std::string& out);
    void writeGlobal(const RecordView& record, std::string& out);
    void mendGlobal(const RecordView& record, std::size_t content, std::string& out) const;
    void writeBehind(std::size_t place, std::string& out);
    void writeSheets(std::string& out);

    CompoundFile file_;
    std::size_t streamPlace_ = 0;
    std::string stream_;  ///< as read; views below are into it
    std::size_t globalsBytes_ = 0;
    std::vector<RecordView> globals_;
    std::vector<Sheet> sheets_;
    std::optional<BookStyles> styles_;
    BookStrings strings_;
    BookDrawings drawings_;
    bool drawingsAreKnown_ = true;
    bool isNew_ = false;
    bool countsFrom1904_ = false;
    bool isSigned_ = false;
    bool overwrote_ = false;
    // While it is written:
    std::vector<std::size_t> entriesAt_;
    std::size_t stringsAt_ = 0;
    bool drawingsWritten_ = false;
};

}  // namespace vexa::frontend::biff
