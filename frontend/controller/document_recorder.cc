#include "frontend/controller/document_recorder.h"

#include <memory>
#include <string_view>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/controller/embedded_controller.h"
#include "frontend/controller/log_messages.h"
#include "frontend/controller/messages.h"

namespace vexa::frontend {

DocumentRecorder::DocumentRecorder(OpenDocuments& documents, LockedReport reportLocked, Recording recording)
    : documents_(documents), reportLocked_(std::move(reportLocked)), recording_(recording) {}

void DocumentRecorder::receive(const LogEvent& event) {
    std::visit([this](const auto& kind) { handle(kind); }, event);
}

void DocumentRecorder::handle(const CommandStarted& event) { commands_.push_back(event.name); }

void DocumentRecorder::handle(const CommandFinished& /*event*/) {
    if (!commands_.empty()) commands_.pop_back();
}

void DocumentRecorder::handle(const ProcedureBegan& event) {
    runs_.push_back(OpenRun{translated(event.title), 0, 0, 0});
}

void DocumentRecorder::handle(const ProcedureEnded& /*event*/) {
    if (!runs_.empty()) runs_.pop_back();
}

void DocumentRecorder::handle(const LogFlushed& /*event*/) {}

void DocumentRecorder::handle(const SyntaxErrorReported& event) { addMessage(errorLevel, event.message); }

void DocumentRecorder::handle(const SyntaxWarned& event) { addMessage(warningLevel, event.message); }

void DocumentRecorder::handle(const ParserMessageReported& event) {
    addMessage(event.warning ? warningLevel : errorLevel, event.message);
}

void DocumentRecorder::handle(const ErrorReported& event) { addMessage(event.level, event.message); }

void DocumentRecorder::handle(const NotesAdded& event) {
    ViewerDocument* const document = isRecorded(false) ? target() : nullptr;
    if (document == nullptr) return;
    headerIn(*document);
    NoteLine line{event.level, event.label, event.value};
    const ItemId known = runs_.empty() ? 0 : runs_.back().notes;
    if (document->outline().find(known) != nullptr) {
        std::get<NotesContent>(document->change(known).content).lines.push_back(std::move(line));
        return;
    }
    const ItemId id = add(*document, translated(messages::notesLabel), NotesContent{{std::move(line)}});
    if (!runs_.empty()) runs_.back().notes = id;
}

void DocumentRecorder::handle(const TableFinished& event) {
    if (!isRecorded(true)) return;
    if (documents_.active() == nullptr) documents_.add(std::make_unique<ViewerDocument>());
    if (ViewerDocument* const document = target()) {
        add(*document, event.shown.view->title, TableContent{event.shown}, event.subtype);
    }
}

void DocumentRecorder::handle(const TextPrinted& event) { addLog(event.text); }

void DocumentRecorder::addMessage(int level, const std::string& text) {
    if (level < warningLevel) {
        addLog(text);
        return;
    }
    if (ViewerDocument* const document = isRecorded(false) ? target() : nullptr) {
        const SystemText label = level >= errorLevel ? messages::errorLabel : messages::warningLabel;
        add(*document, translated(label), WarningContent{level, text});
    }
}

void DocumentRecorder::addLog(const std::string& text) {
    ViewerDocument* const document = isRecorded(false) ? target() : nullptr;
    if (document == nullptr) return;
    const Outline& outline = document->outline();
    const ItemId header = headerIn(*document);
    const std::vector<ItemId>& there = header == 0 ? outline.roots() : outline.find(header)->children;
    const std::string_view line = std::string_view(text).substr(0, text.find_last_not_of('\n') + 1);
    if (logActivation_ == documents_.activations() && !there.empty() && there.back() == log_) {
        std::string& lines = std::get<LogContent>(document->change(log_).content).text;
        lines.append("\n").append(line);
        return;
    }
    log_ = add(*document, translated(messages::logLabel), LogContent{std::string(line)});
    logActivation_ = documents_.activations();
}

bool DocumentRecorder::isRecorded(bool isTable) const {
    if (recording_ == Recording::all || commands_.empty()) return true;
    // What document commands say of themselves would else stand in the next export.
    const std::string& command = commands_.back();
    if (command == "OUTPUT COMMENT" || command == "STB PRINT") return isTable;
    return !std::string_view(command).starts_with("OUTPUT ");
}

ViewerDocument* DocumentRecorder::target() {
    ViewerDocument* const document = documents_.active();
    if (document == nullptr || !document->isLocked()) return document;
    if (reportedActivation_ != documents_.activations()) {
        reportedActivation_ = documents_.activations();
        if (reportLocked_) reportLocked_(shownName(*document));
    }
    return nullptr;
}

ItemId DocumentRecorder::headerIn(ViewerDocument& document) {
    ItemId outer = 0;
    for (OpenRun& run : runs_) {
        if (run.activation != documents_.activations() || document.outline().find(run.header) == nullptr) {
            Item header;
            header.label = run.title;
            header.command = commands_.empty() ? std::string() : commands_.back();
            run = {run.title, documents_.activations(), document.add(std::move(header), outer), 0};
        }
        outer = run.header;
    }
    return outer;
}

ItemId DocumentRecorder::add(ViewerDocument& document, std::string label, ItemContent content,
                             std::string subtype) {
    const ItemId header = headerIn(document);
    Item item;
    item.label = std::move(label);
    item.subtype = std::move(subtype);
    item.content = std::move(content);
    // In a run, the command is the header's.
    if (header == 0 && !commands_.empty()) item.command = commands_.back();
    return document.add(std::move(item), header);
}

}  // namespace vexa::frontend
