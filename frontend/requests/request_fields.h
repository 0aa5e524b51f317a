// The attributes of one start tag as values. For the reader of modifications alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/requests/modify_request.h"
#include "frontend/requests/request_scanner.h"

namespace vexa::frontend {

/// A word of an attribute, and what it stands for.
template <class Value>
struct RequestWord {
    std::string_view word;
    Value value;
};

/// Every operation leaves its target alone where the attribute is not there, and refuses, by the scanner, a
/// value that the form does not have.
class RequestFields {
  public:
    /// `tag` must outlive the object.
    RequestFields(RequestScanner& scanner, const ScannedTag& tag) : scanner_(scanner), tag_(tag) {}

    [[nodiscard]] bool has(std::string_view name) const { return find(name) != nullptr; }
    /// Refuses the tag unless exactly one of the attributes stands in it.
    void requireOne(std::initializer_list<std::string_view> names);
    /// Refuses the tag where more than one of the attributes stands in it.
    void allowOne(std::initializer_list<std::string_view> names);

    void text(std::string_view name, std::string& target);
    void text(std::string_view name, std::optional<std::string>& target);
    /// An attribute that is `true` or absent.
    void truth(std::string_view name, bool& target);
    void flag(std::string_view name, std::optional<bool>& target);
    void whole(std::string_view name, std::int32_t least, std::int32_t& target);
    void whole(std::string_view name, std::int32_t least, std::optional<std::int32_t>& target);
    /// A number above 0.
    void size(std::string_view name, std::optional<double>& target);
    void number(std::string_view name, double& target);
    /// Numbers from 1, divided by semicolons.
    void positions(std::string_view name, std::vector<std::int32_t>& target);
    /// Three attributes, which stand together or not at all.
    void color(std::string_view red, std::string_view green, std::string_view blue,
               std::optional<RequestedColor>& target);
    void condition(std::string_view name, CellCondition& target);

    template <class Value, std::size_t count, class Target>
    void choice(std::string_view name, const RequestWord<Value> (&words)[count], Target& target) {
        const ScannedAttribute* const found = find(name);
        if (found == nullptr) {
            return;
        }
        std::vector<std::string_view> fits;
        for (const RequestWord<Value>& each : words) {
            if (found->value == each.word) {
                target = each.value;
                return;
            }
            fits.push_back(each.word);
        }
        refuse(*found, listOf(fits));
    }

    void refuse(const ScannedAttribute& attribute, const std::string& fits);

  private:
    [[nodiscard]] const ScannedAttribute* find(std::string_view name) const;
    [[nodiscard]] std::optional<std::int32_t> wholeOf(const ScannedAttribute& attribute,
                                                      std::string_view text, std::int32_t least,
                                                      std::int32_t greatest);

    RequestScanner& scanner_;
    const ScannedTag& tag_;
};

}  // namespace vexa::frontend
