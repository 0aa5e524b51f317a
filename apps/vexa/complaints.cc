#include "apps/vexa/complaints.h"

#include <iostream>
#include <utility>

#include "apps/vexa/diagnostics.h"
#include "backend/strings/dictionary.h"
#include "backend/text/text_width.h"

namespace vexa::program {

namespace {

Diagnostic aboutFile(int level, SystemText text, const std::vector<std::string>& arguments,
                     const std::string& file) {
    return {.code = diagnostic_code::kProgram,
            .level = level,
            .file = file,
            .text = composed(text, arguments),
            .key = std::string(text),
            .arguments = arguments};
}

}  // namespace

void complain(Diagnostic diagnostic, const std::string& sentence) {
    std::cout.flush();
    if (areDiagnosticsJson()) {
        if (diagnostic.code.empty()) diagnostic.code = diagnostic_code::kProgram;
        std::cerr << diagnosticLine(diagnostic) << std::flush;
        return;
    }
    std::cerr << "vexa: " << printableText(sentence.empty() ? diagnostic.text : sentence) << '\n';
}

void complain(const std::string& message) {
    complain(Diagnostic{.code = diagnostic_code::kProgram, .text = message});
}

void complain(SystemText text, const std::vector<std::string>& arguments, const std::string& file) {
    complain(aboutFile(kErrorLevel, text, arguments, file));
}

void warn(SystemText text, const std::vector<std::string>& arguments, const std::string& file) {
    complain(aboutFile(kWarningLevel, text, arguments, file));
}

}  // namespace vexa::program
