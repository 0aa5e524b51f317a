#include "frontend/modify/selection.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "frontend/document/compared_text.h"
#include "frontend/document/walk.h"

namespace vexa::frontend {

namespace {

/// The type by which items are selected, in the order of `ItemType`.
constexpr std::array<SelectedType, itemTypeCount> selectedBy{
    SelectedType::outlineHeaders, SelectedType::headings, SelectedType::tables,   SelectedType::charts,
    SelectedType::texts,          SelectedType::logs,     SelectedType::warnings, SelectedType::notes,
    SelectedType::pageTitles,     SelectedType::models,   SelectedType::trees,    SelectedType::other,
    SelectedType::unknown};

/// A criterion with its text ready for comparing.
struct ComparedCommand {
    std::string name;
    const CommandCriterion* criterion;
};
struct ComparedLabel {
    std::string text;
    LabelMatch match;
};

bool matches(const std::string& label, const ComparedLabel& wanted) {
    switch (wanted.match) {
        case LabelMatch::exact:
            return label == wanted.text;
        case LabelMatch::begins:
            return label.starts_with(wanted.text);
        case LabelMatch::ends:
            return label.ends_with(wanted.text);
        case LabelMatch::contains:
            break;
    }
    return label.find(wanted.text) != std::string::npos;
}

/// How often each command ran, and which run was the last.
struct RunCounts {
    explicit RunCounts(const Outline& outline) {
        for (const Run& run : runsOf(outline)) {
            runs[comparedText(run.command)] = run.instance;
            last = run.header;
        }
    }

    std::unordered_map<std::string, std::size_t> runs;
    ItemId last = 0;
};

/// An item that meets everything but the instances.
struct Candidate {
    SelectedItem item;
    ItemId run = 0;
};

class Selection : public OutlineVisitor {
  public:
    Selection(const Outline& outline, const ModifyGroup& group, std::vector<MissedItem>* missed)
        : group_(group), missed_(missed) {
        for (const CommandCriterion& each : group.commands) {
            commands_.push_back({comparedText(each.name), &each});
            needsRuns_ = needsRuns_ || each.run || each.last;
        }
        for (const std::string& each : group.subtypes) subtypes_.push_back(comparedText(each));
        for (const LabelCriterion& each : group.labels)
            labels_.push_back({comparedText(each.text), each.match});
        if (needsRuns_) runs_.emplace(outline);
    }

    bool enter(const WalkPlace& place) override {
        const SelectedType type = selectedBy[static_cast<std::size_t>(place.item().type())];
        if (!group_.types.includes(type)) return true;
        const SelectedItem item{place.node.id, place.number};
        if (const std::optional<SystemText> reason = reasonAgainst(place)) {
            if (missed_ != nullptr) missed_->push_back({item, *reason});
        } else {
            candidates_.push_back({item, place.run == nullptr ? 0 : place.run->header});
        }
        return true;
    }

    [[nodiscard]] std::vector<SelectedItem> take() {
        if (!group_.instances.empty()) return instances();
        std::vector<SelectedItem> items;
        items.reserve(candidates_.size());
        for (const Candidate& each : candidates_) items.push_back(each.item);
        return items;
    }

  private:
    /// The criterion that an item does not meet; instances apart.
    [[nodiscard]] std::optional<SystemText> reasonAgainst(const WalkPlace& place) const {
        // Views of models are selected by their own types, but not by `all`.
        if (group_.types.all && place.model != nullptr) return "It is a view of a model."_text;
        if (group_.visibleOnly && place.hidden) return "It is hidden."_text;
        if (!meetsCommand(place)) return "It is of another command, or of another run."_text;
        if (!meetsSubtype(place.item())) return "It has another subtype."_text;
        if (!meetsLabel(place.item())) return "It has another label."_text;
        return std::nullopt;
    }

    [[nodiscard]] bool meetsCommand(const WalkPlace& place) const {
        if (commands_.empty()) return true;
        const std::string command = comparedText(place.command());
        return std::any_of(commands_.begin(), commands_.end(), [&](const ComparedCommand& wanted) {
            if (wanted.name.empty()) {
                return wanted.criterion->last && place.run != nullptr && place.run->header == runs_->last;
            }
            return command == wanted.name && meetsRun(place, wanted);
        });
    }

    [[nodiscard]] bool meetsRun(const WalkPlace& place, const ComparedCommand& wanted) const {
        const CommandCriterion& criterion = *wanted.criterion;
        if (!criterion.run && !criterion.last) return true;
        if (place.run == nullptr || comparedText(place.run->command) != wanted.name) return false;
        if (criterion.run) return place.run->instance == static_cast<std::size_t>(*criterion.run);
        const auto found = runs_->runs.find(wanted.name);
        return found != runs_->runs.end() && place.run->instance == found->second;
    }

    [[nodiscard]] bool meetsSubtype(const Item& item) const {
        return subtypes_.empty() ||
               std::find(subtypes_.begin(), subtypes_.end(), comparedText(item.subtype)) != subtypes_.end();
    }

    [[nodiscard]] bool meetsLabel(const Item& item) const {
        if (labels_.empty()) return true;
        const std::string label = comparedText(shownLabel(item));
        return std::any_of(labels_.begin(), labels_.end(),
                           [&](const ComparedLabel& wanted) { return matches(label, wanted); });
    }

    /// The n-th or last candidates: of each run where a command is asked for, else of the document.
    [[nodiscard]] std::vector<SelectedItem> instances() {
        std::unordered_map<ItemId, std::size_t> counts;
        for (const Candidate& each : candidates_) ++counts[countedIn(each)];
        std::unordered_map<ItemId, std::size_t> seen;
        std::vector<SelectedItem> items;
        for (const Candidate& each : candidates_) {
            const std::size_t number = ++seen[countedIn(each)];
            const bool isLast = number == counts[countedIn(each)];
            const bool wanted = std::any_of(
                group_.instances.begin(), group_.instances.end(), [&](const InstanceCriterion& instance) {
                    return instance.isLast() ? isLast : number == static_cast<std::size_t>(*instance.number);
                });
            if (wanted) {
                items.push_back(each.item);
            } else if (missed_ != nullptr) {
                missed_->push_back({each.item, "It is another instance."_text});
            }
        }
        return items;
    }

    [[nodiscard]] ItemId countedIn(const Candidate& candidate) const {
        return commands_.empty() ? 0 : candidate.run;
    }

    const ModifyGroup& group_;
    std::vector<MissedItem>* missed_;
    std::vector<ComparedCommand> commands_;
    std::vector<std::string> subtypes_;
    std::vector<ComparedLabel> labels_;
    bool needsRuns_ = false;
    std::optional<RunCounts> runs_;
    std::vector<Candidate> candidates_;
};

}  // namespace

std::vector<SelectedItem> selectItems(const Outline& outline, const ModifyGroup& group,
                                      std::vector<MissedItem>* missed) {
    Selection selection(outline, group, missed);
    walk(outline, selection);
    return selection.take();
}

}  // namespace vexa::frontend
