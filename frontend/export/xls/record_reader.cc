#include "frontend/export/xls/record_reader.h"

#include <algorithm>

namespace vexa::frontend::biff {

namespace {

/// Bytes of the record at the beginning of `stream`; 0 where it is cut off.
std::size_t recordBytes(std::string_view stream) {
    if (stream.size() < headerBytes) return 0;
    const std::size_t length = headerBytes + twoAt(stream, 2);
    return length <= stream.size() ? length : 0;
}

/// Calls `found` with every record on the first level. Gives the bytes up to the end, 0 where there is none.
template <typename Found>
std::size_t walk(std::string_view stream, Found found) {
    if (stream.size() < headerBytes || twoAt(stream, 0) != id::bof) return 0;
    std::size_t at = 0;
    std::size_t depth = 0;
    std::size_t nestedAt = 0;
    for (;;) {
        const std::size_t length = recordBytes(stream.substr(at));
        if (length == 0) return 0;
        const std::uint16_t id = twoAt(stream, at);
        if (id == id::bof && ++depth == 2) nestedAt = at;
        const bool ends = id == id::eof;
        at += length;
        if (depth == 1) {
            found(RecordView{id, stream.substr(at - length, length)});
            if (ends) return at;
        } else if (ends && --depth == 1) {
            found(RecordView{id::bof, stream.substr(nestedAt, at - nestedAt)});
        }
    }
}

}  // namespace

bool splitRecords(std::string_view stream, std::vector<RecordView>& records) {
    records.clear();
    const std::size_t bytes = walk(stream, [&records](const RecordView& record) {
        // A CONTINUE behind a chart would continue nothing that is kept here.
        if (record.id == id::continued && !records.empty()) {
            RecordView& last = records.back();
            last.raw = {last.raw.data(), last.raw.size() + record.raw.size()};
        } else {
            records.push_back(record);
        }
    });
    return bytes > 0;
}

std::size_t substreamBytes(std::string_view stream) {
    return walk(stream, [](const RecordView& /*record*/) {});
}

std::string joinedContent(std::string_view raw) {
    std::string content;
    while (raw.size() >= headerBytes) {
        const std::size_t length = std::min<std::size_t>(twoAt(raw, 2), raw.size() - headerBytes);
        content += raw.substr(headerBytes, length);
        raw.remove_prefix(headerBytes + length);
    }
    return content;
}

void appendContinued(std::string& out, std::uint16_t id, std::string_view content) {
    Records records(out);
    do {
        records.begin(id).bytes(content.substr(0, mostBytes)).end();
        content.remove_prefix(std::min(mostBytes, content.size()));
        id = id::continued;
    } while (!content.empty());
}

}  // namespace vexa::frontend::biff
