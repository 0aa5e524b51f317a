#include "frontend/export/pdf/picture_forms.h"

#include <cairo-pdf.h>

#include <exception>
#include <map>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/drawing/cairo_drawing.h"
#include "frontend/drawing/drawing_limits.h"
#include "frontend/drawing/picture_style.h"
#include "frontend/drawing/qpdf_library.h"
#include "frontend/export/pdf/named_fonts.h"

namespace vexa::frontend::pdf {

namespace {

constexpr int deepestObject = 100;

cairo_status_t appendBytes(void* to, const unsigned char* bytes, unsigned int length) {
    static_cast<std::string*>(to)->append(reinterpret_cast<const char*>(bytes), length);
    return CAIRO_STATUS_SUCCESS;
}

/// A file of one page, behind a byte that says whether it is one; else the reason.
std::string drawPage(const Picture& picture, const ItemSize& size) {
    std::string page = "+";
    std::string reason;
    const CairoSurface surface(
        cairo_pdf_surface_create_for_stream(appendBytes, &page, size.width, size.height));
    {
        const CairoContext context(cairo_create(surface.get()));
        if (!drawOnCairo(context.get(), picture, size.width, size.height, reason)) return "-" + reason;
        cairo_show_page(context.get());
    }
    cairo_surface_finish(surface.get());
    if (!isWell(cairo_surface_status(surface.get()), reason)) return "-" + reason;
    return page;
}

/// Copies objects of another file, with what they refer to.
class ObjectCopier {
  public:
    explicit ObjectCopier(PdfFile& file) : file_(file) {}

    PdfObject copy(QPDFObjectHandle object) {
        const PdfObject number = file_.reserve();
        if (object.isIndirect()) copied_[object.getObjGen()] = number;
        if (!object.isStream()) {
            file_.write(number, bodyOf(object, 0));
            return number;
        }
        QPDFObjectHandle dictionary = object.getDict();
        std::string entries;
        for (const std::string& key : dictionary.getKeys()) {
            if (key != "/Length") entries += key + " " + textOf(dictionary.getKey(key), 0);
        }
        const std::shared_ptr<Buffer> data = object.getRawStreamData();
        const std::string_view bytes(reinterpret_cast<const char*>(data->getBuffer()), data->getSize());
        file_.writeStream(number, entries, bytes, !dictionary.hasKey("/Filter"));
        return number;
    }

  private:
    std::string textOf(const QPDFObjectHandle& object, int depth) {
        if (object.isIndirect()) {
            const auto found = copied_.find(object.getObjGen());
            const PdfObject number = found == copied_.end() ? copy(object) : found->second;
            return std::to_string(number) + " 0 R";
        }
        return depth > deepestObject ? "null" : bodyOf(object, depth);
    }

    std::string bodyOf(QPDFObjectHandle object, int depth) {
        std::string text;
        if (object.isArray()) {
            for (const QPDFObjectHandle& each : object.getArrayAsVector()) {
                text += (text.empty() ? "[" : " ") + textOf(each, depth + 1);
            }
            return text.empty() ? "[]" : text + "]";
        }
        if (!object.isDictionary()) return object.unparse();
        for (const std::string& key : object.getKeys()) {
            text += key + " " + textOf(object.getKey(key), depth + 1);
        }
        return "<<" + text + ">>";
    }

    PdfFile& file_;
    std::map<QPDFObjGen, PdfObject> copied_;
};

}  // namespace

PageDrawing::PageDrawing(const Picture& picture, std::string rules, const ItemSize& size, bool sharesLittle)
    : picture_(picture),
      rules_(std::move(rules)),
      size_(size),
      work_([this] { return draw(); }, limitsForPicture(picture, 0, sharesLittle)) {}

std::string PageDrawing::draw() const {
    if (picture_.form != PictureForm::svg || rules_.empty()) return drawPage(picture_, size_);
    return drawPage({picture_.form, applyRules(picture_.bytes, rules_), picture_.width, picture_.height},
                    size_);
}

std::string PageDrawing::finish(std::string& reason) {
    std::string page;
    switch (finishWell(work_, page)) {
        case WorkEnd::done:
            break;
        case WorkEnd::tooLong:
            reason = composed("Drawing it took longer than ^1 seconds."_text,
                              {std::to_string(WorkLimits().seconds)});
            return {};
        case WorkEnd::crashed:
            reason = translated("Drawing it took more memory than a picture may take, or failed."_text);
            return {};
        case WorkEnd::noProcess:
            reason = translated("The system gave no process to draw it in."_text);
            return {};
    }
    const bool isPage = page.front() == '+';
    page.erase(0, 1);
    if (isPage) return page;
    reason = page.empty() ? translated("It cannot be drawn."_text) : page;
    return {};
}

PictureObject addPictureForm(PdfFile& file, PageDrawing& drawing, bool namesFonts) {
    PictureObject drawn;
    const std::string page = drawing.finish(drawn.reason);
    if (page.empty()) return drawn;
    try {
        QPDF source;
        source.setSuppressWarnings(true);
        source.processMemoryFile("picture", page.data(), page.size());
        std::vector<QPDFPageObjectHelper> pages = QPDFPageDocumentHelper(source).getAllPages();
        if (pages.size() == 1) {
            QPDFObjectHandle form = pages[0].getFormXObjectForPage();
            QPDFObjectHandle resources = form.getDict().getKey("/Resources");
            drawn.holdsFonts =
                namesFonts ? !nameFonts(source) : resources.isDictionary() && resources.hasKey("/Font");
            drawn.object = ObjectCopier(file).copy(form);
            return drawn;
        }
        drawn.reason = translated("It cannot be drawn."_text);
    } catch (const std::exception& problem) {
        drawn.reason = problem.what();
    }
    return drawn;
}

}  // namespace vexa::frontend::pdf
