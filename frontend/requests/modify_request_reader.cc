#include "frontend/requests/modify_request_reader.h"

#include <iterator>
#include <vector>

#include "backend/strings/dictionary.h"
#include "frontend/requests/request_elements.h"
#include "frontend/requests/request_fields.h"
#include "frontend/requests/request_scanner.h"

namespace vexa::frontend {

namespace {

/// An element of a group.
struct ChildForm {
    std::string_view name;
    bool repeats;
    void (*read)(RequestScanner& scanner, ModifyGroup& group);
};

void readLabel(RequestScanner& scanner, ModifyGroup& group) {
    const LabelMatch least = group.labels.empty() ? LabelMatch::exact : group.labels.back().match;
    group.labels.push_back(readLabelCriterion(scanner, least));
}

/// In the order of the form.
constexpr ChildForm kChildren[] = {
    {"command", true, [](auto& from, auto& group) { group.commands.push_back(readCommandCriterion(from)); }},
    {"subtype", true, [](auto& from, auto& group) { group.subtypes.push_back(readSubtypeCriterion(from)); }},
    {"label", true, readLabel},
    {"instance", true,
     [](auto& from, auto& group) { group.instances.push_back(readInstanceCriterion(from)); }},
    {"indexObject", false, [](auto& from, auto& group) { group.index = readIndexChange(from); }},
    {"deleteObject", false,
     [](auto& from, auto& group) {
         static_cast<void>(from.readTag(form::kDelete));
         group.deletes = true;
     }},
    {"modifyGraph", false, [](auto& from, auto& group) { group.graph = readGraphChange(from); }},
    {"objectProperties", false, [](auto& from, auto& group) { group.object = readObjectChange(from); }},
    {"modifyTable", false, [](auto& from, auto& group) { group.table = readTableChange(from); }},
    {"tableCells", true, [](auto& from, auto& group) { group.cells.push_back(readCellsChange(from)); }},
    {"modifyText", false, [](auto& from, auto& group) { group.text = readTextChange(from); }}};

/// What SELECT names: types that are `true`, or behind `all` those that are `false`.
void readTypes(RequestFields& fields, TypeSelection& types) {
    constexpr RequestWord<bool> kSelected[] = {{"true", true}};
    constexpr RequestWord<bool> kExcepted[] = {{"false", true}};
    fields.truth("all", types.all);
    for (std::size_t i = 0; i < kSelectedTypes; ++i) {
        bool named = false;
        const std::string_view name = form::kEventAttributes[i + 1].name;
        if (types.all) {
            fields.choice(name, kExcepted, named);
        } else {
            fields.choice(name, kSelected, named);
        }
        (types.all ? types.excepted : types.selected).set(i, named);
    }
}

void readChildren(RequestScanner& scanner, ModifyGroup& group) {
    const auto* next = std::begin(kChildren);
    for (const auto* child = next; child != std::end(kChildren);) {
        if (!scanner.takeBeginning(child->name)) {
            ++child;
            continue;
        }
        child->read(scanner, group);
        child += child->repeats ? 0 : 1;
        next = child;
    }
    if (scanner.take("</modifyEvent>")) {
        return;
    }
    std::vector<std::string_view> fits;
    for (; next != std::end(kChildren); ++next) {
        fits.push_back(next->name);
    }
    fits.emplace_back("</modifyEvent>");
    scanner.refuseHere("modifyEvent", listOf(fits));
}

ModifyGroup readGroup(RequestScanner& scanner) {
    const ScannedTag tag = scanner.readTag(form::kEvent);
    RequestFields fields(scanner, tag);
    ModifyGroup group;
    readTypes(fields, group.types);
    fields.truth("visibleOnly", group.visibleOnly);
    if (tag.open) {
        readChildren(scanner, group);
    }
    return group;
}

ModifyRequest readRequest(RequestScanner& scanner) {
    ModifyRequest request;
    if (!scanner.takeBeginning("modifyOutputObject")) {
        scanner.refuseHere({}, listOf({"<modifyOutputObject"}));
    }
    const ScannedTag tag = scanner.readTag(form::kRequest);
    RequestFields fields(scanner, tag);
    fields.requireOne({"documentName"});
    fields.text("documentName", request.documentName);
    fields.truth("debug", request.debug);
    while (tag.open && scanner.takeBeginning("modifyEvent")) {
        request.groups.push_back(readGroup(scanner));
    }
    if (tag.open && !scanner.take("</modifyOutputObject>")) {
        scanner.refuseHere("modifyOutputObject", listOf({"<modifyEvent", "</modifyOutputObject>"}));
    }
    if (!scanner.isAtEnd()) {
        scanner.refuseHere({}, translated("the end of the request"_text));
    }
    return request;
}

}  // namespace

std::variant<ModifyRequest, RequestRefusal> readModifyRequest(std::string_view text) {
    RequestScanner scanner(text);
    ModifyRequest request = readRequest(scanner);
    if (scanner.refusal()) {
        return *scanner.refusal();
    }
    return request;
}

}  // namespace vexa::frontend
