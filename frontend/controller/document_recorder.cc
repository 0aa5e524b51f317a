#include "frontend/controller/document_recorder.h"

#include <memory>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/controller/embedded_controller.h"
#include "frontend/controller/messages.h"

namespace vexa::frontend {

DocumentRecorder::DocumentRecorder(OpenDocuments& documents, LockedReport reportLocked)
    : documents_(documents), reportLocked_(std::move(reportLocked)) {}

void DocumentRecorder::receive(const LogEvent& event) {
    std::visit([this](const auto& kind) { handle(kind); }, event);
}

void DocumentRecorder::handle(const CommandStarted& event) { commands_.push_back(event.name); }

void DocumentRecorder::handle(const CommandFinished& /*event*/) {
    if (!commands_.empty()) {
        commands_.pop_back();
    }
}

void DocumentRecorder::handle(const ProcedureBegan& event) {
    runs_.push_back(Run{translated(event.title), 0, 0, 0});
}

void DocumentRecorder::handle(const ProcedureEnded& /*event*/) {
    if (!runs_.empty()) {
        runs_.pop_back();
    }
}

void DocumentRecorder::handle(const LogFlushed& /*event*/) {}

void DocumentRecorder::handle(const SyntaxErrorReported& event) { addMessage(3, event.message); }

void DocumentRecorder::handle(const SyntaxWarned& event) { addMessage(2, event.message); }

void DocumentRecorder::handle(const ParserMessageReported& event) {
    addMessage(event.warning ? 2 : 3, event.message);
}

void DocumentRecorder::handle(const ErrorReported& event) { addMessage(event.level, event.message); }

void DocumentRecorder::handle(const NotesAdded& event) {
    ViewerDocument* document = target();
    if (document == nullptr) {
        return;
    }
    headingIn(*document);
    NoteLine line{event.level, event.label, event.value};
    ViewerItem* notes = runs_.empty() ? nullptr : document->change(runs_.back().notes);
    if (notes != nullptr) {
        std::get<NotesContent>(notes->content).lines.push_back(std::move(line));
        return;
    }
    const ItemId id = add(*document, translated(messages::notesLabel), NotesContent{{std::move(line)}});
    if (!runs_.empty()) {
        runs_.back().notes = id;
    }
}

void DocumentRecorder::handle(const TableFinished& event) {
    if (documents_.active() == nullptr) {
        documents_.add(std::make_unique<ViewerDocument>());
    }
    if (ViewerDocument* document = target()) {
        add(*document, event.table->title, TableContent{event.table}, event.table->subtype);
    }
}

void DocumentRecorder::handle(const TextPrinted& event) {
    if (ViewerDocument* document = target()) {
        add(*document, translated(messages::textLabel), TextContent{event.text});
    }
}

void DocumentRecorder::addMessage(int level, const std::string& text) {
    if (ViewerDocument* document = target()) {
        const SystemText label = level >= 3   ? messages::errorLabel
                                 : level == 2 ? messages::warningLabel
                                              : messages::messageLabel;
        add(*document, translated(label), MessageContent{level, text});
    }
}

ViewerDocument* DocumentRecorder::target() {
    ViewerDocument* document = documents_.active();
    if (document == nullptr || !document->isLocked()) {
        return document;
    }
    if (reportedActivation_ != documents_.activations()) {
        reportedActivation_ = documents_.activations();
        if (reportLocked_) {
            reportLocked_(shownName(*document));
        }
    }
    return nullptr;
}

ItemId DocumentRecorder::headingIn(ViewerDocument& document) {
    ItemId outer = 0;
    for (Run& run : runs_) {
        if (run.activation != documents_.activations() || document.find(run.heading) == nullptr) {
            run.activation = documents_.activations();
            run.heading = document.add(makeItem(run.title, HeadingContent{}), outer);
            run.notes = 0;
        }
        outer = run.heading;
    }
    return outer;
}

ItemId DocumentRecorder::add(ViewerDocument& document, std::string label, ItemContent content,
                             std::string subtype) {
    ViewerItem item = makeItem(std::move(label), std::move(content));
    item.subtype = std::move(subtype);
    return document.add(std::move(item), headingIn(document));
}

ViewerItem DocumentRecorder::makeItem(std::string label, ItemContent content) const {
    ViewerItem item;
    item.label = std::move(label);
    item.command = commands_.empty() ? std::string() : commands_.back();
    item.content = std::move(content);
    return item;
}

}  // namespace vexa::frontend
