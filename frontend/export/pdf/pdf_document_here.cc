#include "frontend/export/pdf/pdf_document_here.h"

#include <algorithm>
#include <set>

#include "backend/strings/dictionary.h"
#include "backend/text/utf8.h"
#include "frontend/drawing/general_fonts.h"
#include "frontend/export/pdf/item_pages.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {

namespace {

using pdf::appendReference;
using pdf::appendTextString;
using pdf::ItemPages;
using pdf::PageFlow;
using pdf::PdfFile;
using pdf::PdfFonts;
using pdf::PdfObject;
using pdf::StructureTree;
using pdf::TextShaper;

constexpr std::string_view producer = "Vexa Output";

std::string languageTag(std::string language) {
    std::replace(language.begin(), language.end(), '_', '-');
    return language.empty() ? "en" : language;
}

/// What the file says of itself, for programs that read nothing else of it.
std::string metadata(const std::string& title, const std::string& language) {
    std::string xml =
        "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
        "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
        "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
        "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
        "xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\"><dc:format>application/pdf</dc:format>"
        "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">";
    appendXmlText(xml, title, XmlEscapes::replacing);
    xml += "</rdf:li></rdf:Alt></dc:title><dc:language><rdf:Bag><rdf:li>" + language +
           "</rdf:li></rdf:Bag></dc:language><pdf:Producer>" + std::string(producer) +
           "</pdf:Producer></rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end=\"r\"?>";
    return xml;
}

/// "U+4E2D 中, U+6587 文"
std::string listOf(const std::set<char32_t>& characters) {
    constexpr std::size_t most = 60;
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string list;
    std::size_t count = 0;
    for (const char32_t each : characters) {
        if (count++ == most) return list + ", …";
        if (!list.empty()) list += ", ";
        list += "U+";
        for (int shift = each > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4) {
            const auto digit = static_cast<std::size_t>(each >> static_cast<unsigned int>(shift) & 0xFU);
            if (shift < 20 || digit != 0) list += digits[digit];
        }
        list += ' ';
        appendUtf8(list, each);
    }
    return list;
}

class PdfDocument {
  public:
    PdfDocument(const ExportTask& task, const ByteSink& sink)
        : task_(task),
          language_(languageTag(task.surroundings.language)),
          file_(sink),
          shaper_(fonts_, language_, task.request.pdf->embedFonts),
          structure_(file_),
          fontsObject_(file_.reserve()),
          flow_(file_, structure_, shaper_, fonts_, fontsObject_),
          items_(task, file_, shaper_, structure_, flow_) {}

    PackageResult write() {
        if (!items_.write()) return {};
        const PdfObject pages = flow_.finish();
        file_.write(fontsObject_, "<<" + fonts_.write(file_) + ">>");
        noteFonts();
        const std::string title = documentTitle(task_.document);
        std::string information = "<</Producer";
        appendTextString(information, producer);
        information += "/Title";
        appendTextString(information, title);
        const PdfObject informationObject = file_.add(information + ">>");
        return file_.finish(file_.add(catalog(pages, title)), informationObject);
    }

  private:
    std::string catalog(PdfObject pages, const std::string& title) {
        std::string text = "<</Type/Catalog/Pages ";
        appendReference(text, pages);
        text += "/Lang";
        appendTextString(text, language_);
        text += "/MarkInfo<</Marked true>>/ViewerPreferences<</DisplayDocTitle true>>/StructTreeRoot ";
        appendReference(text, structure_.finish());
        const PdfObject bookmarks = task_.request.pdf->embedBookmarks ? items_.bookmarks().write(file_) : 0;
        if (bookmarks != 0) {
            text += "/PageMode/UseOutlines/Outlines ";
            appendReference(text, bookmarks);
        }
        const PdfObject about = file_.reserve();
        // Not compressed, so that programs find it that know nothing of the format.
        file_.writeStream(about, "/Type/Metadata/Subtype/XML", metadata(title, language_), false);
        text += "/Metadata ";
        appendReference(text, about);
        return text + ">>";
    }

    void noteFonts() {
        if (!shaper_.missing().empty()) {
            task_.report.note(
                composed("No installed font has these characters: ^1"_text, {listOf(shaper_.missing())}));
        }
        const bool embeds = task_.request.pdf->embedFonts;
        if (!embeds && (shaper_.hasEmbeddedAllTheSame() || items_.picturesHoldFonts())) {
            task_.report.note(translated(
                "In spite of EMBEDFONTS=NO the file holds fonts of texts that the name of a font alone does not show."_text
                    .key()));
        }
    }

    const ExportTask& task_;
    std::string language_;
    PdfFile file_;
    PdfFonts fonts_;
    TextShaper shaper_;
    StructureTree structure_;
    PdfObject fontsObject_;
    PageFlow flow_;
    ItemPages items_;
};

}  // namespace

PackageResult writePdfHere(const ExportTask& task, const ByteSink& sink) {
    settleGeneralFonts();
    return PdfDocument(task, sink).write();
}

}  // namespace vexa::frontend

void vexaWritePdf(const vexa::frontend::ExportTask& task, const vexa::frontend::ByteSink& sink,
                  vexa::frontend::PackageResult& result) {
    result = vexa::frontend::writePdfHere(task, sink);
}
