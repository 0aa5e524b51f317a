// The style sheets of charts, as the folders `Looks` hold them.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "frontend/export/export_plan.h"
#include "frontend/export/export_report.h"

namespace vexa::frontend {

class PictureStyles {
  public:
    PictureStyles(std::vector<std::string> folders, ExportReport& report)
        : folders_(std::move(folders)), report_(report) {}

    /// The text of the style sheet `name` (with `.css` or without); empty where no folder has it. Each is
    /// read once.
    const std::string& find(const std::string& name) { return sheet(name).text; }
    /// The same for a picture that is being exported: of each that lacks its sheet there is a note.
    const std::string& find(const std::string& name, const ExportedItem& item);

  private:
    struct Sheet {
        std::string text;
        bool isMissed = false;  ///< no folder has it
    };
    Sheet& sheet(const std::string& name);

    std::vector<std::string> folders_;
    ExportReport& report_;
    std::map<std::string, Sheet> sheets_;
};

}  // namespace vexa::frontend
