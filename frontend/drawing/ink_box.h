// Where a part of a picture leaves ink, and whether all of it is text.
#pragma once

#include <vector>

#include "frontend/drawing/vector_target.h"

namespace vexa::frontend {

class InkBox : public VectorTarget {
  public:
    /// Nothing beyond `clip` counts.
    explicit InkBox(const VectorBox& clip) : clip_(clip) {}

    void save() override { saved_.push_back(clip_); }
    void restore() override;
    void clip(const VectorPath& path, bool evenOdd) override;
    void fill(const VectorPath& path, bool evenOdd, VectorColor color) override;
    void stroke(const VectorPath& path, const VectorLine& line, VectorColor color) override;
    void text(const VectorText& text) override;
    void bitmap(const VectorBox& place) override;

    [[nodiscard]] const VectorBox& box() const { return box_; }
    /// Of everything but texts.
    [[nodiscard]] const VectorBox& boxWithoutTexts() const { return drawn_; }

  private:
    void take(const VectorBox& box, bool isText = false);

    VectorBox clip_;
    VectorBox box_;
    VectorBox drawn_;
    std::vector<VectorBox> saved_;
};

/// What a line along the path covers at most.
[[nodiscard]] VectorBox boxOfLine(const VectorPath& path, const VectorLine& line);
/// What a text covers at most.
[[nodiscard]] VectorBox boxOfText(const VectorText& text);

}  // namespace vexa::frontend
