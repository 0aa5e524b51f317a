#include "frontend/export/report/report_page.h"

#include <vector>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/export/html/html_page.h"
#include "frontend/export/html/html_text.h"
#include "frontend/export/html/page_body.h"
#include "frontend/export/html/page_pictures.h"
#include "frontend/export/picture_files.h"
#include "frontend/export/report/mime_file.h"
#include "frontend/export/report/report_design.h"

namespace vexa::frontend {

namespace {

/// The outline as nested lists of links.
class OutlineWriter {
  public:
    explicit OutlineWriter(std::string& html) : html_(html) {}

    void write(const std::vector<PageHeading>& headings) {
        html_ += "<ul>\n";
        for (const PageHeading& heading : headings) {
            if (!closeDownTo(heading.depth) && !open_.empty()) html_ += "\n<ul>\n";
            open_.push_back(heading.depth);
            html_ += "<li><span class=\"row\"><a href=\"#" + heading.id + "\">";
            appendHtml(html_, inOneLine(heading.text));
            html_ += "</a></span>";
        }
        closeDownTo(0);
        html_ += "</ul>\n";
    }

  private:
    /// Ends the items that are as deep or deeper, and the lists between them; whether there were any.
    bool closeDownTo(std::size_t depth) {
        bool any = false;
        for (; !open_.empty() && open_.back() >= depth; open_.pop_back()) {
            html_ += any ? "</ul>\n</li>\n" : "</li>\n";
            any = true;
        }
        return any;
    }

    static std::string inOneLine(std::string text) {
        for (char& each : text) {
            if (each == '\n' || each == '\r') each = ' ';
        }
        return text;
    }

    std::string& html_;
    std::vector<std::size_t> open_;
};

/// Whether a link leads to a page, and runs nothing.
bool isAddress(std::string_view address) {
    const std::size_t colon = address.find(':');
    const std::size_t other = address.find_first_of("/?#");
    if (colon == std::string_view::npos || (other != std::string_view::npos && other < colon)) return true;
    std::string scheme(address.substr(0, colon));
    for (char& each : scheme) each = static_cast<char>(each | 0x20);
    return scheme == "http" || scheme == "https" || scheme == "mailto" || scheme == "ftp" || scheme == "file";
}

/// Of what pages show.
std::string_view typeOf(PictureFormat format) {
    if (format == PictureFormat::jpg) return "image/jpeg";
    return format == PictureFormat::bmp ? "image/bmp" : "image/png";
}

class ReportWriter {
  public:
    explicit ReportWriter(const ExportTask& task) : task_(task), request_(*task.request.report) {}

    PackageResult write(const ByteSink& out) {
        const bool isPacked = request_.format == ReportFormat::mht;
        MimeFile packed;
        PagePictures pictures(task_, isPacked ? PagePictures::Address([&packed](const std::string& png) {
                                  return packed.addPicture(png, "image/png");
                              })
                                              : PagePictures::Address());
        if (isPacked) {
            task_.pictures.packInto([&packed](const std::string& content, PictureFormat format) {
                return packed.addPicture(content, typeOf(format));
            });
        }
        PageBodyOptions options;
        options.restyle = request_.restyle;
        options.firstHeading = 2;
        PageBody body(task_, options, pictures);
        PackedText items(bytesHeldUnpacked(task_.plan));
        if (!body.append(items)) return {};
        if (!isPacked) return writePieces(out, beginning(body), items, end(body));
        return packed.write(out, title(), [&](const ByteSink& page) {
            return writePieces(page, beginning(body), items, end(body));
        });
    }

  private:
    /// TITLE=FILENAME sends the document's file as the command has it; a reader knows it in the system's
    /// form.
    [[nodiscard]] std::string title() const {
        if (!request_.title || request_.title->empty()) return documentTitle(task_.document);
        return *request_.title == request_.file ? toNativePath(request_.file) : *request_.title;
    }

    [[nodiscard]] std::string beginning(const PageBody& body) const {
        std::string html = pageBeginning(task_.surroundings.language, title());
        html.append("<style>\n").append(reportStyle());
        html.append(request_.restyle ? restyledStyle() : ownLooksStyle());
        html.append(body.rules()).append("</style>\n</head>\n<body>\n");
        appendHead(html);
        appendSide(html, body);
        return html += "<main class=\"main\" id=\"main\">\n";
    }

    [[nodiscard]] static std::string end(const PageBody& body) {
        std::string html = "</main>\n";
        if (!body.headings().empty()) html.append(reportScript());
        return html += "</body>\n</html>\n";
    }

    void appendHead(std::string& html) const {
        html += "<a class=\"skip\" href=\"#main\">";
        appendHtml(html, translated("Skip to the contents"_text.key()));
        html += "</a>\n<header class=\"head\">\n<h1>";
        appendHtml(html, title());
        html += "</h1>\n";
        appendLinks(html);
        html += "<button class=\"theme\" type=\"button\" hidden>";
        appendHtml(html, translated("Light or dark"_text.key()));
        html += "</button>\n</header>\n";
    }

    void appendLinks(std::string& html) const {
        std::string links;
        for (const ReportLink& link : request_.links) {
            if (!isAddress(link.address)) {
                task_.report.note(
                    composed("The address ^1 is no link to a page; the report shows its label alone."_text,
                             {link.address}));
                links += "<li>";
                appendHtml(links, link.label);
                links += "</li>\n";
                continue;
            }
            links += "<li><a href=\"";
            appendHtml(links, link.address);
            links += "\">";
            appendHtml(links, link.label.empty() ? link.address : link.label);
            links += "</a></li>\n";
        }
        if (!links.empty()) html += "<ul>\n" + links + "</ul>\n";
    }

    static void appendSide(std::string& html, const PageBody& body) {
        if (body.headings().empty()) return;
        html += "<nav class=\"side\" aria-label=\"";
        appendHtml(html, translated("Outline"_text.key()));
        html += "\">\n<label hidden>";
        appendHtml(html, translated("Search in the outline"_text.key()));
        html += "<input type=\"search\"></label>\n<p class=\"empty\" hidden>";
        appendHtml(html, translated("Nothing found"_text.key()));
        html += "</p>\n";
        OutlineWriter(html).write(body.headings());
        html += "</nav>\n";
    }

    const ExportTask& task_;
    const ReportExport& request_;
};

}  // namespace

PackageResult writeReport(const ExportTask& task, const ByteSink& out) {
    return ReportWriter(task).write(out);
}

}  // namespace vexa::frontend
