#include "frontend/export/pdf/bookmarks.h"

#include <algorithm>
#include <utility>

namespace vexa::frontend::pdf {

namespace {

constexpr std::size_t none = SIZE_MAX;

/// The neighbours of a bookmark; the root is the last one of the list.
struct Relations {
    std::size_t parent = none;
    std::size_t previous = none;
    std::size_t next = none;
    std::size_t first = none;
    std::size_t last = none;
    std::size_t children = 0;
};

void link(std::vector<Relations>& all, std::size_t index, std::size_t parent) {
    Relations& one = all[index];
    Relations& over = all[parent];
    one.parent = parent;
    one.previous = over.last;
    if (over.last != none) all[over.last].next = index;
    if (over.first == none) over.first = index;
    over.last = index;
    ++over.children;
}

/// One line, as readers show it.
std::string titleOf(std::string title) {
    std::replace_if(
        title.begin(), title.end(), [](char each) { return each >= 0 && each < ' '; }, ' ');
    return title;
}

}  // namespace

void Bookmarks::add(const std::string& title, std::size_t depth, std::string destination) {
    bookmarks_.push_back({titleOf(title), depth, std::move(destination)});
}

PdfObject Bookmarks::write(PdfFile& file) const {
    if (bookmarks_.empty()) return 0;
    const std::size_t root = bookmarks_.size();
    std::vector<Relations> relations(root + 1);
    std::vector<std::size_t> open;  // from the outermost to the last one
    std::vector<PdfObject> numbers;
    for (std::size_t i = 0; i < root; ++i) {
        while (!open.empty() && bookmarks_[open.back()].depth >= bookmarks_[i].depth) open.pop_back();
        link(relations, i, open.empty() ? root : open.back());
        open.push_back(i);
        numbers.push_back(file.reserve());
    }
    numbers.push_back(file.reserve());
    const auto entry = [&numbers](std::string& body, const char* key, std::size_t index) {
        if (index == none) return;
        body += key;
        appendReference(body, numbers[index]);
    };
    for (std::size_t i = 0; i <= root; ++i) {
        const Relations& each = relations[i];
        std::string body = "<<";
        if (i == root) body += "/Type/Outlines";
        if (i != root) {
            body += "/Title";
            appendTextString(body, bookmarks_[i].title);
            body += "/Dest" + bookmarks_[i].destination;
        }
        entry(body, "/Parent ", each.parent);
        entry(body, "/Prev ", each.previous);
        entry(body, "/Next ", each.next);
        entry(body, "/First ", each.first);
        entry(body, "/Last ", each.last);
        // Those below a bookmark are folded away until they are asked for, those on the top level are not.
        if (each.children > 0) body += (i == root ? "/Count " : "/Count -") + std::to_string(each.children);
        file.write(numbers[i], body + ">>");
    }
    return numbers[root];
}

}  // namespace vexa::frontend::pdf
