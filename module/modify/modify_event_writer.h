// The element of one selection group in the request: modifyEvent.
#pragma once

#include <string>

namespace vexa {

/// Writes the tags of the element; who holds it appends attributes while the start tag is open, and children
/// behind it.
class ModifyEventWriter {
  public:
    /// Appends the beginning of the start tag to `request`, which must outlive the writer.
    explicit ModifyEventWriter(std::string& request);

    /// Closes the start tag unless that has been done.
    void closeStartTag();
    /// Appends the end tag, behind the closed start tag.
    void finish();

  private:
    std::string& request_;
    bool startTagOpen_ = true;
};

}  // namespace vexa
