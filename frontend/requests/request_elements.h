// Reads the elements of a group, each where the beginning of its tag has been taken. What it returns after a
// refusal of the scanner means nothing. For the reader of modifications alone.
#pragma once

#include <optional>
#include <string>

#include "frontend/requests/modify_request.h"
#include "frontend/requests/request_scanner.h"

namespace vexa::frontend {

[[nodiscard]] CommandCriterion readCommandCriterion(RequestScanner& scanner);
[[nodiscard]] std::string readSubtypeCriterion(RequestScanner& scanner);
/// `least`: the first match that may stand here; labels are sorted by it.
[[nodiscard]] LabelCriterion readLabelCriterion(RequestScanner& scanner, LabelMatch least);
[[nodiscard]] InstanceCriterion readInstanceCriterion(RequestScanner& scanner);

[[nodiscard]] IndexChange readIndexChange(RequestScanner& scanner);
/// Nothing where nothing is asked for, above all for the bare text `<modifyGraph`.
[[nodiscard]] std::optional<GraphChange> readGraphChange(RequestScanner& scanner);
[[nodiscard]] ObjectChange readObjectChange(RequestScanner& scanner);
[[nodiscard]] TableChange readTableChange(RequestScanner& scanner);
[[nodiscard]] CellsChange readCellsChange(RequestScanner& scanner);
[[nodiscard]] TextChange readTextChange(RequestScanner& scanner);

}  // namespace vexa::frontend
