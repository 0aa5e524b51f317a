#include "frontend/import/label_tree.h"

#include <algorithm>
#include <utility>

namespace vexa::frontend {

namespace {

using tables::GroupId;

/// The groups that are open at the line before.
struct OpenGroup {
    std::size_t span = 0;
    GroupId id = tables::noGroup;
};

}  // namespace

void spanRepetitions(LabelLines& lines) {
    std::size_t spans = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        bool sameOuter = i > 0;
        for (std::size_t level = 0; level + 1 < lines[i].size(); ++level) {
            SpannedLabel& label = lines[i][level];
            const SpannedLabel* const before = i > 0 ? &lines[i - 1][level] : nullptr;
            const bool repeats = sameOuter && (label.text.empty() || label.text == before->text);
            if (repeats) {
                label = *before;
            } else {
                label.span = ++spans;
            }
            sameOuter = repeats;
        }
    }
}

tables::TableDimension makeDimension(std::string label, const LabelLines& lines) {
    tables::TableDimension dimension;
    dimension.label = std::move(label);
    std::vector<OpenGroup> open;
    for (const std::vector<SpannedLabel>& line : lines) {
        const SpannedLabel& innermost = line.back();
        GroupId parent = tables::noGroup;
        std::size_t depth = 0;
        for (std::size_t level = 0; level + 1 < line.size(); ++level) {
            const SpannedLabel& each = line[level];
            const bool isCategory = each.span != 0 && each.span == innermost.span;
            const bool isAgain = level > 0 && each.span != 0 && each.span == line[level - 1].span;
            if (each.text.empty() || isCategory || isAgain) continue;
            const bool isOpen = depth < open.size() && each.span != 0 && open[depth].span == each.span;
            if (!isOpen) {
                open.resize(depth);
                open.push_back({each.span, static_cast<GroupId>(dimension.groups.size())});
                dimension.groups.push_back({each.text, parent});
            }
            parent = open[depth].id;
            ++depth;
        }
        open.resize(depth);
        tables::TableCategory& category = dimension.categories.emplace_back();
        category.label = innermost.text;
        category.group = parent;
    }
    return dimension;
}

}  // namespace vexa::frontend
