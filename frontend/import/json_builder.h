// Builds one JSON value out of the events of a reader.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "frontend/import/json_object.h"

namespace vexa::frontend {

class JsonBuilder {
  public:
    /// Begins anew; the value goes to `target`.
    void start(Json& target) {
        open_.clear();
        target_ = &target;
    }
    /// True while an object or a list is open.
    [[nodiscard]] bool isOpen() const { return !open_.empty(); }

    void add(Json value) { put(std::move(value)); }
    void open(bool isList) {
        Json* const opened = put(isList ? Json(Json::value_t::array) : Json(Json::value_t::object));
        open_.push_back(opened);
    }
    void close() { open_.pop_back(); }
    /// False for a key that the object has already.
    [[nodiscard]] bool key(std::string& key) {
        const auto [place, added] = open_.back()->get_ref<Json::object_t&>().try_emplace(std::move(key));
        member_ = &place->second;
        return added;
    }

  private:
    Json* put(Json value) {
        if (open_.empty()) {
            *target_ = std::move(value);
            return target_;
        }
        if (open_.back()->is_array()) {
            open_.back()->push_back(std::move(value));
            return &open_.back()->back();
        }
        *member_ = std::move(value);
        return member_;
    }

    Json* target_ = nullptr;
    Json* member_ = nullptr;   // of the object that is open, for its next value
    std::vector<Json*> open_;  // pointers hold: only the innermost value grows
};

}  // namespace vexa::frontend
