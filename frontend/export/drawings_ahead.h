// The pictures of an export, drawn while it goes on: those that come next are begun before they are asked
// for, so that all cores draw. What comes of it does not depend on that.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "frontend/export/export_plan.h"

namespace vexa::frontend {

/// How many drawings are worth going on at the same time: one more than there are cores, since some wait to
/// be taken. Not many, since each may take gigabytes.
[[nodiscard]] std::size_t drawingsAtOnce();

/// Whether the pictures of a plan come from so few bytes that drawing them must take no more memory than a
/// small document may, all together.
[[nodiscard]] bool areFewBytes(const std::vector<const ExportedItem*>& pictures);

/// The charts and trees of a plan, in their order.
[[nodiscard]] std::vector<const ExportedItem*> picturesOf(const ExportPlan& plan);

/// `Drawing` is a pointer to a drawing that goes on; null where nothing has to be drawn.
template <typename Drawing>
class DrawingsAhead {
  public:
    /// Must neither report anything nor depend on when it is called.
    using Begin = std::function<Drawing(const ExportedItem&)>;

    /// `plan` must live as long.
    DrawingsAhead(const ExportPlan& plan, Begin begin, std::size_t atOnce = drawingsAtOnce())
        : pictures_(picturesOf(plan)),
          begin_(std::move(begin)),
          shareLittle_(areFewBytes(pictures_)),
          atOnce_(std::clamp<std::size_t>(atOnce, 1, shareLittle_ ? mostOfFewBytes : SIZE_MAX)) {}

    /// See `areFewBytes`.
    [[nodiscard]] bool shareLittle() const { return shareLittle_; }

    /// The drawing of a picture of the plan. They are taken in their order, each once; some may be passed
    /// over.
    Drawing take(const ExportedItem& item) {
        const std::size_t place = placeOf(item);
        waiting_.erase(waiting_.begin(), waiting_.lower_bound(place));
        next_ = std::max(next_, place);
        const bool isNew = next_ == place;
        if (isNew) ++next_;
        Drawing drawing = isNew ? begin_(item) : std::move(waiting_[place]);
        waiting_.erase(place);
        while (next_ < pictures_.size() && waiting_.size() + 1 < atOnce_) {
            if (Drawing further = begin_(*pictures_[next_])) waiting_.emplace(next_, std::move(further));
            ++next_;
        }
        return drawing;
    }

  private:
    [[nodiscard]] std::size_t placeOf(const ExportedItem& item) const {
        const auto found = std::lower_bound(
            pictures_.begin(), pictures_.end(), item.number,
            [](const ExportedItem* picture, std::size_t number) { return picture->number < number; });
        return static_cast<std::size_t>(found - pictures_.begin());
    }

    static constexpr std::size_t mostOfFewBytes = 3;

    std::vector<const ExportedItem*> pictures_;
    Begin begin_;
    bool shareLittle_;
    std::size_t atOnce_;
    std::size_t next_ = 0;                    // what was not begun yet
    std::map<std::size_t, Drawing> waiting_;  // by place; those without a drawing are not here
};

}  // namespace vexa::frontend
