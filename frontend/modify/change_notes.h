// What a modification says of itself while it is planned: which changes an item gets, why others do not
// apply, and what is to be complained about.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "backend/text/system_text.h"
#include "frontend/requests/modify_reply.h"

namespace vexa::frontend {

/// What changes of an item.
enum class ChangeKind : std::uint8_t {
    deletion,
    visibility,
    label,
    size,
    index,
    chart,
    title,
    caption,
    transposition,
    sorting,
    format,
    look,
    layer,
    cells,
    text
};
inline constexpr std::size_t changeKindCount = 15;

/// What a kind of change is called in the table of a dry run.
[[nodiscard]] SystemText changeText(ChangeKind kind);

/// Why something that was asked for does not apply to an item.
struct PassedOver {
    SystemText reason;
    bool isReported = false;  ///< false for what is passed over in silence, but for a dry run
};

/// What one group does to one item. Only what really changes something is a change.
struct ItemPlan {
    std::vector<ChangeKind> changes;  ///< each once, in the order in which they happened
    std::vector<PassedOver> passedOver;

    void add(ChangeKind kind);
    /// For what the user cannot have meant.
    void report(SystemText reason);
    /// For what the items of a selection may well lack.
    void passOver(SystemText reason);
};

/// Formats and fonts that do not exist, each once, in the order in which they came up.
class Complaints {
  public:
    void invalidFormat(const std::string& format);
    void invalidFont(const std::string& font);
    [[nodiscard]] const std::vector<std::string>& formats() const { return formats_; }
    [[nodiscard]] const std::vector<std::string>& fonts() const { return fonts_; }

  private:
    std::vector<std::string> formats_;
    std::vector<std::string> fonts_;
    std::set<std::string> known_;
};

}  // namespace vexa::frontend
