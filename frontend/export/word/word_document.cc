#include "frontend/export/word/word_document.h"

#include <algorithm>
#include <string>

#include "backend/strings/dictionary.h"
#include "frontend/export/word/content_builder.h"
#include "frontend/export/word/docx/docx_writer.h"
#include "frontend/export/word/rtf/rtf_writer.h"

namespace vexa::frontend {

namespace {

std::string extensionOf(std::string_view file) {
    const std::size_t name = file.find_last_of("/\\");
    if (name != std::string_view::npos) file.remove_prefix(name + 1);
    const std::size_t point = file.rfind('.');
    std::string extension(point == std::string_view::npos ? std::string_view() : file.substr(point));
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char each) {
        return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
    });
    return extension;
}

WordPage pageOf(const ExportTask& task) {
    bool isChanged = false;
    const WordPage page = wordPageOf(*task.request.doc, isChanged);
    if (isChanged) {
        task.report.note(translated(
            "The page that was asked for is not possible in a text document and was adapted: each side has at least half an inch and at most 22 inches, and three tenths of it are left between the margins."_text
                .key()));
    }
    return page;
}

}  // namespace

bool isRichText(std::string_view file) {
    const std::string extension = extensionOf(file);
    return extension == ".rtf" || extension == ".doc";
}

void writeWordDocument(const ExportTask& task) {
    const WordPage page = pageOf(task);
    const std::string& file = task.request.doc->file;
    std::size_t number = 0;
    PackageResult result = task.files.begin(file, number);
    const std::string title = documentTitle(task.document);
    const std::string& language = task.surroundings.language;
    const auto write = [&](auto&& writer) {
        if (ContentBuilder(task, page, writer).build()) result = writer.finish();
    };
    if (result && isRichText(file)) {
        write(RtfWriter(task.files.sink(number), title, language, page, bytesHeldUnpacked(task.plan)));
    } else if (result) {
        write(DocxWriter(task.files.sink(number), title, language, page));
    }
    if (result) {
        task.files.setMain(number);
    } else {
        task.report.failToWrite(file, result);
    }
}

}  // namespace vexa::frontend
