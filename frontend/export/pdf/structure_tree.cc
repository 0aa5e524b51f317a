#include "frontend/export/pdf/structure_tree.h"

#include <algorithm>

namespace vexa::frontend::pdf {

namespace {

constexpr std::size_t entriesOfLeaf = 128;

/// Names of equal length in the order in which they are given, as trees of names want them.
std::string nameOf(std::uint32_t number) {
    constexpr std::string_view digits = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::string name(6, '0');
    for (std::size_t i = name.size(); number > 0 && i > 0; number /= 36) name[--i] = digits[number % 36];
    return "h" + name;
}

}  // namespace

StructureTree::StructureTree(PdfFile& file) : file_(file), root_(file.reserve()) {
    document_.number = file_.reserve();
    document_.parent = root_;
    document_.type = "Document";
}

StructureElement StructureTree::open(std::string_view type, StructureElement& parent) {
    StructureElement element;
    element.number = file_.reserve();
    element.parent = parent.number;
    element.type = type;
    std::string kid;
    appendReference(kid, element.number);
    addKid(parent, kid);
    return element;
}

void StructureTree::addKid(StructureElement& element, std::string_view kid) {
    if (element.kidCount++ > 0) element.kids += ' ';
    element.kids += kid;
}

std::string StructureTree::nameElement(StructureElement& element) {
    std::string name = nameOf(names_++);
    element.attributes += "/ID(" + name + ")";
    addName(name, element.number);
    return name;
}

void StructureTree::addName(const std::string& name, PdfObject element) {
    if (leafSize_ == 0) firstName_ = name;
    lastName_ = name;
    leaf_ += "(" + name + ")";
    appendReference(leaf_, element);
    leaf_ += ' ';
    if (++leafSize_ == entriesOfLeaf) flushNames();
}

void StructureTree::flushNames() {
    if (leafSize_ == 0) return;
    const PdfObject leaf =
        file_.add("<</Limits[(" + firstName_ + ")(" + lastName_ + ")]/Names[" + leaf_ + "]>>");
    appendReference(leaves_, leaf);
    leaves_ += ' ';
    leaf_.clear();
    leafSize_ = 0;
}

void StructureTree::close(StructureElement& element) {
    std::string& body = body_;
    body = "<</S/";
    body += element.type;
    body += "/P ";
    appendReference(body, element.parent);
    body += element.attributes;
    if (element.page != 0) {
        body += "/Pg ";
        appendReference(body, element.page);
    }
    if (element.kidCount > 0) {
        body += element.kidCount == 1 ? "/K " : "/K[";
        body += element.kids;
        if (element.kidCount > 1) body += ']';
    }
    body += ">>";
    file_.write(element.number, body);
}

void StructureTree::beginPage(TaggedPage& page, PdfObject number) {
    page.number = number;
    page.key = static_cast<std::uint32_t>(parents_.size());
    page.owners.clear();
    parents_.push_back(file_.reserve());
}

void StructureTree::endPage(TaggedPage& page) {
    std::string owners = "[";
    for (const PdfObject each : page.owners) {
        appendReference(owners, each);
        owners += ' ';
    }
    file_.write(parents_[page.key], owners + "]");
}

std::size_t StructureTree::addContent(StructureElement& element, TaggedPage& page) {
    const std::size_t number = page.owners.size();
    page.owners.push_back(element.number);
    if (element.page == 0) element.page = page.number;
    if (element.page == page.number) {
        addKid(element, std::to_string(number));
    } else {
        std::string kid = "<</Type/MCR/Pg ";
        appendReference(kid, page.number);
        addKid(element, kid + "/MCID " + std::to_string(number) + ">>");
    }
    return number;
}

std::uint32_t StructureTree::addAnnotation(StructureElement& element, PdfObject annotation,
                                           const TaggedPage& page) {
    std::string kid = "<</Type/OBJR/Obj ";
    appendReference(kid, annotation);
    kid += "/Pg ";
    appendReference(kid, page.number);
    addKid(element, kid + ">>");
    parents_.push_back(element.number);
    return static_cast<std::uint32_t>(parents_.size() - 1);
}

PdfObject StructureTree::writeParents() {
    std::string leaves;
    for (std::size_t begin = 0; begin < parents_.size(); begin += entriesOfLeaf) {
        const std::size_t end = std::min(parents_.size(), begin + entriesOfLeaf);
        std::string leaf = "<</Limits[" + std::to_string(begin) + " " + std::to_string(end - 1) + "]/Nums[";
        for (std::size_t key = begin; key < end; ++key) {
            leaf += std::to_string(key) + " ";
            appendReference(leaf, parents_[key]);
            leaf += ' ';
        }
        appendReference(leaves, file_.add(leaf + "]>>"));
        leaves += ' ';
    }
    return file_.add(leaves.empty() ? "<</Nums[]>>" : "<</Kids[" + leaves + "]>>");
}

PdfObject StructureTree::finish() {
    close(document_);
    flushNames();
    std::string root = "<</Type/StructTreeRoot/K ";
    appendReference(root, document_.number);
    root += "/ParentTree ";
    appendReference(root, writeParents());
    root += "/ParentTreeNextKey " + std::to_string(parents_.size());
    if (!leaves_.empty()) root += "/IDTree<</Kids[" + leaves_ + "]>>";
    file_.write(root_, root + ">>");
    return root_;
}

}  // namespace vexa::frontend::pdf
