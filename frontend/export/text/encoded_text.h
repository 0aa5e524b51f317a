// Text in the encoding that TEXT is asked for.
#pragma once

#include <string_view>
#include <utility>

#include "frontend/export/export_report.h"
#include "frontend/package/package_result.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend {

/// Encodes UTF-8 piece by piece; before the first one it writes the encoding's mark. Characters that the back
/// end's character set lacks become `?`, and the report is told once.
class EncodedText {
  public:
    EncodedText(TextEncoding encoding, ByteSink out, ExportReport& report)
        : encoding_(encoding), out_(std::move(out)), report_(report) {}

    /// Whole characters.
    PackageResult write(std::string_view text);

  private:
    PackageResult writeLocale(std::string_view text);

    TextEncoding encoding_;
    ByteSink out_;
    ExportReport& report_;
    bool isBegun_ = false;
};

}  // namespace vexa::frontend
