// The formats of OUTPUT EXPORT, one subcommand each: its grammar, and the reader that fills its
// specification.
//
// A reader gives true when its subcommand was given and read without a failure; the format is then marked as
// present in the export specification. Failures have been reported.
#pragma once

#include <string>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/parser_message.h"
#include "backend/viewerxml/export_spec.h"
#include "module/frame/grammar.h"

namespace vexa {

/// A reader of a document format.
template <typename Format>
using ReadDocument = bool (*)(const CommandSpec& command, ParserMessage& messages, Format& format,
                              std::string& path);

/// The subcommands, as the syntax table has them.
/// @{
extern const SubcommandRow kDocGrammar;
extern const SubcommandRow kHtmlGrammar;
extern const SubcommandRow kReportGrammar;
extern const SubcommandRow kPdfGrammar;
extern const SubcommandRow kPptGrammar;
extern const SubcommandRow kTextGrammar;
extern const SubcommandRow kXlsGrammar;
extern const SubcommandRow kXlsxGrammar;
extern const SubcommandRow kXlsmGrammar;
extern const SubcommandRow kBmpGrammar;
extern const SubcommandRow kEmfGrammar;
extern const SubcommandRow kEpsGrammar;
extern const SubcommandRow kJpgGrammar;
extern const SubcommandRow kPngGrammar;
extern const SubcommandRow kTifGrammar;
/// @}

/// Document formats. `path` becomes the file of a format that was read; what it is after a failure means
/// nothing.
/// @{
[[nodiscard]] bool readDoc(const CommandSpec& command, ParserMessage& messages, ExportDocSpec& doc,
                           std::string& path);
[[nodiscard]] bool readHtml(const CommandSpec& command, ParserMessage& messages, ExportHTMLSpec& html,
                            std::string& path);
[[nodiscard]] bool readReport(const CommandSpec& command, ParserMessage& messages, ExportReportSpec& report,
                              std::string& path);
[[nodiscard]] bool readPdf(const CommandSpec& command, ParserMessage& messages, ExportPDFSpec& pdf,
                           std::string& path);
[[nodiscard]] bool readPpt(const CommandSpec& command, ParserMessage& messages, ExportPPTSpec& ppt,
                           std::string& path);
[[nodiscard]] bool readText(const CommandSpec& command, ParserMessage& messages, ExportTextSpec& text,
                            std::string& path);
[[nodiscard]] bool readXls(const CommandSpec& command, ParserMessage& messages, ExportXLSSpec& xls,
                           std::string& path);
[[nodiscard]] bool readXlsx(const CommandSpec& command, ParserMessage& messages, ExportXLSSpec& xlsx,
                            std::string& path);
[[nodiscard]] bool readXlsm(const CommandSpec& command, ParserMessage& messages, ExportXLSSpec& xlsm,
                            std::string& path);
/// @}

/// Image formats. `rootRequired`: no document is exported that images can go with.
/// @{
[[nodiscard]] bool readBmp(const CommandSpec& command, ParserMessage& messages, ExportBMPSpec& bmp,
                           bool rootRequired);
[[nodiscard]] bool readEmf(const CommandSpec& command, ParserMessage& messages, ExportEMFSpec& emf,
                           bool rootRequired);
[[nodiscard]] bool readEps(const CommandSpec& command, ParserMessage& messages, ExportEPSSpec& eps,
                           bool rootRequired);
[[nodiscard]] bool readJpg(const CommandSpec& command, ParserMessage& messages, ExportJPGSpec& jpg,
                           bool rootRequired);
[[nodiscard]] bool readPng(const CommandSpec& command, ParserMessage& messages, ExportPNGSpec& png,
                           bool rootRequired);
[[nodiscard]] bool readTif(const CommandSpec& command, ParserMessage& messages, ExportTIFSpec& tif,
                           bool rootRequired);
/// @}

}  // namespace vexa
