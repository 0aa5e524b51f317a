// What first did not fit in the XML that is being read, for the message about a damaged file.
#pragma once

#include <string>
#include <string_view>

#include "backend/text/system_text.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

struct Objection {
    std::string found;     ///< as XML: `<item hidden="yes">`; empty for none
    std::string expected;  ///< a text of the string tables, or words that are nobody's to translate
};

/// While it lives, what does not fit on this thread is kept; of several the first one. Scopes do not nest.
class ObjectionScope {
  public:
    ObjectionScope();
    ~ObjectionScope();
    ObjectionScope(const ObjectionScope&) = delete;
    ObjectionScope& operator=(const ObjectionScope&) = delete;

    [[nodiscard]] const Objection& objection() const { return objection_; }
    /// `result`, with what was kept.
    [[nodiscard]] PackageResult explain(PackageResult result) const;

  private:
    friend void object(std::string_view element, std::string_view attribute, std::string_view value,
                       std::string_view expected);

    Objection objection_;
};

/// Keeps what was found of an attribute, or of an element where `attribute` is empty. Without a scope nothing
/// happens.
void object(std::string_view element, std::string_view attribute, std::string_view value,
            std::string_view expected);

}  // namespace vexa::frontend
