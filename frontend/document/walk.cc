#include "frontend/document/walk.h"

#include <deque>
#include <unordered_map>

#include "frontend/document/compared_text.h"

namespace vexa::frontend {
namespace {

class Walker {
  public:
    Walker(const Outline& outline, OutlineVisitor& visitor) : outline_(outline), visitor_(visitor) {}

    void walk() {
        for (const ItemId root : outline_.roots()) {
            enter(*outline_.find(root), nullptr, 0);
            while (!open_.empty()) step();
        }
    }

  private:
    /// An item that was entered, and how far what stands under it has been walked.
    struct Open {
        WalkPlace place;
        std::size_t next = 0;
        bool descends = true;
        bool silent = false;  // under an item that is passed over: counted, but not visited
    };

    void step() {
        Open& top = open_.back();
        const std::vector<ItemId>& children = top.place.node.children;
        if (top.next < children.size()) {
            const std::size_t index = top.next++;
            enter(*outline_.find(children[index]), &top, index);
            return;
        }
        if (!top.silent) visitor_.leave(top.place);
        if (top.place.run != nullptr && top.place.run->header == top.place.node.id) runs_.pop_back();
        open_.pop_back();
    }

    // References into a deque hold while elements are added and taken away at its end.
    void enter(const OutlineNode& node, const Open* above, std::size_t index) {
        Open& entered = open_.emplace_back(Open{WalkPlace{node}});
        WalkPlace& place = entered.place;
        place.number = ++number_;
        place.hidden = !node.item.visible;
        if (above != nullptr) {
            place.depth = above->place.depth + 1;
            place.hidden = place.hidden || above->place.hidden;
            place.run = above->place.run;
            const bool isView = above->place.item().type() == ItemType::model;
            place.model = isView ? &above->place.node : above->place.model;
            place.view = isView ? index : above->place.view;
        }
        if (node.item.type() == ItemType::header && !node.item.command.empty()) place.run = &begin(node);
        entered.silent = above != nullptr && !above->descends;
        entered.descends = !entered.silent && visitor_.enter(place);
    }

    const Run& begin(const OutlineNode& header) {
        const std::size_t instance = ++instances_[comparedText(header.item.command)];
        return runs_.emplace_back(Run{header.id, header.item.command, header.item.label, instance});
    }

    const Outline& outline_;
    OutlineVisitor& visitor_;
    std::deque<Open> open_;
    std::deque<Run> runs_;  // those around the place, innermost last
    std::unordered_map<std::string, std::size_t> instances_;
    std::size_t number_ = 0;
};

class RunCollector : public OutlineVisitor {
  public:
    bool enter(const WalkPlace& place) override {
        if (place.run != nullptr && place.run->header == place.node.id) runs.push_back(*place.run);
        return true;
    }

    std::vector<Run> runs;
};

}  // namespace

std::vector<Run> runsOf(const Outline& outline) {
    RunCollector collector;
    walk(outline, collector);
    return std::move(collector.runs);
}

const std::string& WalkPlace::command() const {
    return item().command.empty() && run != nullptr ? run->command : item().command;
}

bool WalkPlace::isOtherView() const {
    return model != nullptr && std::get<ModelContent>(model->item.content).shown != view;
}

void walk(const Outline& outline, OutlineVisitor& visitor) { Walker(outline, visitor).walk(); }

}  // namespace vexa::frontend
