// Walks the text of a modification: tags, attributes, and the ends of values that are not escaped. For the
// reader of modifications alone.
//
// The end of a raw value is the first quote behind which its element goes on as the form says, up to another
// text's beginning or to the beginning of what stands behind the element. So a value may hold anything but
// such a place; one that does is read as the form, or refused where the form goes on otherwise.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "backend/text/system_text.h"
#include "frontend/requests/modify_request_reader.h"
#include "frontend/requests/request_form.h"

namespace vexa::frontend {

/// An attribute that stands in the text. The value is a part of the text, as it stands there.
struct ScannedAttribute {
    const AttributeForm* form = nullptr;
    std::string_view value;
};

/// A start tag.
struct ScannedTag {
    const ElementForm* form = nullptr;
    std::vector<ScannedAttribute> attributes;
    bool open = false;  ///< an end tag must follow
};

/// After the first refusal the scanner stands still: nothing is taken any more, and later refusals are
/// ignored.
class RequestScanner {
  public:
    /// `text` must outlive the scanner.
    explicit RequestScanner(std::string_view text) : text_(text) {}

    [[nodiscard]] const std::optional<RequestRefusal>& refusal() const { return refusal_; }
    [[nodiscard]] bool isAt(std::string_view literal) const {
        return !refusal_ && rest().starts_with(literal);
    }
    [[nodiscard]] bool isAtEnd() const { return place_ == text_.size(); }
    /// Goes past `literal` where it stands here.
    [[nodiscard]] bool take(std::string_view literal);
    /// Goes past `<` and `name` where the tag of that element begins here.
    [[nodiscard]] bool takeBeginning(std::string_view name);

    /// The attributes and the end of a start tag whose beginning has been taken. Given twice with one value,
    /// an attribute counts once, but not beside raw values.
    [[nodiscard]] ScannedTag readTag(const ElementForm& element);
    /// The content of an element whose start tag has been taken, and its end tag.
    [[nodiscard]] std::string_view readFile(const FileForm& file);

    /// Refuses what stands here; `fits` is a list for the user.
    void refuseHere(std::string_view element, const std::string& fits);
    /// Refuses what begins with `found`, a part of the text.
    void refuse(std::string_view found, std::string_view element, std::string_view attribute,
                const std::string& fits);

  private:
    [[nodiscard]] std::string_view rest() const { return text_.substr(place_); }
    [[nodiscard]] const AttributeForm* findAttribute(const ScannedTag& tag, const AttributeForm* last);
    void addAttribute(ScannedTag& tag, const AttributeForm& attribute, std::string_view value);
    [[nodiscard]] std::optional<std::string_view> readValue(const ElementForm& element,
                                                            const AttributeForm& attribute);
    void refuseDoubt(std::string_view content, std::string_view element);
    [[nodiscard]] std::size_t offsetOf(std::string_view part) const {
        return static_cast<std::size_t>(part.data() - text_.data());
    }

    std::string_view text_;
    std::size_t place_ = 0;
    std::optional<RequestRefusal> refusal_;
};

/// The texts between quotes, divided by commas: what would fit, for the user.
[[nodiscard]] std::string listOf(const std::vector<std::string_view>& texts);

}  // namespace vexa::frontend
