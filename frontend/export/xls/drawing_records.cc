#include "frontend/export/xls/drawing_records.h"

namespace vexa::frontend::biff {

namespace {

constexpr std::size_t deepest = 32;

bool findIn(std::string_view bytes, std::uint16_t id, const std::function<void(const DrawingRecord&)>& found,
            std::size_t depth) {
    std::vector<DrawingRecord> records;
    if (depth > deepest || !splitDrawing(bytes, records)) return false;
    for (const DrawingRecord& record : records) {
        if (record.id == id) found(record);
        if (record.isContainer() && !findIn(record.content, id, found, depth + 1)) return false;
    }
    return true;
}

}  // namespace

bool splitDrawing(std::string_view bytes, std::vector<DrawingRecord>& records) {
    records.clear();
    std::size_t at = 0;
    while (at < bytes.size()) {
        if (bytes.size() - at < drawingHeaderBytes) return false;
        const std::size_t length = fourAt(bytes, at + 4);
        if (length > bytes.size() - at - drawingHeaderBytes) return false;
        records.push_back(
            {twoAt(bytes, at + 2), twoAt(bytes, at), at, bytes.substr(at + drawingHeaderBytes, length)});
        at += drawingHeaderBytes + length;
    }
    return true;
}

bool findDrawing(std::string_view bytes, std::uint16_t id,
                 const std::function<void(const DrawingRecord&)>& found) {
    return findIn(bytes, id, found, 0);
}

void appendDrawingHeader(std::string& out, std::uint16_t id, std::uint32_t version, std::uint32_t instance,
                         std::size_t length) {
    Records(out).two(version | instance << 4U).two(id).four(static_cast<std::uint32_t>(length));
}

void appendDrawing(std::string& out, std::uint16_t id, std::uint32_t version, std::uint32_t instance,
                   std::string_view content) {
    appendDrawingHeader(out, id, version, instance, content.size());
    out += content;
}

}  // namespace vexa::frontend::biff
