#include "frontend/drawing/emf_file.h"

#include <algorithm>
#include <cmath>

#include "backend/strings/dictionary.h"
#include "frontend/drawing/bitmap.h"
#include "frontend/drawing/bitmap_source.h"
#include "frontend/drawing/dashed_path.h"
#include "frontend/drawing/emf_records.h"
#include "frontend/drawing/picture_drawing.h"
#include "frontend/drawing/vector_reader.h"

namespace vexa::frontend {

namespace {

class EmfTarget : public VectorTarget {
  public:
    EmfTarget(EmfRecords& records, BitmapSource& bitmaps) : records_(records), bitmaps_(bitmaps) {}

    void save() override { records_.save(); }
    void restore() override { records_.restore(); }
    void clip(const VectorPath& path, bool evenOdd) override { records_.clip(path, evenOdd); }
    void fill(const VectorPath& path, bool evenOdd, VectorColor color) override {
        records_.fill(path, evenOdd, color);
    }
    void stroke(const VectorPath& path, const VectorLine& line, VectorColor color) override {
        records_.stroke(dashedPath(path, line), line, color);
    }
    void text(const VectorText& text) override { records_.text(text); }
    void bitmap(const VectorBox& place) override {
        VectorBox cut = place;
        Bitmap piece;
        if (bitmaps_.cut(cut, piece)) records_.bitmap(cut, piece);
    }

  private:
    EmfRecords& records_;
    BitmapSource& bitmaps_;
};

}  // namespace

std::string emfFile(const Picture& picture, const DrawingOrder& order, std::string& reason) {
    if (!(order.width <= largestPage && order.height <= largestPage)) {
        reason = translated("It is larger than a page can be."_text);
        return {};
    }
    BitmapSource bitmaps(picture, order.width, order.height);
    EmfRecords records(order.width, order.height);
    EmfTarget target(records, bitmaps);
    if (picture.form == PictureForm::png) {
        target.bitmap({0, 0, order.width, order.height});
    } else if (!readVectors(picture, order.width, order.height, target, reason)) {
        return {};
    }
    if (!bitmaps.isWell(reason)) return {};
    return records.finish();
}

}  // namespace vexa::frontend
