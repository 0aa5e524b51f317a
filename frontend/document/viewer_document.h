// The viewer document: its state and its outline. A model and nothing else; who may change it when is for
// others to know, but a locked document takes no change.
#pragma once

#include <string>
#include <vector>

#include "frontend/document/viewer_item.h"

namespace vexa::frontend {
// Set apart from the types of the same names in item.h until everything uses those.
inline namespace former {

/// How a document came to be locked. The mark is kept in the document's file; read-only ends when it is
/// closed.
struct DocumentLock {
    bool marked = false;
    bool readOnly = false;

    bool operator==(const DocumentLock&) const = default;
};

class ViewerDocument {
  public:
    /// UTF-8; empty for a document without a name.
    [[nodiscard]] const std::string& name() const { return name_; }
    /// The file that it was opened from or last saved to as a whole, UTF-8; empty for none.
    [[nodiscard]] const std::string& file() const { return file_; }
    [[nodiscard]] const DocumentLock& lock() const { return lock_; }
    [[nodiscard]] bool isLocked() const { return lock_.marked || lock_.readOnly; }
    /// Changed since it was made, opened or last saved as a whole.
    [[nodiscard]] bool isModified() const { return modified_; }
    [[nodiscard]] bool isMinimised() const { return minimised_; }
    /// The outline's top level.
    [[nodiscard]] const std::vector<ViewerItem>& items() const { return items_; }
    /// The item, or null. The pointer lives until an item is added or removed.
    [[nodiscard]] const ViewerItem* find(ItemId id) const;

    /// The following change what is saved. The document must not be locked.
    void setName(std::string name);
    /// Adds an item at the end of the heading `under`, or of the top level when `under` is 0 or names no
    /// heading of this document. The item and what stands under it get ids; the item's own is given back.
    ItemId add(ViewerItem item, ItemId under = 0);
    /// The item for changing, or null; the document then counts as modified.
    [[nodiscard]] ViewerItem* change(ItemId id);

    /// The following are allowed of a locked document too: they change no content.
    void setFile(std::string file) { file_ = std::move(file); }
    void setLock(DocumentLock lock) { lock_ = lock; }
    void setModified(bool modified) { modified_ = modified; }
    void setMinimised(bool minimised) { minimised_ = minimised; }

  private:
    void giveIds(ViewerItem& item);

    std::string name_;
    std::string file_;
    DocumentLock lock_;
    bool modified_ = false;
    bool minimised_ = false;
    std::vector<ViewerItem> items_;
    ItemId lastId_ = 0;
};

}  // namespace former
}  // namespace vexa::frontend
