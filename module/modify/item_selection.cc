#include "module/modify/item_selection.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "backend/text/character_set.h"
#include "module/frame/grammar.h"
#include "module/frame/xml_text.h"

namespace vexa {

namespace {

/// The item types but ALL, as SELECT takes them.
constexpr std::string_view kItemTypes[] = {"CHARTS",  "HEADINGS", "LOGS",      "MODELS",         "TABLES",
                                           "TEXTS",   "TREES",    "WARNINGS",  "OUTLINEHEADERS", "NOTES",
                                           "UNKNOWN", "OTHER",    "PAGETITLES"};

struct ItemTypeAttribute {
    std::string_view keyword;
    std::string_view attribute;
};

/// In the order of the request: NOTES stands elsewhere than among the keywords; both orders are meant.
constexpr ItemTypeAttribute kAttributes[] = {{"CHARTS", "charts"},
                                             {"HEADINGS", "headings"},
                                             {"LOGS", "logs"},
                                             {"NOTES", "notes"},
                                             {"MODELS", "models"},
                                             {"TABLES", "tables"},
                                             {"TEXTS", "texts"},
                                             {"TREES", "trees"},
                                             {"WARNINGS", "warnings"},
                                             {"OUTLINEHEADERS", "outlineheaders"},
                                             {"UNKNOWN", "unknown"},
                                             {"OTHER", "other"},
                                             {"PAGETITLES", "pagetitles"}};

constexpr auto kExcept = optionalParameter("EXCEPT", UPSpecTypes::ParamSpec::words)
                             .of(kItemTypes)
                             .bracketed(UPSpecTypes::BracketOptions::optional)
                             .checked();

constexpr SystemText kExceptWithoutAll = "Subcommand ^1 invalid keyword ^2 unless ^3..."_text;

const ItemTypeAttribute* findItemType(std::string_view keyword) {
    const auto* const found = std::find_if(
        std::begin(kAttributes), std::end(kAttributes),
        [keyword](const ItemTypeAttribute& each) { return equalsIgnoringCase(each.keyword, keyword); });
    return found == std::end(kAttributes) ? nullptr : found;
}

}  // namespace

SubComDescriptor describeSelect() {
    SubComDescriptor select("SELECT", UPSpecTypes::SubComSpec::keywordList, true, false);
    select.reserveParams(std::size(kItemTypes) + 2);
    select.addParamDesc(describe(optionalParameter("ALL", UPSpecTypes::ParamSpec::keyword)));
    for (const std::string_view type : kItemTypes) {
        select.addParamDesc(describe(optionalParameter(type, UPSpecTypes::ParamSpec::keyword)));
    }
    return select.addParamDesc(describe(kExcept));
}

void writeItemTypes(const SubComObj& select, std::string& request) {
    if (select.getParamObj("ALL") != nullptr) {
        appendFlag(request, "all", true);
        return;
    }
    for (const ItemTypeAttribute& type : kAttributes) {
        if (select.getParamObj(type.keyword) != nullptr) {
            appendFlag(request, type.attribute, true);
        }
    }
}

bool writeExceptions(const SubComObj& select, bool failed, ParserMessage& messages, std::string& request) {
    const ParamObj* const except = select.getParamObj("EXCEPT");
    if (except == nullptr) {
        return true;
    }
    if (select.getParamObj("ALL") == nullptr) {
        messages.GenericError(kExceptWithoutAll, {"SELECT", "EXCEPT", "ALL"});
        return false;
    }
    std::vector<std::string_view> types;
    // Words and quoted texts alone get through the parser, so a list can always be read.
    if (failed || !except->getStringList(types)) {
        return false;
    }
    bool allKnown = true;
    for (const std::string_view type : types) {
        if (const ItemTypeAttribute* const known = findItemType(type)) {
            appendFlag(request, known->attribute, false);
        } else {
            messages.InvalidParamValue(type, "EXCEPT", "SELECT");
            allKnown = false;
        }
    }
    return allKnown;
}

}  // namespace vexa
