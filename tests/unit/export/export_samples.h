// What the tests of exports share.
#pragma once

#include <string>

#include "frontend/document/viewer_document.h"
#include "frontend/export/export_document.h"

namespace vexa::frontend {

/// A document with these items, which are written as results are (docs/formats/results-json.md).
void fill(ViewerDocument& document, const std::string& items);

/// Items of every type, with what pages could stumble over.
[[nodiscard]] const std::string& everything();

/// A folder of the test's own, which is taken away at its end.
class ExportFolder {
  public:
    ExportFolder();
    ~ExportFolder();
    ExportFolder(const ExportFolder&) = delete;
    ExportFolder& operator=(const ExportFolder&) = delete;

    [[nodiscard]] std::string file(const std::string& name) const { return path_ + "/" + name; }
    /// The bytes of a file; "(none)" where there is none.
    [[nodiscard]] std::string read(const std::string& name) const;
    void write(const std::string& name, const std::string& content) const;
    /// Names of all files, sorted, with a blank behind each.
    [[nodiscard]] std::string names() const;

  private:
    std::string path_;
};

/// The document as one file of one format.
[[nodiscard]] std::string htmlOf(const ViewerDocument& document, HtmlExport request = {});
[[nodiscard]] std::string reportOf(const ViewerDocument& document, ReportExport request = {});
[[nodiscard]] std::string textOf(const ViewerDocument& document, TextExport request = {});

}  // namespace vexa::frontend
