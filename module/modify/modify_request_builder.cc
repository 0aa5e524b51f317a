#include "module/modify/modify_request_builder.h"

#include <cstddef>
#include <vector>

#include "module/frame/xml_text.h"
#include "module/modify/item_selection.h"

namespace vexa {

namespace {

/// Groups after which the length of the whole request is estimated.
constexpr std::size_t kGroupsForEstimate = 64;

}  // namespace

ModifyEventWriter::ModifyEventWriter(std::string& request) : request_(request) { request_ += "<modifyEvent"; }

void ModifyEventWriter::closeStartTag() {
    if (startTagOpen_) {
        request_ += '>';
        startTagOpen_ = false;
    }
}

void ModifyEventWriter::finish() {
    closeStartTag();
    request_ += "</modifyEvent>";
}

ModifyRequestBuilder::ModifyRequestBuilder(std::string& request, const ModifyEnvelope& envelope,
                                           const ModifySpec& handlers, const CommandSpec& command,
                                           ParserMessage& messages)
    : request_(request), handlers_(handlers), command_(command), messages_(messages) {
    request_ += "<modifyOutputObject";
    appendText(request_, "documentName", envelope.documentName);
    if (envelope.debug) {
        appendFlag(request_, "debug", true);
    }
    request_ += '>';
}

bool ModifyRequestBuilder::close() {
    std::vector<const GroupComObj*> groups;
    command_.getGroupComObj(groups, "SELECT");
    const std::size_t before = request_.size();
    for (std::size_t done = 0; done < groups.size(); ++done) {
        if (done == kGroupsForEstimate) {
            // A request that grew by doubling would be in memory twice while it is moved.
            const std::size_t perGroup = (request_.size() - before) / done + 1;
            request_.reserve(request_.size() + perGroup * (groups.size() - done) * 9 / 8);
        }
        addGroup(*groups[done]);
    }
    request_ += "</modifyOutputObject>";
    return !failed_;
}

void ModifyRequestBuilder::addGroup(const GroupComObj& group) {
    ModifyEventWriter event(request_);
    const SubComObj& select = *group.getSubComObj("SELECT");
    writeItemTypes(select, request_);
    failed_ = !writeExceptions(select, failed_, messages_, request_) || failed_;
    addSelection(group, event);
    for (ModifyHandler* const handler :
         {handlers_.indexing.get(), handlers_.deleteObject.get(), handlers_.graphs.get(),
          handlers_.objectProperties.get(), handlers_.table.get(), handlers_.tableCells.get(),
          handlers_.texts.get()}) {
        addSubcommand(handler, group, event);
    }
    event.finish();
}

void ModifyRequestBuilder::addSelection(const GroupComObj& group, ModifyEventWriter& event) {
    SelectionHandler* const selection = handlers_.selection.get();
    if (!readInto(selection, group)) {
        return;
    }
    if (selection->visibleOnly()) {
        appendFlag(request_, "visibleOnly", true);
    }
    event.closeStartTag();
    selection->write(request_);
}

void ModifyRequestBuilder::addSubcommand(ModifyHandler* handler, const GroupComObj& group,
                                         ModifyEventWriter& event) {
    if (readInto(handler, group)) {
        event.closeStartTag();
        handler->write(request_);
    }
}

/// True when the handler has something to write. Nothing is read any more once the command has failed.
bool ModifyRequestBuilder::readInto(ModifyHandler* handler, const GroupComObj& group) {
    if (failed_ || handler == nullptr) {
        return false;
    }
    failed_ = !handler->read(group, messages_);
    return !failed_ && handler->isPresent();
}

}  // namespace vexa
