// Sending an export to the front end, and reporting its answer.
#pragma once

#include <optional>
#include <string>

#include "backend/pivot/bp_procedure.h"
#include "backend/viewerxml/export_spec.h"
#include "backend/viewerxml/response_spec.h"
#include "backend/viewerxml/xml_platform.h"

namespace vexa {

/// What the reports of one export need beside the answer.
class ExportReporting {
  public:
    /// Makes the XML library ready; a failure of it is reported. `procedure` must outlive the object.
    /// `documentFile`: the file as it was checked.
    ExportReporting(BpProcedure& procedure, ExportGlobalSpec::PRINT_OPTION print, std::string documentFile);

    /// Hands the XML of a specification to the front end and reports what came of it. Does nothing when the
    /// XML library cannot work. `specification` is empty when it could not be written.
    void send(const std::string& specification) const;

  private:
    void report(const ResponseSpec& response) const;
    void reportError(const ResponseSpec& response) const;
    void addNotes(const ResponseSpec& response) const;
    void buildSummary(const ResponseSpec& response) const;

    std::optional<XmlPlatform> xml_;  // nothing when the library cannot work
    BpProcedure& procedure_;
    ExportGlobalSpec::PRINT_OPTION print_;
    std::string documentFile_;
    std::string imageRoot_;  // nobody fills it, so reports show an empty root; this is meant
};

}  // namespace vexa
