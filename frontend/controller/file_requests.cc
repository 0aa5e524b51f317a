// The requests that read and write files, one function each.

#include <memory>
#include <utility>

#include "backend/platform/file_system.h"
#include "backend/platform/kept_file.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "frontend/controller/embedded_controller.h"
#include "frontend/controller/log_messages.h"
#include "frontend/controller/messages.h"
#include "frontend/controller/store_messages.h"
#include "frontend/store/document_file.h"
#include "frontend/store/password.h"

namespace vexa::frontend {
namespace {

/// What opens a document stays in memory no longer than it is needed.
class WipedAtEnd {
  public:
    explicit WipedAtEnd(std::string& secret) : secret_(secret) {}
    WipedAtEnd(const WipedAtEnd&) = delete;
    WipedAtEnd& operator=(const WipedAtEnd&) = delete;
    WipedAtEnd(WipedAtEnd&&) = delete;
    WipedAtEnd& operator=(WipedAtEnd&&) = delete;
    ~WipedAtEnd() { wipe(secret_); }

  private:
    std::string& secret_;
};

/// The path that a request names, in the form that the user can hand to other programs.
std::string shownFile(const VexawMsgOutputControllerRequest& request) {
    return toNativePath(toUtf8(request.second()));
}

/// The file that a request names, so that two paths of it are one.
std::string fileOf(const VexawMsgOutputControllerRequest& request) {
    return FileSystem::current().canonicalPath(shownFile(request));
}

DocumentFileType typeOf(OutputDocumentType type, std::string_view file) {
    if (type == OutputDocumentType::notGiven) {
        constexpr std::string_view extension = ".vxw";
        const bool isReader = file.size() > extension.size() &&
                              isSameName(file.substr(file.size() - extension.size()), extension);
        return isReader ? DocumentFileType::reader : DocumentFileType::document;
    }
    return type == OutputDocumentType::vxw ? DocumentFileType::reader : DocumentFileType::document;
}

/// The encrypted form of the password that a save asks for; empty for none.
StoreResult readPasswordForm(const VexawMsgOutputControllerRequest& request, std::string& form) {
    std::string password = toUtf8(request.password());
    if (request.encrypted() != OutputDocumentEncryptPW::yes) {
        form = password.empty() ? std::string() : encryptedPassword(password);
        const bool made = password.empty() == form.empty();
        wipe(password);
        return made ? StoreResult() : StoreProblem::noMemory;
    }
    form = std::move(password);
    return isEncryptedPassword(form) ? StoreResult() : StoreProblem::passwordForm;
}

void warnOfReplaced(const ReplacedFile& replaced, const std::string& file) {
    if (replaced.lostRights) say(warningLevel, messages::otherRights, {userText(file)});
    if (replaced.staysElsewhere) say(warningLevel, messages::otherNames, {userText(file)});
}

/// What the document knows of its own file, when that is the one that was saved.
void rememberSaved(ViewerDocument& document, const std::string& file, bool isProtected) {
    if (document.file() != file) return;
    document.setFileProtected(isProtected);
    document.setNeededPassword(isProtected && document.neededPassword());
    rememberFile(document, file);
}

bool markAfterSave(OutputDocumentLock wish, const ViewerDocument& document) {
    return wish == OutputDocumentLock::notGiven ? document.lock().document : wish == OutputDocumentLock::yes;
}

}  // namespace

bool EmbeddedController::checkFile(const Request& request, const ViewerDocument* except,
                                   Response& response) const {
    if (request.second().empty()) {
        return refuse(response, messages::fileMissing);
    }
    const std::string file = fileOf(request);
    const ViewerDocument* const holder = documents_.findByFile(file);
    if (holder == nullptr || holder == except) {
        return true;
    }
    const std::string& name = holder->name();
    return refuse(
        response, messages::fileOpenAlready,
        composed(name.empty() ? messages::openUnnamed : messages::openAs, {shownFile(request), name}));
}

bool EmbeddedController::open(const Request& request, Response& response) {
    std::string name = toUtf8(request.first());
    if (!checkNewName(name, nullptr, response) || !checkFile(request, nullptr, response)) {
        return false;
    }
    const std::string file = fileOf(request);
    std::unique_ptr<ViewerDocument> document;
    if (const StoreResult result = openDocument(file, toUtf8(request.password()), document); !result) {
        const StoreMessage message = describe(result, shownFile(request));
        return refuse(response, message.text, message.argument);
    }
    // A name out of the file that another document has by now is given up, rather than the document.
    Response ignored;
    if (name.empty() && checkNewName(document->name(), nullptr, ignored)) {
        name = document->name();
    }
    const DocumentLock lock{document->lock().document,
                            request.lock() == OutputDocumentLock::yes ? file : std::string()};
    document->setLock({});
    document->setName(std::move(name));
    document->setModified(false);
    document->setLock(lock);
    document->setFile(file);
    document->setMinimized(request.minimized() == OutputDocumentMinimized::yes);
    if (!request.password().empty() && !document->isFileProtected()) {
        say(warningLevel, messages::notProtected, {userText(shownFile(request))});
    }
    documents_.add(std::move(document));
    return true;
}

// Once is enough: who repeats the command means it.
bool EmbeddedController::checkUnchanged(const Request& request, ViewerDocument& document,
                                        Response& response) {
    const std::string file = fileOf(request);
    if (document.file() != file) return true;
    const std::optional<LocalTime> changed = changedByOthers(document, file);
    if (!changed) return true;
    rememberFile(document, file);
    return refuse(response, messages::fileChanged,
                  composed(messages::withDetails, {shownFile(request), shownTime(*changed)}));
}

bool EmbeddedController::save(const Request& request, Response& response) {
    const std::string name = toUtf8(request.first());
    ViewerDocument* document = documentNamed(name.empty() ? "*" : name, response);
    if (document == nullptr || !checkFile(request, document, response)) {
        return false;
    }
    const std::string file = fileOf(request);
    if (document->lock().file == file && request.lock() != OutputDocumentLock::no) {
        return refuse(response, messages::fileLocked, shownFile(request));
    }
    ReplacedFile replaced;
    SaveOptions options;
    options.type = typeOf(request.type(), shownFile(request));
    options.locked = markAfterSave(request.lock(), *document);
    options.dataModel = request.yesNo() == YesNoEnum::yes;
    StoreResult result = readPasswordForm(request, options.passwordForm);
    const WipedAtEnd wiped(options.passwordForm);
    if (result && (isKept(file) || isForeignFile(file))) {
        return refuse(response, isKept(file) ? messages::fileIsTrace : messages::foreignFile,
                      shownFile(request));
    }
    if (result && !checkUnchanged(request, *document, response)) return false;
    if (result && carrying_ == Carrying::dryRun) {
        say(noteLevel, messages::drySave, {userText(shownName(*document)), userText(shownFile(request))});
        return true;
    }
    if (result) {
        result = saveDocument(*document, file, options, &replaced);
    }
    if (!result) {
        const StoreMessage message = describe(result, shownFile(request));
        return refuse(response, message.text, message.argument);
    }
    warnOfReplaced(replaced, shownFile(request));
    const bool isProtected = !options.passwordForm.empty();
    if (!isProtected) warnOfOpenFile(request, *document, file);
    follow(*document, options, request.lock(), file);
    rememberSaved(*document, file, isProtected);
    return true;
}

// The file was written without protection. Who protects one copy and not another in one go knows it.
void EmbeddedController::warnOfOpenFile(const Request& request, const ViewerDocument& document,
                                        const std::string& file) {
    const bool isReplaced = document.file() == file && document.isFileProtected();
    if (document.neededPassword() || isReplaced) {
        say(warningLevel, messages::standsOpen, {userText(shownFile(request))});
    }
}

// What a save to `file` means for the open document. Only a file that holds all of it becomes its file; a
// reader's copy matters only where it is the document's file already.
void EmbeddedController::follow(ViewerDocument& document, const SaveOptions& options, OutputDocumentLock wish,
                                const std::string& file) {
    const bool isWhole = options.type == DocumentFileType::document;
    DocumentLock lock = document.lock();
    // Over its own file a save only comes this far with LOCK=NO, which ends the protection for good.
    if (lock.file == file) {
        lock.file.clear();
    }
    if (wish != OutputDocumentLock::notGiven && (isWhole || document.file() == file)) {
        lock.document = wish == OutputDocumentLock::yes;
    }
    if (isWhole && options.dataModel) {
        documents_.setFile(document, file);
        document.setModified(false);
    }
    document.setLock(std::move(lock));
}

}  // namespace vexa::frontend
