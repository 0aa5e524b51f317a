// What the drawings of all sheets of a binary workbook share: the bitmaps, and the numbers of shapes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/xls/drawing_records.h"

namespace vexa::frontend::biff {

/// Bitmaps and numbers that are there stay; further ones come behind them.
class BookDrawings {
  public:
    /// `content`: of the group's record with its CONTINUE records, joined. False where it is not as such
    /// records are, so that nothing can be added.
    [[nodiscard]] bool read(std::string_view content);

    /// The number, from 1, of a bitmap (a PNG). The same number for the same bytes.
    std::uint32_t addPicture(std::string_view png);
    /// The number of a drawing that is not there yet.
    std::uint32_t addDrawing();
    /// The number of one more shape of the drawing.
    std::uint32_t addShape(std::uint32_t drawing);

    [[nodiscard]] bool changed() const { return changed_; }
    /// The content of the group's record.
    [[nodiscard]] std::string content() const;

  private:
    /// A thousand numbers of shapes, of which so many are given to a drawing.
    struct Cluster {
        std::uint32_t drawing = 0;
        std::uint32_t used = 0;
        bool isOwn = false;
    };
    struct Picture {
        std::uint32_t number = 0;
        std::size_t usesAt = 0;  ///< in `pictures_`, where it says how many shapes show it
    };
    void keepPictures(std::string_view store, const std::vector<DrawingRecord>& entries);
    [[nodiscard]] std::string head() const;
    [[nodiscard]] std::string store() const;

    std::vector<Cluster> clusters_;
    std::uint32_t nextShape_ = 1024;
    std::uint32_t shapes_ = 0;
    std::uint32_t drawings_ = 0;
    std::uint32_t lastDrawing_ = 0;
    std::string pictures_;  ///< entries of the store
    std::uint32_t pictureCount_ = 0;
    std::string rest_;  ///< records behind the store
    bool changed_ = false;
    std::map<std::string, Picture> known_;  ///< by identifier
};

}  // namespace vexa::frontend::biff
