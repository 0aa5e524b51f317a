// The whole request of a modification: the envelope and the walk of the selection groups.
#pragma once

#include <string>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/parser_message.h"
#include "module/modify/modify_spec.h"

namespace vexa {

/// The element of one selection group, modifyEvent: its tags. Who holds the writer appends attributes while
/// the start tag is open, and children behind it.
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

/// What the request says of itself.
struct ModifyEnvelope {
    std::string documentName = "*";  ///< escaped, in the back end's character set
    bool debug = false;
};

class ModifyRequestBuilder {
  public:
    /// Appends the start of the envelope to `request`. Everything referred to must outlive the builder.
    ModifyRequestBuilder(std::string& request, const ModifyEnvelope& envelope, const ModifySpec& handlers,
                         const CommandSpec& command, ParserMessage& messages);

    /// Appends the elements of the groups, in the order written, and the end of the envelope. False when a
    /// value was refused: the request is then well closed, for those who want to look at it, but must not be
    /// sent.
    ///
    /// From the first refused value on, the groups have only what SELECT says of them.
    [[nodiscard]] bool close();

  private:
    void addGroup(const GroupComObj& group);
    void addSelection(const GroupComObj& group, ModifyEventWriter& event);
    void addSubcommand(ModifyHandler* handler, const GroupComObj& group, ModifyEventWriter& event);
    [[nodiscard]] bool readInto(ModifyHandler* handler, const GroupComObj& group);

    std::string& request_;
    const ModifySpec& handlers_;
    const CommandSpec& command_;
    ParserMessage& messages_;
    bool failed_ = false;  // never taken back
};

}  // namespace vexa
