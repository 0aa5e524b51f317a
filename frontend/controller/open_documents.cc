#include "frontend/controller/open_documents.h"

#include <algorithm>
#include <utility>

#include "backend/text/character_set.h"
#include "frontend/document/compared_text.h"

namespace vexa::frontend {
namespace {

// Names are written and read in the back end's character set, so what it cannot tell apart is the same.
std::string keyOf(std::string_view name) { return comparedText(toUtf8(fromUtf8(name))); }

}  // namespace

bool isSameName(std::string_view left, std::string_view right) {
    return left == right || keyOf(left) == keyOf(right);
}

ViewerDocument* OpenDocuments::active() const {
    return activationOrder_.empty() ? nullptr : activationOrder_.back();
}

ViewerDocument* OpenDocuments::find(std::string_view name) const {
    const auto found = name.empty() ? byName_.end() : byName_.find(keyOf(name));
    return found == byName_.end() ? nullptr : found->second;
}

ViewerDocument* OpenDocuments::findByFile(const std::string& file) const {
    const auto found = file.empty() ? byFile_.end() : byFile_.find(file);
    return found == byFile_.end() ? nullptr : found->second;
}

void OpenDocuments::enter(ViewerDocument& document) {
    if (!document.name().empty()) byName_[keyOf(document.name())] = &document;
    if (!document.file().empty()) byFile_[document.file()] = &document;
}

void OpenDocuments::leave(const ViewerDocument& document) {
    if (!document.name().empty()) byName_.erase(keyOf(document.name()));
    if (!document.file().empty()) byFile_.erase(document.file());
}

ViewerDocument& OpenDocuments::add(std::unique_ptr<ViewerDocument> document) {
    ViewerDocument& added = *documents_.emplace_back(std::move(document));
    enter(added);
    activationOrder_.push_back(&added);
    ++activations_;
    return added;
}

void OpenDocuments::rename(ViewerDocument& document, std::string name) {
    leave(document);
    document.setName(std::move(name));
    enter(document);
}

void OpenDocuments::setFile(ViewerDocument& document, std::string file) {
    leave(document);
    document.setFile(std::move(file));
    enter(document);
}

void OpenDocuments::activate(const ViewerDocument& document) {
    const auto place = std::find(activationOrder_.begin(), activationOrder_.end(), &document);
    std::rotate(place, place + 1, activationOrder_.end());
    ++activations_;
}

void OpenDocuments::close(const ViewerDocument& document) {
    activations_ += &document == active() ? 1U : 0U;
    leave(document);
    std::erase(activationOrder_, &document);
    std::erase_if(documents_, [&](const auto& other) { return other.get() == &document; });
}

void OpenDocuments::closeAll() {
    byName_.clear();
    byFile_.clear();
    activationOrder_.clear();
    documents_.clear();
    ++activations_;
}

}  // namespace vexa::frontend
