// A command that sends one request to the output controller: the frame, names of documents, sending.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "module/frame/command.h"

namespace vexa {

/// Longest document name, in bytes.
inline constexpr std::size_t kLongestName = 64;

/// Counts requests 1, 2, ... 2,000,000,000 and begins again at 1.
class RequestSequence {
  public:
    explicit RequestSequence(std::int32_t last = 0) : last_(last) {}

    /// The next number.
    std::int32_t next();

    /// The module's own counter, 0 when the module is loaded: the only state of the module that outlives a
    /// command. Commands run one at a time, so it takes no lock.
    static RequestSequence& ofModule();

  private:
    std::int32_t last_;
};

/// The frame of a command that asks for the output controller before it describes itself.
class DocumentCommand : public Command {
  public:
    DocumentCommand(const CommandIdentity& identity, GrammarTable grammar)
        : Command(identity, grammar, AsksFor::outputController) {}

    /// Reports a name of more than 64 bytes; true when it did.
    [[nodiscard]] static bool refusesLongName(std::string_view name);

    /// Sends a short request, its texts as they are. The answer, or nothing when the request was refused,
    /// which has then been reported.
    std::optional<VexawMsgOutputControllerResponse> send(OutputControllerCommand command,
                                                         const std::string& name,
                                                         OutputDocumentMinimized minimized);
    /// Sends a short request and ignores the answer.
    void sendUnanswered(OutputControllerCommand command, const std::string& name,
                        OutputDocumentMinimized minimized);

    /// What a long request carries besides its number and command.
    struct FileRequest {
        std::string name;
        std::string file;
        OutputDocumentLock lock = OutputDocumentLock::notGiven;
        OutputDocumentMinimized minimized = OutputDocumentMinimized::notGiven;
        OutputDocumentType type = OutputDocumentType::notGiven;
        std::string password;
        OutputDocumentEncryptPW encrypted = OutputDocumentEncryptPW::notGiven;
        YesNoEnum yesNo = YesNoEnum::no;
    };
    /// The same with a long request.
    std::optional<VexawMsgOutputControllerResponse> send(OutputControllerCommand command,
                                                         const FileRequest& request);

  private:
    std::optional<VexawMsgOutputControllerResponse> exchange(const VexawMsgOutputControllerRequest& request);
};

}  // namespace vexa
