#include "tests/unit/modify/modify_samples.h"

#include <gtest/gtest.h>

#include "backend/platform/fonts.h"
#include "tests/unit/import/import_samples.h"
#include "tests/unit/modify/case_file.h"

namespace vexa::frontend {

namespace {

/// Fonts of the test for as long as it lives.
struct SampleFonts {
    SampleFonts() { installFonts(std::vector<std::string>{"Sans Sample", "Serif Sample"}); }
    ~SampleFonts() { installFonts(std::nullopt); }
    SampleFonts(const SampleFonts&) = delete;
    SampleFonts& operator=(const SampleFonts&) = delete;
};

std::string saidOf(const PlannedItem& item) {
    std::string said;
    for (const ChangeKind each : item.plan.changes)
        said += (said.empty() ? " " : ", ") + std::string(changeText(each));
    for (const PassedOver& each : item.plan.passedOver)
        said += (each.isReported ? " (reported) " : "; ") + std::string(each.reason);
    return "* " + std::to_string(item.group) + '/' + std::to_string(item.number) +
           (item.selected ? "" : " not selected") + said + '\n';
}

}  // namespace

ModifyRequest requestOf(const std::string& groups) {
    const auto read =
        readModifyRequest("<modifyOutputObject documentName=\"*\">" + groups + "</modifyOutputObject>");
    if (const auto* const refusal = std::get_if<RequestRefusal>(&read)) {
        ADD_FAILURE() << refusal->message;
        return {};
    }
    return std::get<ModifyRequest>(read);
}

Modification modified(const Outline& outline, const std::string& groups) {
    const SampleFonts fonts;
    const ModifyRequest request = requestOf(groups);
    FewLooks looks;
    const PreparedRequest prepared(request, looks);
    EXPECT_EQ(prepared.problem(), "");
    return prepared.plan(outline);
}

std::string described(const Outline& outline, const std::string& groups) {
    const SampleFonts fonts;
    const ModifyRequest request = requestOf(groups);
    FewLooks looks;
    const PreparedRequest prepared(request, looks);
    if (!prepared.problem().empty()) return "-- changes 0,0,0 --\n! refused: " + prepared.problem() + '\n';
    const Modification modification = prepared.plan(outline);
    std::string text = "-- changes " + std::to_string(modification.selected) + ',' +
                       std::to_string(modification.modified) + ',' + std::to_string(modification.deleted) +
                       " --\n";
    for (const PlannedItem& each : modification.items) text += saidOf(each);
    for (const std::string& each : prepared.complaints().formats())
        text += "! Invalid format (" + each + ")\n";
    for (const std::string& each : prepared.complaints().fonts()) text += "! Invalid font (" + each + ")\n";
    return text + lineChanges(printed(outline), printed(modification.outline));
}

}  // namespace vexa::frontend
