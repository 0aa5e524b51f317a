#include "frontend/export/xls/binary_book.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frontend/export/workbook/sheet_name.h"
#include "frontend/export/xls/book_text.h"
#include "frontend/export/xls/document_properties.h"
#include "frontend/export/xls/new_book.h"

namespace vexa::frontend::biff {

namespace {

constexpr std::string_view bookStream = "Workbook";
constexpr std::string_view olderStream = "Book";

PackageResult refused(SystemText why) { return {PackageProblem::damaged, why}; }
PackageResult broken() { return refused("its records are damaged, or in an unknown order"_text); }

/// The classes of workbooks, by which programs know whose file it is.
constexpr std::array<char, 16> bookClass{0x20, 0x08, 0x02, 0, 0, 0, 0, 0, '\xC0', 0, 0, 0, 0, 0, 0, 0x46};

PackageResult wrongFile(const PackageResult& result) {
    if (result.problem == PackageProblem::notAnArchive) {
        return refused("it is no workbook"_text);
    }
    return result.problem == PackageProblem::damaged ? broken() : result;
}

}  // namespace

void BinaryBook::makeNew(std::string_view sheet, std::string_view title) {
    isNew_ = true;
    file_.entry(0).classId = bookClass;
    streamPlace_ = file_.addStream(0, bookStream, {});
    if (!title.empty()) file_.addStream(0, propertiesStream, documentProperties(title));
    stream_ = newGlobals(sheet);
    globalsBytes_ = stream_.size();
    stream_ += newSheet({true, {}});
    static_cast<void>(splitRecords(stream_, globals_));
    Sheet only;
    only.name = sheet;
    only.at = globalsBytes_;
    only.substream = std::string_view(stream_).substr(globalsBytes_);
    for (const RecordView& record : globals_) {
        if (record.id == id::boundSheet) only.entry = record.raw;
    }
    sheets_.push_back(std::move(only));
    styles_.emplace(globals_, true);
}

PackageResult BinaryBook::read(std::string_view bytes) {
    PackageResult result = readFile(bytes);
    if (result) result = readGlobals();
    if (result) result = readSheets();
    if (result) styles_.emplace(globals_, false);
    return result;
}

PackageResult BinaryBook::readFile(std::string_view bytes) {
    if (bytes.starts_with("PK\x03\x04")) {
        return refused("it is a workbook of the newer kind, XLSX, or none at all"_text);
    }
    if (PackageResult result = file_.read(bytes); !result) return wrongFile(result);
    if (file_.find("EncryptedPackage")) {
        return refused("it is protected by a password"_text);
    }
    const auto book = file_.find(bookStream);
    const auto older = file_.find(olderStream);
    if (older) {
        return book
                   ? refused(
                         "it holds the workbook twice, once for earlier programs; save it in the present format XLS"_text)
                   : refused("it is of an earlier format than BIFF8; save it in the present format XLS"_text);
    }
    if (!book || file_.entry(*book).isStorage) {
        return refused("it is no workbook"_text);
    }
    if (file_.find("Revision Log")) {
        return refused("it is shared, and its changes are recorded; take the sharing away"_text);
    }
    isSigned_ = file_.find("_signatures").has_value() || file_.find("_xmlsignatures").has_value();
    streamPlace_ = *book;
    stream_ = std::move(file_.entry(*book).content);
    return {};
}

PackageResult BinaryBook::readGlobals() {
    if (twoAt(stream_, 0) == id::bof && stream_.size() > headerBytes &&
        twoAt(stream_, headerBytes) != version8) {
        return refused("it is of an earlier format than BIFF8; save it in the present format XLS"_text);
    }
    if (!splitRecords(stream_, globals_)) return broken();
    if (twoAt(globals_.front().content(), 2) != globalsType) return broken();
    for (const RecordView& record : globals_) globalsBytes_ += record.raw.size();
    std::string drawings;
    for (const RecordView& record : globals_) {
        if (PackageResult result = readGlobal(record); !result) return result;
        if (record.id == id::drawingGroup) drawings += joinedContent(record.raw);
    }
    if (!drawings.empty()) drawingsAreKnown_ = drawings_.read(drawings);
    return {};
}

PackageResult BinaryBook::readGlobal(const RecordView& record) {
    const std::string_view content = record.content();
    switch (record.id) {
        case id::filePass:
            return refused("it is protected by a password"_text);
        case id::dateMode:
            countsFrom1904_ = twoAt(content, 0) == 1;
            break;
        case id::sst:
            if (!strings_.empty() || !strings_.read(record.raw)) return broken();
            break;
        case id::boundSheet: {
            const auto name = textAt(content, 6, 1);
            if (!name) return broken();
            Sheet sheet;
            sheet.name = *name;
            sheet.entry = record.raw;
            sheet.at = fourAt(content, 0);
            sheet.kind = static_cast<std::uint8_t>(numberAt(content, 5, 1));
            sheets_.push_back(std::move(sheet));
            break;
        }
        default:
            break;
    }
    return {};
}

PackageResult BinaryBook::readSheets() {
    std::vector<const Sheet*> order;
    for (Sheet& sheet : sheets_) {
        if (sheet.at < globalsBytes_ || sheet.at >= stream_.size()) return broken();
        const std::size_t length = substreamBytes(std::string_view(stream_).substr(sheet.at));
        if (length == 0) return broken();
        sheet.substream = std::string_view(stream_).substr(sheet.at, length);
        order.push_back(&sheet);
    }
    std::sort(order.begin(), order.end(), [](const Sheet* a, const Sheet* b) { return a->at < b->at; });
    for (std::size_t i = 1; i < order.size(); ++i) {
        if (order[i - 1]->at + order[i - 1]->substream.size() > order[i]->at) return broken();
    }
    return sheets_.empty() ? broken() : PackageResult();
}

std::optional<std::size_t> BinaryBook::findSheet(std::string_view name) const {
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        if (isSameSheetName(sheets_[i].name, name)) return i;
    }
    return std::nullopt;
}

