// The documents that are open, in the order in which they were opened, and which of them is active.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frontend/document/viewer_document.h"

namespace vexa::frontend {

class OpenDocuments {
  public:
    /// In opening order; owned here.
    [[nodiscard]] const std::vector<std::unique_ptr<ViewerDocument>>& all() const { return documents_; }
    /// The active document, or null when none is open.
    [[nodiscard]] ViewerDocument* active() const;
    /// How often a document has become active; tells one activation from the next.
    [[nodiscard]] std::uint64_t activations() const { return activations_; }
    /// The document of that name (UTF-8, without regard to case), or null; an empty name is nobody's.
    [[nodiscard]] ViewerDocument* find(std::string_view name) const;
    /// The document that has that file, or null; an empty one is nobody's.
    [[nodiscard]] ViewerDocument* findByFile(const std::string& file) const;

    /// Takes a document and makes it active. Its name and file must be nobody else's.
    ViewerDocument& add(std::unique_ptr<ViewerDocument> document);
    /// Changes the name of an open document that is not locked; it must be nobody else's.
    void rename(ViewerDocument& document, std::string name);
    /// Changes the file of an open document; it must be nobody else's.
    void setFile(ViewerDocument& document, std::string file);
    /// Makes an open document active.
    void activate(const ViewerDocument& document);
    /// Closes an open document; of those left, the one that was active most recently becomes active.
    void close(const ViewerDocument& document);
    void closeAll();

  private:
    void enter(ViewerDocument& document);
    void leave(const ViewerDocument& document);

    std::vector<std::unique_ptr<ViewerDocument>> documents_;
    std::vector<ViewerDocument*> activationOrder_;  // the active one last
    std::unordered_map<std::string, ViewerDocument*> byName_;
    std::unordered_map<std::string, ViewerDocument*> byFile_;
    std::uint64_t activations_ = 0;
};

/// Whether two names (UTF-8) are the same without regard to case.
[[nodiscard]] bool isSameName(std::string_view left, std::string_view right);

}  // namespace vexa::frontend
