#include "frontend/export/xls/sheet_drawing.h"

#include <algorithm>
#include <utility>

#include "backend/text/utf16.h"
#include "frontend/export/xls/drawing_records.h"

namespace vexa::frontend::biff {

namespace {

/// A drawing begins with its container, what is said of all of it, and the group of all shapes.
constexpr std::size_t drawingHeadAt = drawingHeaderBytes;
constexpr std::size_t drawingHeadBytes = 8;
constexpr std::size_t groupAt = drawingHeadAt + drawingHeaderBytes + drawingHeadBytes;
constexpr std::size_t beginningBytes = groupAt + drawingHeaderBytes;
constexpr std::size_t anchorBytes = 18;

constexpr std::uint16_t commentObject = 0x19;
constexpr std::uint32_t pictureObject = 8;
constexpr std::uint32_t pictureShape = 75;

std::uint16_t drawingIdAt(std::string_view bytes, std::size_t at) { return twoAt(bytes, at + 2); }

PictureAnchor anchorOf(std::string_view content) {
    return {twoAt(content, 2),  twoAt(content, 4),  twoAt(content, 6),  twoAt(content, 8),
            twoAt(content, 10), twoAt(content, 12), twoAt(content, 14), twoAt(content, 16)};
}

/// The options of a picture: which bitmap it shows, and what stands for it.
std::string optionsOf(std::uint32_t picture, std::string_view alternative, std::uint32_t& count) {
    constexpr std::uint32_t bitmap = 0x4104;
    constexpr std::uint32_t description = 0x8381;
    constexpr std::uint32_t noLine = 0x01FF;
    std::string text;
    for (const char16_t unit : utf8ToUtf16(alternative)) Records(text).two(unit);
    Records(text).two(0);
    std::string options;
    Records records(options);
    records.two(bitmap).four(picture).two(noLine).four(0x00080000);
    count = 2;
    if (!alternative.empty()) {
        records.two(description).four(static_cast<std::uint32_t>(text.size())).bytes(text);
        ++count;
    }
    return options;
}

std::string objectOf(std::uint32_t number) {
    std::string record;
    Records records(record);
    records.begin(id::obj);
    records.two(0x15).two(0x12).two(pictureObject).two(number).two(0x6011).four(0).four(0).four(0);
    records.two(0x07).two(2).two(0xFFFF);  // the form of the picture
    records.two(0x08).two(2).two(0x0001);  // its size follows the shape's
    records.two(0).two(0).end();
    return record;
}

}  // namespace

void SheetDrawing::read(const RecordView& record) {
    if (record.id == id::drawing) {
        pieces_.push_back(record);
        bytes_ += joinedContent(record.raw);
    } else if (record.id == id::obj) {
        const std::string_view content = record.content();
        objects_.push_back(twoAt(content, 4));
        lastObject_ = std::max(lastObject_, twoAt(content, 6));
    }
}

std::vector<std::optional<PictureAnchor>> SheetDrawing::anchors() const {
    std::vector<std::optional<PictureAnchor>> found;
    const bool whole = findDrawing(bytes_, shapeContainer, [&found](const DrawingRecord& shape) {
        std::vector<DrawingRecord> parts;
        std::optional<PictureAnchor> anchor;
        bool isObject = false;
        if (!splitDrawing(shape.content, parts)) return;
        for (const DrawingRecord& part : parts) {
            if (part.id == clientAnchor && part.content.size() == anchorBytes)
                anchor = anchorOf(part.content);
            isObject = isObject || part.id == clientData;
        }
        if (isObject) found.push_back(anchor);
    });
    if (!whole) found.clear();
    return found;
}

SheetExtent SheetDrawing::used() const {
    SheetExtent extent;
    const auto shapes = anchors();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const bool isComment = shapes.size() == objects_.size() && objects_[i] == commentObject;
        if (isComment || !shapes[i]) continue;
        const PictureAnchor& anchor = *shapes[i];
        extent.include(anchor.lastRow + (anchor.lastY > 0 ? 1U : 0U),
                       anchor.lastColumn + (anchor.lastX > 0 ? 1U : 0U));
    }
    return extent;
}

