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

void writeHtmlPage(const ExportTask& task, std::string& html) {
    const HtmlExport& request = *task.request.html;
    PageBodyOptions options;
    options.notesAndCaptions = request.notesAndCaptions;
    options.styling = request.styling;
    options.interactiveLayers = request.interactiveLayers;
    PagePictures pictures(task);
    PageBody body(task, options, pictures);
    std::string items;
    if (!body.append(items)) return;
    html = pageBeginning(task.surroundings.language, documentTitle(task.document));
    html.reserve(html.size() + items.size() + body.rules().size() + 4096);
    if (request.styling)
        html.append("<style>\n").append(pageStyle()).append(body.rules()).append("</style>\n");
    html += "</head>\n<body>\n";
    html += items;
    if (body.hasLayerLists()) html += layerScript();
    html += "</body>\n</html>\n";
}

}  // namespace vexa::frontend
