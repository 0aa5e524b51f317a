#include "frontend/modify/modification.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <unordered_set>
#include <utility>

#include "frontend/modify/cell_change.h"
#include "frontend/modify/chart_change.h"
#include "frontend/modify/deletion.h"
#include "frontend/modify/object_change.h"
#include "frontend/modify/selection.h"
#include "frontend/modify/table_change.h"
#include "frontend/modify/text_change.h"

namespace vexa::frontend {

/// A group with what was found out about it.
struct PreparedRequest::Group {
    const ModifyGroup* group = nullptr;
    std::optional<PreparedTableChange> table;
    std::vector<PreparedCellsChange> cells;
    bool hasStyleSheet = true;  ///< whether the folders `Looks` have that of `group->graph`
    std::optional<tables::CellStyle> textStyle;
};

namespace {

std::optional<tables::DisplayFormat> formatAskedFor(const std::string& format, Complaints& complaints) {
    if (format.empty()) return std::nullopt;
    const std::optional<tables::DisplayFormat> parsed = tables::parseFormat(format);
    if (!parsed) complaints.invalidFormat(format);
    return parsed;
}

/// A look that came as XML: the known one of its name where that is the same look.
std::shared_ptr<const tables::TableLook> knownLook(std::shared_ptr<const tables::TableLook> look,
                                                   LookSource& looks) {
    if (look->name.empty()) return look;
    const ReadLook known = looks.find(look->name);
    if (known.look == nullptr) return look;
    tables::TableLook compared = *look;
    compared.source = known.look->source;
    compared.name = known.look->name;
    return compared == *known.look ? known.look : look;
}

/// Whether some change of a group is one for items of that type.
bool concerns(const ModifyGroup& group, ItemType type) {
    if (group.object || group.index) return true;
    switch (type) {
        case ItemType::table:
            return group.table || !group.cells.empty();
        case ItemType::chart:
        case ItemType::tree:
            return group.graph.has_value();
        case ItemType::text:
        case ItemType::heading:
        case ItemType::pageTitle:
            return group.text.has_value();
        default:
            return false;
    }
}

/// Applies one group to one outline and notes what it does.
class GroupRun {
  public:
    GroupRun(Modification& modification, std::unordered_set<ItemId>& touched, std::size_t group,
             PlanDetail detail)
        : modification_(modification),
          outline_(modification.outline),
          touched_(touched),
          group_(group),
          detail_(detail) {}

    template <typename Prepared>
    void run(const Prepared& prepared) {
        const ModifyGroup& group = *prepared.group;
        std::vector<MissedItem> missed;
        const std::vector<SelectedItem> selected =
            selectItems(outline_, group, detail_ == PlanDetail::allOfTheTypes ? &missed : nullptr);
        modification_.selected += selected.size();
        const std::size_t first = modification_.items.size();
        for (const SelectedItem& each : selected) list(each, true);
        for (const MissedItem& each : missed) list(each.item, false).plan.passOver(each.reason);
        if (group.deletes) {
            remove(selected, first);
        } else {
            for (std::size_t i = 0; i < selected.size(); ++i) {
                touched_.insert(selected[i].id);
                change(prepared, selected[i].id, static_cast<std::int64_t>(i),
                       modification_.items[first + i].plan);
            }
        }
        const auto begin = modification_.items.begin() + static_cast<std::ptrdiff_t>(first);
        std::sort(begin, modification_.items.end(),
                  [](const PlannedItem& a, const PlannedItem& b) { return a.number < b.number; });
    }

  private:
    PlannedItem& list(const SelectedItem& item, bool selected) {
        PlannedItem& planned = modification_.items.emplace_back();
        planned.group = group_;
        planned.number = item.number;
        planned.label = shownLabel(outline_.find(item.id)->item);
        planned.selected = selected;
        return planned;
    }

    void remove(const std::vector<SelectedItem>& selected, std::size_t first) {
        for (std::size_t i = 0; i < selected.size(); ++i) {
            modification_.items[first + i].plan.add(ChangeKind::deletion);
        }
        removeItems(outline_, selected);
        modification_.deleted += selected.size();
    }

