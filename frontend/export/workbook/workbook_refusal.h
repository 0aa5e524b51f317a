// What is said of a workbook that is there and cannot be changed, or not without a loss: the same of every
// kind of workbook.
#pragma once

#include <string>

#include "frontend/export/export_report.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// Fails the report where the result is a failure: the workbook stays as it is, for the reason that the
/// result has, the end of a sentence. Returns whether all is well.
bool checkWorkbook(const PackageResult& result, const std::string& file, ExportReport& report);

/// Fails the report: nothing can be written on the sheet of that name, which is a chart or has macros.
void failForChartSheet(const std::string& sheet, const std::string& file, ExportReport& report);

/// Warns that the workbook, which is signed, was changed.
void noteBrokenSignature(const std::string& file, ExportReport& report);

/// Warns that formulas of several cells of the sheet went, because one of their cells was written over.
void noteCutFormulas(const std::string& sheet, ExportReport& report);

}  // namespace vexa::frontend
