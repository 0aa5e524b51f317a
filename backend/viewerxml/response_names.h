// The names of an answer to an export, from which it is read and written. For the viewer XML library's own
// files.
#pragma once

#include <string_view>
#include <variant>

#include "backend/viewerxml/response_spec.h"

namespace vexa {

/// An attribute of the answer itself, and the member that holds it.
struct ResponseAttribute {
    std::string_view name;
    std::variant<bool ExportResponse::*, int ExportResponse::*, std::string ExportResponse::*> member;
};

inline constexpr ResponseAttribute kResponseAttributes[] = {{"success", &ExportResponse::success},
                                                            {"errorCode", &ExportResponse::errorCode},
                                                            {"name", &ExportResponse::name},
                                                            {"documentFile", &ExportResponse::documentFile},
                                                            {"imageCount", &ExportResponse::imageCount},
                                                            {"imageRoot", &ExportResponse::imageRoot},
                                                            {"imageFormat", &ExportResponse::imageFormat}};

struct WarningAttribute {
    std::string_view name;
    std::string ExportResponse::Warning::*member;
};

inline constexpr WarningAttribute kWarningAttributes[] = {{"first", &ExportResponse::Warning::first},
                                                          {"second", &ExportResponse::Warning::second}};

/// By their depth.
inline constexpr std::string_view kResponseElements[] = {"exportResponse", "warnings", "warning"};
inline constexpr std::string_view kWarningsCode = "code";

}  // namespace vexa
