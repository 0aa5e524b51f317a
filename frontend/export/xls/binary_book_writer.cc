// Puts the stream of a workbook together: globals with what was added in its places, then the sheets, in the
// order in which they stood. At last the places are filled in, which are known only then.
#include <algorithm>
#include <array>
#include <numeric>

#include "frontend/export/xls/binary_book.h"

namespace vexa::frontend::biff {

namespace {

/// Records of sheets, references, names and drawings, which stand before the texts that sheets share.
constexpr std::array<std::uint16_t, 17> beforeStrings{
    id::boundSheet,    id::country,       id::supBook,      id::externSheet,   id::name,
    id::recalcId,      id::headerPicture, id::drawingGroup, id::useSelfs,      id::externalName,
    id::externalCount, id::externalCells, id::style,        id::namePublished, id::nameComment,
    id::nameGroup,     id::palette};

std::size_t lastOf(const std::vector<RecordView>& records, std::uint16_t id) {
    for (std::size_t i = records.size(); i-- > 0;) {
        if (records[i].id == id) return i;
    }
    return 0;
}

/// Where the texts of a workbook without any belong: behind this record.
std::size_t lastBeforeStrings(const std::vector<RecordView>& records) {
    for (std::size_t i = records.size(); i-- > 0;) {
        if (std::find(beforeStrings.begin(), beforeStrings.end(), records[i].id) != beforeStrings.end()) {
            return i;
        }
    }
    return 0;
}

/// Moves the places that the index of the sheet at `at` names. An index stands near the beginning.
void moveIndex(std::string& out, std::size_t at, std::size_t by) {
    constexpr int recordsBefore = 8;
    constexpr std::size_t placesAt = 12;
    for (int i = 0; i < recordsBefore && at + headerBytes <= out.size(); ++i) {
        const std::size_t length = twoAt(out, at + 2);
        const std::size_t content = at + headerBytes;
        if (content + length > out.size()) return;
        if (twoAt(out, at) == id::index) {
            for (std::size_t place = placesAt; place + 4 <= length; place += 4) {
                const std::uint32_t old = fourAt(out, content + place);
                if (old > 0) setNumber(out, content + place, old + static_cast<std::uint32_t>(by), 4);
            }
            return;
        }
        at = content + length;
    }
}

}  // namespace

std::string BinaryBook::writtenStream() {
    std::string out;
    std::size_t expected = stream_.size() + styles_->formats().size();
    for (const Sheet& sheet : sheets_) expected += sheet.written.size();
    out.reserve(expected);
    entriesAt_.clear();
    writeGlobals(out);
    writeSheets(out);
    return out;
}

void BinaryBook::writeGlobals(std::string& out) {
    const bool hasStrings =
        std::any_of(globals_.begin(), globals_.end(), [](const auto& each) { return each.id == id::sst; });
    const std::size_t stringsBehind = hasStrings ? globals_.size() : lastBeforeStrings(globals_);
    for (std::size_t i = 0; i < globals_.size(); ++i) {
        writeGlobal(globals_[i], out);
        writeBehind(i, out);
        if (i == stringsBehind) {
            if (drawings_.changed() && !drawingsWritten_) {
                appendContinued(out, id::drawingGroup, drawings_.content());
            }
            if (strings_.changed()) strings_.append(out);
        }
    }
}

/// A record of the globals, with what the changes mean for it.
void BinaryBook::writeGlobal(const RecordView& record, std::string& out) {
    const std::size_t content = out.size() + headerBytes;
    switch (record.id) {
        case id::boundSheet:
            entriesAt_.push_back(content);
            break;
        case id::sst:
            if (drawings_.changed() && !drawingsWritten_) {
                appendContinued(out, id::drawingGroup, drawings_.content());
            }
            stringsAt_ = out.size();
            strings_.append(out);
            return;
        case id::extSst:
            strings_.appendIndex(out, stringsAt_);
            return;
        case id::drawingGroup:
            if (!drawings_.changed()) break;
            if (!drawingsWritten_) appendContinued(out, id::drawingGroup, drawings_.content());
            drawingsWritten_ = true;
            return;
        default:
            break;
    }
    out += record.raw;
    mendGlobal(record, content, out);
}

/// What the sheets that are added, and cells that are written over, mean for a record that was copied with
/// its content to `content`.
void BinaryBook::mendGlobal(const RecordView& record, std::size_t content, std::string& out) const {
    const auto added = static_cast<std::uint32_t>(
        std::count_if(sheets_.begin(), sheets_.end(), [](const Sheet& each) { return !each.own.empty(); }));
    constexpr std::uint32_t ownBook = 0x0401;
    if (record.id == id::tabId && added > 0) {
        std::uint32_t last = 0;
        for (std::size_t at = content; at + 2 <= out.size(); at += 2)
            last = std::max<std::uint32_t>(last, twoAt(out, at));
        for (std::uint32_t i = 1; i <= added; ++i) Records(out).two(last + i);
        setNumber(out, content - 2, static_cast<std::uint32_t>(out.size() - content), 2);
    } else if (record.id == id::supBook && record.content().size() == 4 &&
               twoAt(record.content(), 2) == ownBook) {
        setNumber(out, content, twoAt(out, content) + added, 2);
    } else if (record.id == id::recalcId && overwrote_ && record.content().size() >= 8) {
        // As an older program would have calculated: everything is calculated anew.
        setNumber(out, content + 4, 0, 4);
    }
}

/// What comes behind a record of the globals, because it is the last of its kind.
void BinaryBook::writeBehind(std::size_t place, std::string& out) {
    const std::size_t fonts = lastOf(globals_, id::font);
    const std::size_t codes = std::max(fonts, lastOf(globals_, id::format));
    if (place == fonts) out += styles_->fonts();
    if (place == codes) out += styles_->numberFormats();
    if (place == lastOf(globals_, id::xf)) out += styles_->formats();
    if (place == lastOf(globals_, id::style) && isNew_ && styles_->palette().changed()) {
        styles_->palette().append(out);
    }
    if (place != lastOf(globals_, id::boundSheet)) return;
    for (const Sheet& sheet : sheets_) {
        if (sheet.own.empty()) continue;
        entriesAt_.push_back(out.size() + headerBytes);
        out += sheet.own;
    }
}

void BinaryBook::writeSheets(std::string& out) {
    std::vector<std::size_t> order(sheets_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [this](std::size_t a, std::size_t b) { return sheets_[a].at < sheets_[b].at; });
    const std::string_view read = stream_;
    std::size_t next = globalsBytes_;
    for (const std::size_t number : order) {
        const Sheet& sheet = sheets_[number];
        // What stands between sheets is nobody's; behind the last one, zeros fill a sector.
        const std::string_view between = read.substr(next, sheet.at - next);
        if (between.find_first_not_of('\0') != std::string_view::npos) out += between;
        next = sheet.at + sheet.substream.size();
        const std::size_t at = out.size();
        setNumber(out, entriesAt_[number], static_cast<std::uint32_t>(at), 4);
        out += sheet.isWritten ? std::string_view(sheet.written) : sheet.substream;
        moveIndex(out, at, sheet.isWritten ? at : at - sheet.at);
    }
    const std::string_view rest = read.substr(std::min(next, read.size()));
    if (rest.find_first_not_of('\0') != std::string_view::npos) out += rest;
}

}  // namespace vexa::frontend::biff