bool SheetDrawing::canGrow() const {
    if (pieces_.empty()) return objects_.empty();
    // The group of all shapes is the last thing in the drawing, and its head stands in the first piece.
    return pieces_.front().content().size() >= beginningBytes && drawingIdAt(bytes_, 0) == drawingContainer &&
           drawingIdAt(bytes_, drawingHeadAt) == drawingHead && drawingIdAt(bytes_, groupAt) == shapeGroup &&
           fourAt(bytes_, 4) == bytes_.size() - drawingHeaderBytes &&
           fourAt(bytes_, drawingHeadAt + 4) == drawingHeadBytes &&
           fourAt(bytes_, groupAt + 4) == bytes_.size() - beginningBytes;
}

void SheetDrawing::add(BookDrawings& book, std::string_view png, std::string_view alternative,
                       const PictureAnchor& anchor) {
    constexpr std::uint32_t hasAnchorAndKind = 0xA00;
    if (!drawing_ && !pieces_.empty()) drawing_ = twoAt(bytes_, drawingHeadAt) >> 4U;
    if (!drawing_) {
        drawing_ = book.addDrawing();
        firstShape_ = book.addShape(*drawing_);
    }
    lastShape_ = book.addShape(*drawing_);
    ++addedShapes_;
    std::uint32_t optionCount = 0;
    const std::string options = optionsOf(book.addPicture(png), alternative, optionCount);
    std::string shape;
    std::string head;
    Records(head).four(lastShape_).four(hasAnchorAndKind);
    std::string place;
    Records(place).two(0).two(anchor.firstColumn).two(anchor.firstX).two(anchor.firstRow);
    Records(place).two(anchor.firstY).two(anchor.lastColumn).two(anchor.lastX);
    Records(place).two(anchor.lastRow).two(anchor.lastY);
    appendDrawing(shape, shapeHead, 2, pictureShape, head);
    appendDrawing(shape, shapeOptions, 3, optionCount, options);
    appendDrawing(shape, clientAnchor, 0, 0, place);
    appendDrawing(shape, clientData, 0, 0, {});
    Added added;
    appendDrawing(added.shape, shapeContainer, containerVersion, 0, shape);
    added.object = objectOf(++lastObject_);
    addedLength_ += added.shape.size();
    added_.push_back(std::move(added));
}

/// What a new drawing begins with, its group of `length` bytes.
std::string SheetDrawing::headOf(std::size_t length) const {
    constexpr std::uint32_t isTopGroup = 5;
    std::string shape;
    appendDrawing(shape, groupBounds, 1, 0, std::string(16, '\0'));
    std::string name;
    Records(name).four(firstShape_).four(isTopGroup);
    appendDrawing(shape, shapeHead, 2, 0, name);
    std::string top;
    appendDrawing(top, shapeContainer, containerVersion, 0, shape);
    std::string counts;
    Records(counts).four(addedShapes_ + 1).four(lastShape_);
    std::string bytes;
    appendDrawingHeader(bytes, drawingContainer, containerVersion, 0,
                        drawingHeadBytes + 2 * drawingHeaderBytes + top.size() + length);
    appendDrawing(bytes, drawingHead, 0, *drawing_, counts);
    appendDrawingHeader(bytes, shapeGroup, containerVersion, 0, top.size() + length);
    return bytes + top;
}

std::string SheetDrawing::mendedHead() const {
    std::string raw(pieces_.front().raw);
    const std::size_t at = headerBytes;
    const auto grown = static_cast<std::uint32_t>(addedLength_);
    const std::size_t counts = at + drawingHeadAt + drawingHeaderBytes;
    setNumber(raw, at + 4, fourAt(bytes_, 4) + grown, 4);
    setNumber(raw, at + groupAt + 4, fourAt(bytes_, groupAt + 4) + grown, 4);
    setNumber(raw, counts, fourAt(raw, counts) + addedShapes_, 4);
    setNumber(raw, counts + 4, std::max(fourAt(raw, counts + 4), lastShape_), 4);
    return raw;
}

std::string SheetDrawing::appended() const {
    std::string bytes;
    for (std::size_t i = 0; i < added_.size(); ++i) {
        const std::string head = i == 0 && isNew() ? headOf(addedLength_) : std::string();
        appendContinued(bytes, id::drawing, head + added_[i].shape);
        bytes += added_[i].object;
    }
    return bytes;
}

}  // namespace vexa::frontend::biff