    template <typename Prepared>
    void change(const Prepared& prepared, ItemId id, std::int64_t position, ItemPlan& plan) {
        const ModifyGroup& group = *prepared.group;
        if (!concerns(group, outline_.find(id)->item.type())) {
            plan.passOver("Nothing that is asked for applies to it."_text);
            return;
        }
        if (group.object) changeObject(outline_, id, *group.object, plan);
        if (group.index)
            appendIndex(outline_, id, group.index->notation, group.index->start + position, plan);
        if (group.graph) changeChart(outline_, id, *group.graph, prepared.hasStyleSheet, plan);
        if (outline_.find(id)->item.type() == ItemType::table) changeTableItem(prepared, id, plan);
        if (group.text) changeText(outline_, id, *group.text, *prepared.textStyle, plan);
    }

    template <typename Prepared>
    void changeTableItem(const Prepared& prepared, ItemId id, ItemPlan& plan) {
        const tables::Table& before = std::get<TableContent>(outline_.find(id)->item.content).table;
        tables::Table table = before;
        if (prepared.table) table = changeTable(table, *prepared.table, plan);
        if (!prepared.cells.empty()) {
            CellsEditor editor(table);
            for (const PreparedCellsChange& each : prepared.cells) editor.change(each, plan);
            table = editor.take();
        }
        const bool same =
            table.data == before.data && table.view == before.view && table.style == before.style;
        if (!same) std::get<TableContent>(outline_.change(id).content).table = std::move(table);
    }

    Modification& modification_;
    Outline& outline_;
    std::unordered_set<ItemId>& touched_;
    std::size_t group_;
    PlanDetail detail_;
};

/// Whether an item differs, apart from what stands under it.
bool differs(const Item& before, const Item& after) {
    const auto* const was = std::get_if<ModelContent>(&before.content);
    const auto* const is = std::get_if<ModelContent>(&after.content);
    if (was == nullptr || is == nullptr) return !(before == after);
    Item compared = after;
    std::get<ModelContent>(compared.content).shown = was->shown;
    return !(before == compared);
}

std::size_t countModified(const Outline& before, const Outline& after,
                          const std::unordered_set<ItemId>& touched) {
    return static_cast<std::size_t>(std::count_if(touched.begin(), touched.end(), [&](ItemId id) {
        const OutlineNode* const was = before.find(id);
        const OutlineNode* const is = after.find(id);
        return was != nullptr && is != nullptr && was != is && differs(was->item, is->item);
    }));
}

}  // namespace

PreparedRequest::PreparedRequest(const ModifyRequest& request, LookSource& looks) {
    for (const ModifyGroup& group : request.groups) prepare(group, looks);
}

PreparedRequest::~PreparedRequest() = default;

void PreparedRequest::prepare(const ModifyGroup& group, LookSource& looks) {
    Group prepared;
    prepared.group = &group;
    if (group.graph) {
        for (const std::string& each : group.graph->templates) {
            if (problem_.empty()) problem_ = templateProblem(each);
        }
        const std::string& sheet = group.graph->styleSheet;
        prepared.hasStyleSheet = sheet.empty() || looks.hasStyleSheet(sheet);
    }
    if (group.table) {
        PreparedTableChange change{&*group.table, formatAskedFor(group.table->format, complaints_), nullptr};
        if (group.table->defaultLook) change.look = tables::plainLook();
        if (!group.table->look.empty()) {
            const ReadLook read = readLook(group.table->look);
            if (read.look == nullptr && problem_.empty()) problem_ = read.problem;
            if (read.look != nullptr) change.look = knownLook(read.look, looks);
        }
        prepared.table = std::move(change);
    }
    for (const CellsChange& each : group.cells) {
        prepared.cells.push_back(
            {&each, formatAskedFor(each.format, complaints_), styleAskedFor(each, complaints_)});
    }
    if (group.text) prepared.textStyle = styleAskedFor(*group.text, complaints_);
    groups_.push_back(std::move(prepared));
}

Modification PreparedRequest::plan(const Outline& outline, PlanDetail detail) const {
    Modification modification;
    modification.outline = outline;
    std::unordered_set<ItemId> touched;
    for (std::size_t i = 0; i < groups_.size(); ++i) {
        GroupRun(modification, touched, i + 1, detail).run(groups_[i]);
    }
    modification.modified = countModified(outline, modification.outline, touched);
    return modification;
}

}  // namespace vexa::frontend
