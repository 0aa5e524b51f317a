#include "frontend/controller/modify_requests.h"

#include <map>
#include <utility>
#include <variant>
#include <vector>

#include "backend/strings/dictionary.h"
#include "frontend/controller/embedded_controller.h"
#include "frontend/controller/log_messages.h"
#include "frontend/controller/messages.h"
#include "frontend/controller/plan_table.h"
#include "frontend/modify/modification.h"
#include "frontend/requests/modify_reply.h"
#include "frontend/requests/modify_request_reader.h"

namespace vexa::frontend {

namespace {

/// A document, and what a request does to it.
struct PlannedDocument {
    ViewerDocument* document;
    Modification modification;

    [[nodiscard]] bool changes() const { return modification.modified + modification.deleted > 0; }
};

/// The documents that a request names, all of which may be changed; none, after an error, otherwise.
std::vector<ViewerDocument*> documentsOf(const ModifyRequest& request, const OpenDocuments& documents) {
    std::vector<ViewerDocument*> named;
    if (request.namesAll()) {
        for (const auto& each : documents.all()) named.push_back(each.get());
    } else if (request.namesActive()) {
        if (documents.active() != nullptr) named.push_back(documents.active());
    } else if (ViewerDocument* const found = documents.find(request.documentName)) {
        named.push_back(found);
    }
    if (documents.active() == nullptr) {
        say(errorLevel, messages::noDocumentOpen);
    } else if (named.empty()) {
        say(errorLevel, messages::noSuchDocument, {userText(withOpenNames(request.documentName, documents))});
    }
    for (const ViewerDocument* const each : named) {
        if (!each->isLocked()) continue;
        say(errorLevel, messages::documentLocked, {userText(shownName(*each))});
        return {};
    }
    return named;
}

/// Says which of all open documents were changed.
void sayWhichChanged(const std::vector<PlannedDocument>& documents) {
    std::string names;
    for (const PlannedDocument& each : documents) {
        if (each.changes()) names += (names.empty() ? "" : ", ") + shownName(*each.document);
    }
    if (names.empty()) {
        say(noteLevel, messages::noneModified);
    } else {
        say(noteLevel, messages::modifiedDocuments, {userText(names)});
    }
}

/// The items of one group for which the same does not apply, for the same reason.
struct PassedOverItems {
    const PlannedItem* first = nullptr;
    std::size_t count = 0;
};

/// Says what the user cannot have meant, once for all items of a group.
void sayPassedOver(const Modification& modification) {
    std::map<std::pair<std::size_t, std::string_view>, PassedOverItems> reasons;
    std::vector<std::pair<std::size_t, std::string_view>> order;
    for (const PlannedItem& item : modification.items) {
        for (const PassedOver& each : item.plan.passedOver) {
            if (!each.isReported) continue;
            PassedOverItems& items = reasons[{item.group, each.reason}];
            if (items.count++ > 0) continue;
            items.first = &item;
            order.emplace_back(item.group, each.reason);
        }
    }
    for (const auto& key : order) {
        const PassedOverItems& items = reasons[key];
        const BpString group = userText(std::to_string(key.first));
        const BpString number = userText(std::to_string(items.first->number));
        const BpString label = userText(items.first->label);
        const BpString reason = userText(translated(key.second));
        if (items.count == 1) {
            say(warningLevel, messages::passedOverItem, {group, number, label, reason});
        } else {
            const BpString count = userText(std::to_string(items.count));
            say(warningLevel, messages::passedOverItems, {group, number, label, count, reason});
        }
    }
}

ModifyReply replyTo(const PreparedRequest& prepared, const std::vector<PlannedDocument>& documents) {
    ModifyReply reply;
    for (const PlannedDocument& each : documents) {
        reply.selected += each.modification.selected;
        reply.modified += each.modification.modified;
        reply.deleted += each.modification.deleted;
    }
    reply.invalidFormats = prepared.complaints().formats();
    reply.invalidFonts = prepared.complaints().fonts();
    return reply;
}

void refuse(const std::string& reason) { say(errorLevel, messages::modificationRefused, {userText(reason)}); }

void carryOut(std::vector<PlannedDocument>& documents, bool ofAll) {
    // Planned for all before the first is changed: all of it happens, or nothing.
    if (ofAll) sayWhichChanged(documents);
    for (PlannedDocument& each : documents) {
        sayPassedOver(each.modification);
        if (each.changes()) each.document->edit(std::move(each.modification.outline));
    }
}

void tell(const std::vector<PlannedDocument>& documents, std::size_t groups) {
    for (const PlannedDocument& each : documents) {
        for (std::size_t group = 1; group <= groups; ++group) {
            showPlan(each.modification, group, shownName(*each.document));
        }
    }
    say(noteLevel, messages::dryModification);
}

}  // namespace

std::string modifyDocuments(OpenDocuments& documents, LookSource& looks, std::string_view request,
                            Carrying carrying) {
    const auto read = readModifyRequest(request);
    if (const auto* const refusal = std::get_if<RequestRefusal>(&read)) {
        refuse(refusal->message);
        return writeModifyReply({});
    }
    const auto& asked = std::get<ModifyRequest>(read);
    const std::vector<ViewerDocument*> named = documentsOf(asked, documents);
    if (named.empty()) return writeModifyReply({});
    const PreparedRequest prepared(asked, looks);
    if (!prepared.problem().empty()) {
        refuse(prepared.problem());
        return writeModifyReply({});
    }
    const bool isDry = carrying == Carrying::dryRun;
    std::vector<PlannedDocument> planned;
    for (ViewerDocument* const each : named) {
        const PlanDetail detail = isDry ? PlanDetail::allOfTheTypes : PlanDetail::selectedItems;
        planned.push_back({each, prepared.plan(each->outline(), detail)});
    }
    const ModifyReply reply = replyTo(prepared, planned);
    if (isDry) {
        tell(planned, asked.groups.size());
    } else {
        carryOut(planned, asked.namesAll());
    }
    return writeModifyReply(reply);
}

}  // namespace vexa::frontend
