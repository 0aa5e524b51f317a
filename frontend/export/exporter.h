// What every exporter gets and gives: one folder a format, one function a folder.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "frontend/document/viewer_document.h"
#include "frontend/export/export_plan.h"
#include "frontend/export/export_report.h"
#include "frontend/package/output_files.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend {

/// What an export needs of its surroundings. Everything lives as long as the export.
struct ExportSurroundings {
    std::string language = "en";            ///< of the document's text, a language code
    std::vector<std::string> styleFolders;  ///< the folders `Looks`, for style sheets of charts; UTF-8
    bool dryRun = false;                    ///< everything is made, and nothing put in its place
    /// Called with the items written so far and all items, now and then; may be empty. False ends the export,
    /// and nothing is replaced.
    std::function<bool(std::size_t done, std::size_t all)> progress;
};

class PictureFiles;

/// The document's name, or what stands for one without a name.
[[nodiscard]] std::string documentTitle(const ViewerDocument& document);

/// One export of one format, as an exporter sees it. Texts are UTF-8; files are begun in `files` and are put
/// in their places by whoever calls the exporter, together with those of the other formats of the same
/// command.
struct ExportTask {
    const ViewerDocument& document;
    const ExportPlan& plan;
    const ExportRequest& request;
    const ExportSurroundings& surroundings;
    OutputFiles& files;
    ExportReport& report;
    PictureFiles& pictures;  ///< those beside the page

    /// Says how far the export is. False when it shall end; the report knows it then.
    [[nodiscard]] bool goesOn(std::size_t itemsDone) const;
};

}  // namespace vexa::frontend
