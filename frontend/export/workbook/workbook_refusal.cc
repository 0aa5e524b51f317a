#include "frontend/export/workbook/workbook_refusal.h"

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"

namespace vexa::frontend {
namespace {

/// What is wrong with a workbook, in the language of the user.
std::string reasonOf(const PackageResult& result) {
    std::string detail = result.shownDetail();
    switch (result.problem) {
        case PackageProblem::tooLarge:
        case PackageProblem::beyondLimits:
            return composed("it is too large: ^1"_text, {detail});
        case PackageProblem::otherCompression:
            return composed("it is compressed in a way that is not known: ^1"_text, {detail});
        case PackageProblem::unsafeName:
            return composed("it has an entry with a name that is not allowed: ^1"_text, {detail});
        case PackageProblem::noMemory:
            return translated("memory is short"_text.key());
        default:
            return detail;
    }
}

}  // namespace

bool checkWorkbook(const PackageResult& result, const std::string& file, ExportReport& report) {
    if (!result) {
        report.fail(ExportError::other, composed("The workbook ^1 cannot be changed: ^2."_text,
                                                 {toNativePath(file), reasonOf(result)}));
    }
    return static_cast<bool>(result);
}

void failForChartSheet(const std::string& sheet, const std::string& file, ExportReport& report) {
    report.fail(ExportError::other,
                composed("The sheet ^1 of the workbook ^2 is none of rows and columns."_text,
                         {sheet, toNativePath(file)}));
}

void noteBrokenSignature(const std::string& file, ExportReport& report) {
    report.note(composed("The workbook ^1 is signed. Its signature does not hold any longer."_text,
                         {toNativePath(file)}));
}

void noteCutFormulas(const std::string& sheet, ExportReport& report) {
    report.note(composed(
        "The export stands on formulas of several cells of the sheet ^1; their other cells keep their values."_text,
        {sheet}));
}

}  // namespace vexa::frontend
