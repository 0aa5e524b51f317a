// The records that drawings in binary workbooks are made of: each has a version, an instance, a kind and a
// length; those of version 15 hold others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/xls/records.h"

namespace vexa::frontend::biff {

enum DrawingId : std::uint16_t {
    groupContainer = 0xF000,
    blipStore = 0xF001,
    drawingContainer = 0xF002,
    shapeGroup = 0xF003,
    shapeContainer = 0xF004,
    groupHead = 0xF006,
    blipEntry = 0xF007,
    drawingHead = 0xF008,
    groupBounds = 0xF009,
    shapeHead = 0xF00A,
    shapeOptions = 0xF00B,
    clientAnchor = 0xF010,
    clientData = 0xF011,
    pngBlip = 0xF01E,
    menuColors = 0xF11E,
};

inline constexpr std::size_t drawingHeaderBytes = 8;

/// One record within the bytes of a drawing.
struct DrawingRecord {
    std::uint16_t id = 0;
    std::uint16_t versionAndInstance = 0;
    std::size_t at = 0;  ///< of its header
    std::string_view content;

    [[nodiscard]] bool isContainer() const { return (versionAndInstance & 0xFU) == 0xF; }
};

/// The records that stand one behind the other in `bytes`. False where one is cut off.
[[nodiscard]] bool splitDrawing(std::string_view bytes, std::vector<DrawingRecord>& records);

/// Calls `found` with every record of the kind, however deep. False where one is cut off, or they are nested
/// deeper than drawings are.
[[nodiscard]] bool findDrawing(std::string_view bytes, std::uint16_t id,
                               const std::function<void(const DrawingRecord&)>& found);

/// Appends the header of a record whose content of `length` bytes follows.
void appendDrawingHeader(std::string& out, std::uint16_t id, std::uint32_t version, std::uint32_t instance,
                         std::size_t length);
void appendDrawing(std::string& out, std::uint16_t id, std::uint32_t version, std::uint32_t instance,
                   std::string_view content);

/// What containers and most other records have as a version.
inline constexpr std::uint32_t containerVersion = 0xF;

}  // namespace vexa::frontend::biff
