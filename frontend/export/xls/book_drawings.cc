#include "frontend/export/xls/book_drawings.h"

#include <algorithm>

#include "frontend/export/xls/drawing_records.h"
#include "frontend/export/xls/picture_identifier.h"

namespace vexa::frontend::biff {

namespace {

constexpr std::uint32_t shapesOfCluster = 1024;
constexpr std::size_t groupHeadBytes = 16;
constexpr std::size_t clusterBytes = 8;
/// Of the entry of a picture: what stands where in its content.
constexpr std::size_t identifierAt = 2;
constexpr std::size_t identifierBytes = 16;
constexpr std::size_t usesAt = 24;
constexpr std::size_t entryBytes = 36;
constexpr std::uint32_t pngKind = 6;
constexpr std::uint32_t pngInstance = 0x6E0;

/// What a workbook without drawings says of shapes that say nothing.
std::string usualRest() {
    std::string options;
    Records(options).two(0x00BF).four(0x00080008).two(0x0181).four(0x08000041).two(0x01C0).four(0x08000040);
    std::string colors;
    Records(colors).four(0x0800000D).four(0x0800000C).four(0x08000017).four(0x100000F7);
    std::string rest;
    appendDrawing(rest, shapeOptions, 3, 3, options);
    appendDrawing(rest, menuColors, 0, 4, colors);
    return rest;
}

}  // namespace

bool BookDrawings::read(std::string_view content) {
    std::vector<DrawingRecord> records;
    if (!splitDrawing(content, records) || records.size() != 1 || records.front().id != groupContainer) {
        return false;
    }
    if (!splitDrawing(records.front().content, records) || records.empty()) return false;
    const std::string_view head = records.front().content;
    if (records.front().id != groupHead || head.size() < groupHeadBytes) return false;
    nextShape_ = fourAt(head, 0);
    shapes_ = fourAt(head, 8);
    drawings_ = fourAt(head, 12);
    for (std::size_t at = groupHeadBytes; at + clusterBytes <= head.size(); at += clusterBytes) {
        clusters_.push_back({fourAt(head, at), fourAt(head, at + 4), false});
        lastDrawing_ = std::max(lastDrawing_, clusters_.back().drawing);
    }
    for (std::size_t i = 1; i < records.size(); ++i) {
        const DrawingRecord& record = records[i];
        if (record.id == blipStore) {
            std::vector<DrawingRecord> entries;
            if (i != 1 || !splitDrawing(record.content, entries)) return false;
            keepPictures(record.content, entries);
        } else {
            appendDrawingHeader(rest_, record.id, record.versionAndInstance & 0xFU,
                                record.versionAndInstance >> 4U, record.content.size());
            rest_ += record.content;
        }
    }
    // Numbers of drawings and shapes are two bytes and four of that many.
    return lastDrawing_ < 0xFFF && pictureCount_ < 0xFFF && clusters_.size() < 0xFFFF;
}

void BookDrawings::keepPictures(std::string_view store, const std::vector<DrawingRecord>& entries) {
    pictures_ = store;
    for (const DrawingRecord& entry : entries) {
        ++pictureCount_;
        if (entry.id != blipEntry || entry.content.size() < entryBytes ||
            numberAt(entry.content, 0, 1) != pngKind)
            continue;
        known_.emplace(entry.content.substr(identifierAt, identifierBytes),
                       Picture{pictureCount_, entry.at + drawingHeaderBytes + usesAt});
    }
}

std::uint32_t BookDrawings::addPicture(std::string_view bytes) {
    changed_ = true;
    const std::string identifier = pictureIdentifier(bytes);
    const auto known = known_.find(identifier);
    if (known != known_.end()) {
        const std::size_t at = known->second.usesAt;
        setNumber(pictures_, at, fourAt(pictures_, at) + 1, 4);
        return known->second.number;
    }
    std::string blip;
    appendDrawingHeader(blip, pngBlip, 0, pngInstance, identifier.size() + 1 + bytes.size());
    blip.append(identifier).append(1, '\xFF').append(bytes);
    std::string entry;
    Records(entry).one(pngKind).one(pngKind).bytes(identifier).two(0xFF);
    Records(entry).four(static_cast<std::uint32_t>(blip.size())).four(1).four(0).four(0);
    appendDrawingHeader(pictures_, blipEntry, 2, pngKind, entry.size() + blip.size());
    known_.emplace(identifier, Picture{++pictureCount_, pictures_.size() + usesAt});
    pictures_.append(entry).append(blip);
    return pictureCount_;
}

std::uint32_t BookDrawings::addDrawing() {
    changed_ = true;
    ++drawings_;
    return ++lastDrawing_;
}

std::uint32_t BookDrawings::addShape(std::uint32_t drawing) {
    changed_ = true;
    ++shapes_;
    if (clusters_.empty() || !clusters_.back().isOwn || clusters_.back().drawing != drawing ||
        clusters_.back().used == shapesOfCluster) {
        clusters_.push_back({drawing, 0, true});
    }
    const auto number =
        static_cast<std::uint32_t>(clusters_.size() * shapesOfCluster) + clusters_.back().used++;
    nextShape_ = std::max(nextShape_, number + 1);
    return number;
}

std::string BookDrawings::head() const {
    std::string bytes;
    Records records(bytes);
    records.four(nextShape_).four(static_cast<std::uint32_t>(clusters_.size() + 1));
    records.four(shapes_).four(drawings_);
    for (const Cluster& cluster : clusters_) records.four(cluster.drawing).four(cluster.used);
    return bytes;
}

std::string BookDrawings::store() const {
    std::string bytes;
    if (pictureCount_ > 0) {
        appendDrawing(bytes, blipStore, containerVersion, pictureCount_, pictures_);
    }
    return bytes;
}

std::string BookDrawings::content() const {
    std::string inside;
    appendDrawing(inside, groupHead, 0, 0, head());
    inside += store();
    inside += rest_.empty() ? usualRest() : rest_;
    std::string bytes;
    appendDrawing(bytes, groupContainer, containerVersion, 0, inside);
    return bytes;
}

}  // namespace vexa::frontend::biff
