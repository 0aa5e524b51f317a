// The viewer document: its state and its outline. A model and nothing else; who may change it when is for
// others to know, but a document that is locked itself takes no change.
#pragma once

#include <string>
#include <utility>

#include "frontend/document/outline.h"

namespace vexa::frontend {

/// What protects a document and its file from changes.
struct DocumentLock {
    bool document =
        false;         ///< the mark of OUTPUT SAVE LOCK=YES, kept in the file: the document takes no change
    std::string file;  ///< by the lock of OUTPUT OPEN: a save over this file is refused; empty for none

    bool operator==(const DocumentLock&) const = default;
};

class ViewerDocument {
  public:
    /// UTF-8; empty for a document without a name.
    [[nodiscard]] const std::string& name() const { return name_; }
    /// The file that it was opened from or last saved to as a whole, UTF-8; empty for none.
    [[nodiscard]] const std::string& file() const { return file_; }
    [[nodiscard]] const DocumentLock& lock() const { return lock_; }
    /// Whether the document itself is locked: it takes no change then.
    [[nodiscard]] bool isLocked() const { return lock_.document; }
    /// Changed since it was made, opened or last saved as a whole.
    [[nodiscard]] bool isModified() const { return modified_; }
    [[nodiscard]] bool isMinimized() const { return minimized_; }
    [[nodiscard]] const Outline& outline() const { return outline_; }
    /// Whether the file that it was opened from or last saved to opens with a password only.
    [[nodiscard]] bool isFileProtected() const { return fileProtected_; }
    /// Whether a password was needed to open it, and no save as a whole has done without one since.
    [[nodiscard]] bool neededPassword() const { return neededPassword_; }
    /// What the file was then (`FileState::content`), so that changes by others are noticed; empty when
    /// nobody could tell.
    [[nodiscard]] const std::string& fileContent() const { return fileContent_; }

    /// The following change what is saved. The document must not be locked.
    void setName(std::string name);
    /// Adds one item, see `Outline::add`.
    ItemId add(Item item, ItemId under = 0);
    /// One item for changing, see `Outline::change`.
    [[nodiscard]] Item& change(ItemId id);
    /// Lets a changed copy of the outline take its place: the way to change several things, or none when the
    /// last of them cannot be done.
    void edit(Outline outline);

    /// The following are allowed of a locked document too: they change no content.
    void setFile(std::string file) { file_ = std::move(file); }
    void setLock(DocumentLock lock) { lock_ = std::move(lock); }
    void setModified(bool modified) { modified_ = modified; }
    void setMinimized(bool minimized) { minimized_ = minimized; }
    void setFileProtected(bool isProtected) { fileProtected_ = isProtected; }
    void setNeededPassword(bool needed) { neededPassword_ = needed; }
    void setFileContent(std::string content) { fileContent_ = std::move(content); }

  private:
    std::string name_;
    std::string file_;
    DocumentLock lock_;
    bool modified_ = false;
    bool minimized_ = false;
    bool fileProtected_ = false;
    bool neededPassword_ = false;
    std::string fileContent_;
    Outline outline_;
};

}  // namespace vexa::frontend
