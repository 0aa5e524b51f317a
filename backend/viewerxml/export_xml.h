// The XML of an export specification.
#pragma once

#include <string>

#include "backend/viewerxml/export_spec.h"

namespace vexa {

class ExportXML {
  public:
    /// `spec` as XML, in UTF-8, without an XML declaration and without line ends of its own: the element
    /// `exportSpecification` with `global`, `contents` and one element for each format whose option-present
    /// flag is true, in the order of `ExportSpec`. What was set is an attribute named after its setter.
    /// The form is docs/formats/export-specification.md; schemas/export-specification.xsd describes it.
    /// The result is well-formed when the texts that come escaped are. Empty only when the XML library cannot
    /// work in this process. Initialises that library where nobody has.
    [[nodiscard]] static std::string convertToXML(const ExportSpec& spec);
};

}  // namespace vexa
