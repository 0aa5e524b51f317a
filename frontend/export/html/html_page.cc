#include "frontend/export/html/html_page.h"

#include "frontend/export/html/html_text.h"
#include "frontend/export/html/page_body.h"
#include "frontend/export/html/page_design.h"
#include "frontend/export/html/page_pictures.h"

namespace vexa::frontend {

std::string pageBeginning(const std::string& language, const std::string& title) {
    std::string html = "<!DOCTYPE html>\n<html lang=\"";
    appendHtml(html, language);
    html +=
        "\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>";
    appendHtml(html, title);
    return html + "</title>\n";
}

PackageResult writePieces(const ByteSink& out, std::string_view beginning, PackedText& items,
                          std::string_view end) {
    PackageResult result = out(beginning);
    if (result) result = items.release(out);
    return result ? out(end) : result;
}

PackageResult writeHtmlPage(const ExportTask& task, const ByteSink& out) {
    const HtmlExport& request = *task.request.html;
    PageBodyOptions options;
    options.notesAndCaptions = request.notesAndCaptions;
    options.styling = request.styling;
    options.interactiveLayers = request.interactiveLayers;
    PagePictures pictures(task);
    PageBody body(task, options, pictures);
    PackedText items(bytesHeldUnpacked(task.plan));
    if (!body.append(items)) return {};
    std::string beginning = pageBeginning(task.surroundings.language, documentTitle(task.document));
    if (request.styling)
        beginning.append("<style>\n").append(pageStyle()).append(body.rules()).append("</style>\n");
    beginning += "</head>\n<body>\n";
    std::string end;
    if (body.hasLayerLists()) end = layerScript();
    end += "</body>\n</html>\n";
    return writePieces(out, beginning, items, end);
}

}  // namespace vexa::frontend
