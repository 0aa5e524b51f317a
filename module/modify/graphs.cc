// GRAPHS: chart templates and a visualisation style sheet for the selected charts. The templates travel in
// the request, so the front end needs none of their files.

#include <vector>

#include "module/frame/xml_text.h"
#include "module/modify/looks.h"
#include "module/modify/modify_spec.h"
#include "module/modify/parameter_values.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr ParameterRow kParameters[] = {
    optionalParameter("CTEMPLATE", Spec::literals).bracketed(UPSpecTypes::BracketOptions::required),
    optionalParameter("VIZSTYLESHEET", Spec::literalOrWord),
};

constexpr SubcommandRow kGrammar{"GRAPHS", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                 kParameters};

struct GraphSettings {
    std::vector<std::string> templateFiles;  ///< as found
    std::string styleSheet;
};

bool read(const SubComObj& given, ParserMessage& messages, GraphSettings& settings) {
    std::vector<std::string_view> names;
    if (const ParamObj* const templates = given.getParamObj("CTEMPLATE")) {
        templates->getLiterals(names);
    }
    for (const std::string_view name : names) {
        std::string file(name);
        if (!FindTableLook(file, ".cgt")) {
            messages.FileNameInvalid(name);
            return false;
        }
        settings.templateFiles.push_back(std::move(file));
    }
    settings.styleSheet = textOf(given, "VIZSTYLESHEET");
    return true;
}

void write(const GraphSettings& settings, std::string& request) {
    request += "<modifyGraph";
    appendTextIfAny(request, "styleSheet", settings.styleSheet);
    if (settings.templateFiles.empty()) {
        // Without any value the element is left open; this is meant.
        request += settings.styleSheet.empty() ? "" : "/>";
        return;
    }
    request += '>';
    for (const std::string& file : settings.templateFiles) {
        request += "<chartTemplate>";
        request += toXmlUtf8(fetchFromRoot(file, "<template"));
        request += "</chartTemplate>";
    }
    request += "</modifyGraph>";
}

}  // namespace

std::unique_ptr<ModifyHandler> makeGraphsHandler() {
    return std::make_unique<SingleHandler<GraphSettings>>(kGrammar, read, write);
}

}  // namespace vexa
