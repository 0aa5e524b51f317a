#include "frontend/controller/open_documents.h"

#include <algorithm>
#include <utility>

#include "backend/text/character_set.h"

namespace vexa::frontend {

// Case is a matter of the back end's character set, which is where names are written and read.
bool isSameName(std::string_view left, std::string_view right) {
    return left == right || equalsIgnoringCase(fromUtf8(left), fromUtf8(right));
}

ViewerDocument* OpenDocuments::active() const {
    return activationOrder_.empty() ? nullptr : activationOrder_.back();
}

ViewerDocument* OpenDocuments::find(std::string_view name) const {
    const auto found = std::find_if(documents_.begin(), documents_.end(), [name](const auto& document) {
        return !document->name().empty() && isSameName(document->name(), name);
    });
    return found == documents_.end() ? nullptr : found->get();
}

ViewerDocument& OpenDocuments::add(std::unique_ptr<ViewerDocument> document) {
    ViewerDocument& added = *documents_.emplace_back(std::move(document));
    activationOrder_.push_back(&added);
    ++activations_;
    return added;
}

void OpenDocuments::activate(const ViewerDocument& document) {
    const auto place = std::find(activationOrder_.begin(), activationOrder_.end(), &document);
    std::rotate(place, place + 1, activationOrder_.end());
    ++activations_;
}

void OpenDocuments::close(const ViewerDocument& document) {
    activations_ += &document == active() ? 1U : 0U;
    std::erase(activationOrder_, &document);
    std::erase_if(documents_, [&](const auto& other) { return other.get() == &document; });
}

void OpenDocuments::closeAll() {
    activationOrder_.clear();
    documents_.clear();
    ++activations_;
}

}  // namespace vexa::frontend
