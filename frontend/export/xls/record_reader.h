// The stream of a binary workbook cut into its records. Views into the stream; nothing is copied.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/xls/records.h"

namespace vexa::frontend::biff {

/// A record with the CONTINUE records behind it; a chart within a sheet, from its BOF to its EOF, is one.
struct RecordView {
    std::uint16_t id = 0;
    std::string_view raw;  ///< with headers

    /// What the record itself holds, without its CONTINUE records.
    [[nodiscard]] std::string_view content() const {
        return raw.size() < headerBytes ? std::string_view() : raw.substr(headerBytes, twoAt(raw, 2));
    }
};

/// The records from the BOF at the beginning of `stream` to its EOF, both among them. False where there is no
/// BOF, no EOF, or a record that is cut off.
[[nodiscard]] bool splitRecords(std::string_view stream, std::vector<RecordView>& records);

/// Bytes of the records that `splitRecords` finds, from BOF to EOF; 0 where it finds none.
[[nodiscard]] std::size_t substreamBytes(std::string_view stream);

/// What the record and its CONTINUE records hold together.
[[nodiscard]] std::string joinedContent(std::string_view raw);

/// Appends a record that goes on in CONTINUE records where it is too long for one.
void appendContinued(std::string& out, std::uint16_t id, std::string_view content);

}  // namespace vexa::frontend::biff
