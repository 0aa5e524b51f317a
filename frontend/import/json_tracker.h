// Knows the path of the value that a JSON reader is at.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "frontend/import/json_place.h"

namespace vexa::frontend {

/// To be told of every event of the reader, in its order.
class JsonTracker {
  public:
    /// A value begins: a scalar, an object or a list.
    void value() {
        if (!levels_.empty() && levels_.back().isIndex) ++levels_.back().index;
    }
    /// An object or a list begins; `value` has been called for it.
    void open(bool isList) {
        JsonStep& step = levels_.emplace_back();
        step.isIndex = isList;
        step.index = static_cast<std::size_t>(-1);
    }
    void key(std::string key) { levels_.back().key = std::move(key); }
    void close() { levels_.pop_back(); }

    /// How many objects and lists are open.
    [[nodiscard]] std::size_t depth() const { return levels_.size(); }
    /// The path of the value that began last, or, behind `close`, of the one that was closed.
    [[nodiscard]] const JsonPath& path() const { return levels_; }

  private:
    JsonPath levels_;
};

}  // namespace vexa::frontend
