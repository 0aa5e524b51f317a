// The messages between a document command and the output controller: plain values.
//
// Texts are in the back end's character set. Whoever sends a request keeps its texts alive until `Send`
// returns.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexa {

/// The utility library's text. It stands wherever a plain text does, so it converts both ways by itself.
class VUString {
  public:
    VUString() = default;
    // NOLINTBEGIN(google-explicit-constructor): conversions are what this type is for
    VUString(std::string text) : text_(std::move(text)) {}
    VUString(const char* text) : text_(text) {}

    operator const char*() const { return text_.c_str(); }
    // NOLINTEND(google-explicit-constructor): as above
    [[nodiscard]] const std::string& str() const { return text_; }
    [[nodiscard]] bool empty() const { return text_.empty(); }

  private:
    std::string text_;
};

enum class OutputControllerCommand {
    activate = 0,
    close = 1,
    display = 2,
    name = 3,
    newDocument = 4,
    open = 5,
    save = 6
};

enum class OutputDocumentLock { no = 0, yes = 1, notGiven = 2 };
enum class OutputDocumentMinimized { no = 0, yes = 1, notGiven = 2 };
/// VXV is the viewer document, VXW the reader's copy.
enum class OutputDocumentType { vxv = 0, vxw = 1, notGiven = 2 };
enum class OutputDocumentEncryptPW { no = 0, yes = 1, notGiven = 2 };
enum class YesNoEnum { no = 0, yes = 1 };

/// Passed on unchanged as the level of the report.
using OutputErrorSeverity = int;

/// One request. The short form leaves everything after the minimised flag at its default.
class VexawMsgOutputControllerRequest {
  public:
    enum class Form { shortForm, longForm };

    VexawMsgOutputControllerRequest(int sequence, OutputControllerCommand command, const char* first,
                                    const char* second, OutputDocumentMinimized minimized);
    VexawMsgOutputControllerRequest(int sequence, OutputControllerCommand command, const char* first,
                                    const char* second, OutputDocumentLock lock,
                                    OutputDocumentMinimized minimized, OutputDocumentType type,
                                    const char* password, OutputDocumentEncryptPW encrypted, YesNoEnum yesNo);

    [[nodiscard]] Form form() const { return form_; }
    [[nodiscard]] int sequence() const { return sequence_; }
    [[nodiscard]] OutputControllerCommand command() const { return command_; }
    /// The document's name.
    [[nodiscard]] const std::string& first() const { return first_; }
    /// The file.
    [[nodiscard]] const std::string& second() const { return second_; }
    [[nodiscard]] OutputDocumentLock lock() const { return lock_; }
    [[nodiscard]] OutputDocumentMinimized minimized() const { return minimized_; }
    [[nodiscard]] OutputDocumentType type() const { return type_; }
    [[nodiscard]] const std::string& password() const { return password_; }
    [[nodiscard]] OutputDocumentEncryptPW encrypted() const { return encrypted_; }
    /// For a save: whether the tables' data model is stored.
    [[nodiscard]] YesNoEnum yesNo() const { return yesNo_; }

  private:
    Form form_;
    int sequence_;
    OutputControllerCommand command_;
    std::string first_;
    std::string second_;
    OutputDocumentLock lock_ = OutputDocumentLock::notGiven;
    OutputDocumentMinimized minimized_;
    OutputDocumentType type_ = OutputDocumentType::notGiven;
    std::string password_;
    OutputDocumentEncryptPW encrypted_ = OutputDocumentEncryptPW::notGiven;
    YesNoEnum yesNo_ = YesNoEnum::no;
};

/// One open document in an answer.
struct VexawMsgOutputDocument {
    VUString name;        ///< empty for a document without a name
    bool active = false;  ///< the active (designated) document
};

/// The answer to a request: made empty, filled by `OutputController::Send`.
class VexawMsgOutputControllerResponse {
  public:
    [[nodiscard]] OutputErrorSeverity GetErrorSeverity() const { return severity_; }
    [[nodiscard]] VUString GetMsgString() const { return message_; }
    [[nodiscard]] VUString GetArgumentString() const { return argument_; }
    [[nodiscard]] int GetOutputDocumentCount() const { return static_cast<int>(documents_.size()); }
    /// The document at `index`, or null when there is none. Owned by the response.
    [[nodiscard]] const VexawMsgOutputDocument* GetOutputDocumentItem(int index) const;

    void setError(OutputErrorSeverity severity, VUString message, VUString argument);
    void addDocument(VexawMsgOutputDocument document);

  private:
    OutputErrorSeverity severity_ = 0;
    VUString message_;
    VUString argument_;
    std::vector<VexawMsgOutputDocument> documents_;
};

}  // namespace vexa
