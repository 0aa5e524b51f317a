#include "frontend/export/workbook/sheet_name.h"

#include <algorithm>
#include <string>

#include "backend/strings/dictionary.h"
#include "backend/text/letters.h"
#include "backend/text/utf8.h"
#include "frontend/export/workbook/sheet_draft.h"

namespace vexa::frontend {

namespace {

bool isForbidden(char each) {
    const auto byte = static_cast<unsigned char>(each);
    return byte < ' ' || byte == 0x7F || std::string_view(":\\/?*[]").find(each) != std::string_view::npos;
}

std::string folded(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const Utf8Character character = decodeUtf8(text.substr(i));
        appendUtf8(result, foldedLetter(character.code));
        i += character.length;
    }
    return result;
}

}  // namespace

ExportError sheetNameError(std::string_view name) {
    if (textUnits(name) > longestSheetName) return ExportError::sheetNameTooLong;
    const bool isAllowed = !name.empty() && !name.starts_with('\'') && !name.ends_with('\'') &&
                           std::none_of(name.begin(), name.end(), isForbidden);
    return isAllowed ? ExportError::none : ExportError::sheetNameForbidden;
}

bool checkSheetName(std::string_view name, ExportReport& report) {
    const std::string given(name);
    switch (sheetNameError(name)) {
        case ExportError::none:
            return true;
        case ExportError::sheetNameTooLong:
            report.fail(ExportError::sheetNameTooLong,
                        composed("The sheet's name \"^1\" has ^2 characters. It may have 31."_text,
                                 {given, std::to_string(textUnits(name))}));
            return false;
        default:
            report.fail(
                ExportError::sheetNameForbidden,
                composed(
                    "\"^1\" cannot be a sheet's name: it must not be empty, hold one of : \\ / ? * [ ], or begin or end with an apostrophe."_text,
                    {given}));
            return false;
    }
}

bool isSameSheetName(std::string_view left, std::string_view right) { return folded(left) == folded(right); }

}  // namespace vexa::frontend