std::size_t BinaryBook::addSheet(std::string_view name) {
    Sheet sheet;
    sheet.name = name;
    sheet.own = sheetEntry(name);
    sheet.at = stream_.size();
    sheet.written = newSheet({});
    sheet.isWritten = true;
    sheets_.push_back(std::move(sheet));
    return sheets_.size() - 1;
}

PackageResult BinaryBook::emptySheet(std::size_t place) {
    constexpr std::uint32_t isSelectedView = 0x0200;
    Sheet& sheet = sheets_[place];
    SheetStream old(styles_->digitWidth());
    if (PackageResult result = openSheet(place, old); !result) return result;
    std::vector<RecordView> records;
    static_cast<void>(splitRecords(sheet.substream, records));
    NewSheet empty;
    for (const RecordView& record : records) {
        if (record.id == id::codeName) empty.codeName = record.raw;
        if (record.id == id::window2) empty.isSelected = (twoAt(record.content(), 0) & isSelectedView) != 0;
    }
    sheet.written = newSheet(empty);
    sheet.isWritten = true;
    overwrote_ = true;
    return {};
}

PackageResult BinaryBook::openSheet(std::size_t place, SheetStream& stream) {
    const Sheet& sheet = sheets_[place];
    if (sheet.kind != 0) {
        return refused("the sheet is none of rows and columns"_text);
    }
    return stream.read(sheet.isWritten ? std::string_view(sheet.written) : sheet.substream);
}

void BinaryBook::closeSheet(std::size_t place, SheetStream& stream) {
    overwrote_ = overwrote_ || stream.overwrote();
    std::string written = stream.write();
    sheets_[place].written = std::move(written);
    sheets_[place].isWritten = true;
}

PackageResult BinaryBook::finish() {
    if (drawings_.changed() && !drawingsAreKnown_) {
        return refused("its drawings are of a kind that no picture can be added to"_text);
    }
    file_.entry(streamPlace_).content = writtenStream();
    return {};
}

}  // namespace vexa::frontend::biff
