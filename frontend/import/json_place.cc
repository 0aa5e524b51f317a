#include "frontend/import/json_place.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "frontend/import/json_reader.h"
#include "frontend/import/json_tracker.h"

namespace vexa::frontend {

namespace {

bool isWord(std::string_view key) {
    const auto fits = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
               c == '-';
    };
    return !key.empty() && std::all_of(key.begin(), key.end(), fits);
}

/// Stops the reader at the value of a path.
class Locator : public JsonEvents {
  public:
    Locator(const JsonPath& wanted, std::size_t occurrence) : wanted_(wanted), left_(occurrence) {}

    [[nodiscard]] bool found() const { return left_ == 0; }

    bool null() override { return scalar(); }
    bool boolean(bool /*value*/) override { return scalar(); }
    bool number_integer(number_integer_t /*value*/) override { return scalar(); }
    bool number_unsigned(number_unsigned_t /*value*/) override { return scalar(); }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return scalar(); }
    bool string(string_t& /*value*/) override { return scalar(); }
    bool binary(binary_t& /*value*/) override { return scalar(); }
    bool start_object(std::size_t /*elements*/) override { return open(false); }
    bool key(string_t& value) override {
        tracker_.key(value);
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t /*elements*/) override { return open(true); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return false;
    }

  private:
    bool scalar() {
        tracker_.value();
        return goesOn();
    }
    bool open(bool isList) {
        tracker_.value();
        const bool on = goesOn();
        tracker_.open(isList);
        return on;
    }
    bool close() {
        tracker_.close();
        return true;
    }
    bool goesOn() {
        if (tracker_.path().size() == wanted_.size() && isWanted()) --left_;
        return left_ > 0;
    }
    [[nodiscard]] bool isWanted() const {
        return std::equal(wanted_.begin(), wanted_.end(), tracker_.path().begin(),
                          [](const JsonStep& wanted, const JsonStep& is) {
                              return wanted.isIndex ? is.isIndex && wanted.index == is.index
                                                    : !is.isIndex && wanted.key == is.key;
                          });
    }

    const JsonPath& wanted_;
    std::size_t left_;
    JsonTracker tracker_;
};

}  // namespace

std::string pathText(const JsonPath& path) {
    std::string text;
    for (const JsonStep& step : path) {
        if (step.isIndex) {
            text += '[' + std::to_string(step.index) + ']';
        } else if (isWord(step.key)) {
            text += (text.empty() ? "" : ".") + step.key;
        } else {
            text += "['" + step.key + "']";
        }
    }
    return text;
}

JsonPath JsonPlace::path() const {
    if (base_ != nullptr) return *base_;
    JsonPath path = above_->path();
    path.push_back({std::string(key_), index_, isIndex_});
    return path;
}

bool JsonRefusal::refuse(JsonPath where, std::string what) {
    if (!isThere) {
        isThere = true;
        path = std::move(where);
        message = std::move(what);
    }
    return false;
}

bool JsonRefusal::refuse(const JsonPlace& where, std::string what) {
    return isThere ? false : refuse(where.path(), std::move(what));
}

std::size_t offsetOf(std::string_view text, const JsonPath& path, std::size_t occurrence) {
    JsonReader reader(text);
    Locator locator(path, occurrence);
    static_cast<void>(reader.read(locator));
    return locator.found() ? reader.tokenBegin() : text.size();
}

}  // namespace vexa::frontend
