#include "module/export/targets.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "backend/paths/file_specification.h"
#include "backend/pivot/check_file_ref.h"
#include "backend/text/character_set.h"
#include "module/frame/given_values.h"
#include "module/frame/xml_text.h"

namespace vexa {

namespace {

constexpr SystemText kFileRequired =
    "When a document type subcommand is used, the DOCUMENTFILE keyword is required."_text;
constexpr SystemText kRootRequired =
    "When an image type subcommand is used, the IMAGEROOT keyword is required."_text;
constexpr SystemText kNoAccess = "File ^1 has no access..."_text;

/// The third name is no subcommand's, so the files of XLSM keep the extension that they have; this is meant.
constexpr std::string_view kFormatsWithExtension[] = {"XLS", "XLSX", "XLM"};

std::string smallLetters(std::string_view capitals) {
    std::string text(capitals);
    std::transform(text.begin(), text.end(), text.begin(), [](char each) {
        return each >= 'A' && each <= 'Z' ? static_cast<char>(each + ('a' - 'A')) : each;
    });
    return text;
}

void completeExtension(std::string_view format, std::string& path) {
    if (path.empty() || std::find(std::begin(kFormatsWithExtension), std::end(kFormatsWithExtension),
                                  format) == std::end(kFormatsWithExtension)) {
        return;
    }
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos || !equalsIgnoringCase(std::string_view(path).substr(dot + 1), format)) {
        path.append(".").append(smallLetters(format));
    }
}

/// Looks a path up; one that cannot be written is reported.
DocumentFile lookUp(std::string path, ParserMessage& messages) {
    int length = 0;
    int valid = 0;
    int exists = 0;
    int writable = 0;
    VALIDATECLIENTFILESPEC(path.c_str(), &length, &valid, &exists, &writable);
    const bool accepted = valid != 0 && writable != 0;
    if (!accepted) {
        messages.GenericError(kNoAccess, {path});
    }
    return {std::move(path), exists != 0, accepted};
}

}  // namespace

DocumentFile readDocumentFile(const SubComObj& given, ParserMessage& messages, DocumentFileSetting& format) {
    const ParamObj* const parameter = given.getParamObj("DOCUMENTFILE");
    if (parameter == nullptr) {
        messages.GenericError(kFileRequired);
        return {};
    }
    const std::optional<TextValue> value = textValue(*parameter);
    if (!value) {
        messages.WrongValueType("DOCUMENTFILE", given.name());
        return {};
    }
    std::string path = CheckFileRef(value->text, true, true);
    completeExtension(given.name(), path);
    DocumentFile file = lookUp(std::move(path), messages);
    if (file.valid) {
        format.setDocumentFile(escapeXml(file.path));
    }
    return file;
}

bool readFileInto(std::string& path, const SubComObj& given, ParserMessage& messages,
                  DocumentFileSetting& format) {
    DocumentFile file = readDocumentFile(given, messages, format);
    if (file.valid) {
        path = std::move(file.path);
    }
    return file.valid;
}

void readImageRoot(const SubComObj& given, bool required, ParserMessage& messages, ImageRootSetting& format) {
    const ParamObj* const parameter = given.getParamObj("IMAGEROOT");
    if (parameter == nullptr) {
        if (required) {
            messages.GenericError(kRootRequired);
        }
        return;
    }
    if (const std::optional<TextValue> value = textValue(*parameter)) {
        format.setImageRoot(CheckFileRef(value->text, true, false));
    } else {
        messages.WrongValueType("IMAGEROOT", given.name());
    }
}

}  // namespace vexa
