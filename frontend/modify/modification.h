// A modification of one document: what it would do, and the outline that it leads to. Planning and doing are
// one thing: whoever applies a modification puts the planned outline in the place of the old one.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "frontend/document/outline.h"
#include "frontend/looks/look_library.h"
#include "frontend/modify/change_notes.h"
#include "frontend/requests/modify_request.h"

namespace vexa::frontend {

/// What one group does to one item.
struct PlannedItem {
    std::size_t group = 0;   ///< from 1
    std::size_t number = 0;  ///< of the item in the outline as the group finds it, from 1
    std::string label;       ///< as the group finds it
    bool selected = true;
    ItemPlan plan;  ///< of an item that is not selected: why
};

/// What a plan lists: the items that are selected, or, for a user who looks for others, also those of the
/// selected types that are not.
enum class PlanDetail { selectedItems, allOfTheTypes };

struct Modification {
    Outline outline;                 ///< as it is afterwards
    std::vector<PlannedItem> items;  ///< group by group, in the order of the outline
    std::size_t selected = 0;        ///< summed up over the groups
    std::size_t modified = 0;        ///< different items that differ in the end and are still there
    std::size_t deleted = 0;         ///< items that were selected and went
};

/// What of a request holds for every document.
class PreparedRequest {
  public:
    /// Looks, formats and fonts of `request`, which must live as long, are read once. `problem` is empty, or
    /// why the request cannot be carried out at all, as shown.
    PreparedRequest(const ModifyRequest& request, LookSource& looks);
    ~PreparedRequest();
    PreparedRequest(const PreparedRequest&) = delete;
    PreparedRequest& operator=(const PreparedRequest&) = delete;

    [[nodiscard]] const std::string& problem() const { return problem_; }
    /// Formats and fonts that do not exist; whole after the last `plan`.
    [[nodiscard]] const Complaints& complaints() const { return complaints_; }

    /// What the request does to a document with this outline. Groups happen one after the other, each with
    /// what those before have changed; instances and indexes are counted anew.
    [[nodiscard]] Modification plan(const Outline& outline,
                                    PlanDetail detail = PlanDetail::selectedItems) const;

  private:
    struct Group;

    void prepare(const ModifyGroup& group, LookSource& looks);

    std::vector<Group> groups_;
    Complaints complaints_;
    std::string problem_;
};

}  // namespace vexa::frontend
