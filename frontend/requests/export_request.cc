#include "frontend/requests/export_request.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <string_view>
#include <system_error>

#include "backend/text/character_set.h"
#include "frontend/requests/entities.h"

namespace vexa::frontend {

namespace {

using Set = ExportSetting;
using Part = ExportAttributePart;

/// The settings of one element. A setting that was not made leaves its target alone.
class Settings {
  public:
    explicit Settings(const ExportElement& element) : element_(element) {}

    void text(Set setting, std::string& target) const {
        if (const auto* const found = find(setting)) target = textOf(*found);
    }
    void text(Set setting, std::optional<std::string>& target) const {
        if (const auto* const found = find(setting)) target = textOf(*found);
    }
    void flag(Set setting, bool& target) const {
        if (const auto* const found = find(setting)) target = found->text == "true";
    }
    /// `Target` is an enumeration in the order of the choice's numbers, or an optional one.
    template <class Enumeration, class Target>
    void choice(Set setting, Target& target) const {
        if (find(setting) != nullptr)
            target = static_cast<Enumeration>(static_cast<int>(number(setting, Part::value)));
    }
    void number(Set setting, double& target) const {
        if (find(setting) != nullptr) target = number(setting, Part::value);
    }
    /// A length in inches or millimetres.
    void length(Set setting, double& target) const {
        if (find(setting) == nullptr) return;
        const auto unit = static_cast<MEASUREMENT_TYPE>(static_cast<int>(number(setting, Part::unit)));
        target = number(setting, Part::value) *
                 (unit == MEASUREMENT_TYPE::MM ? kPointsOfMillimetre : kPointsOfInch);
    }
    [[nodiscard]] bool has(Set setting, Part part = Part::value) const {
        return find(setting, part) != nullptr;
    }
    [[nodiscard]] bool isTrue(Set setting, Part part) const {
        const auto* const found = find(setting, part);
        return found != nullptr && found->text == "true";
    }
    [[nodiscard]] double number(Set setting, Part part) const { return parsed<double>(setting, part); }
    [[nodiscard]] std::int64_t whole(Set setting) const { return parsed<std::int64_t>(setting, Part::value); }

  private:
    [[nodiscard]] const ExportAttribute* find(Set setting, Part part = Part::value) const {
        const auto& all = element_.attributes();
        const auto found = std::find_if(all.begin(), all.end(), [&](const ExportAttribute& each) {
            return each.setting == setting && each.part == part;
        });
        return found == all.end() ? nullptr : &*found;
    }
    [[nodiscard]] static std::string textOf(const ExportAttribute& attribute) {
        std::string text = toUtf8(attribute.text);
        return attribute.isEscaped() ? withoutEntities(text).value_or(text) : text;
    }
    template <class Number>
    [[nodiscard]] Number parsed(Set setting, Part part) const {
        const ExportAttribute* const found = find(setting, part);
        Number number{};
        if (found != nullptr) {
            const std::string& text = found->text;
            const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
            assert(result.ec == std::errc());
            static_cast<void>(result);
        }
        return number;
    }

    const ExportElement& element_;
};

void readMargins(const Settings& settings, Margins& margins) {
    settings.length(Set::topMargin, margins.top);
    settings.length(Set::bottomMargin, margins.bottom);
    settings.length(Set::leftMargin, margins.left);
    settings.length(Set::rightMargin, margins.right);
}

void read(const Settings& settings, DocExport& doc) {
    settings.text(Set::documentFile, doc.file);
    settings.flag(Set::notesAndCaptions, doc.notesAndCaptions);
    settings.choice<WideTables>(Set::wideTables, doc.wideTables);
    settings.length(Set::pageSizeWidth, doc.page.width);
    settings.length(Set::pageSizeHeight, doc.page.height);
    readMargins(settings, doc.margins);
    settings.flag(Set::pageBreaks, doc.pageBreaks);
}

void read(const Settings& settings, HtmlExport& html) {
    settings.text(Set::documentFile, html.file);
    settings.flag(Set::notesAndCaptions, html.notesAndCaptions);
    settings.choice<PageImageFormat>(Set::imageFormat, html.imageFormat);
    settings.flag(Set::styling, html.styling);
    settings.flag(Set::interactiveLayers, html.interactiveLayers);
}

void read(const Settings& settings, ReportExport& report) {
    settings.text(Set::documentFile, report.file);
    settings.text(Set::title, report.title);
    bool oneFile = false;
    settings.flag(Set::mht, oneFile);
    report.format = oneFile ? ReportFormat::mht : ReportFormat::html;
    settings.flag(Set::excludeTexts, report.excludeTexts);
    settings.flag(Set::excludeLogs, report.excludeLogs);
    settings.flag(Set::excludeNotes, report.excludeNotes);
    settings.flag(Set::excludeWarnings, report.excludeWarnings);
    settings.flag(Set::restyle, report.restyle);
}

void read(const Settings& settings, PdfExport& pdf) {
    settings.text(Set::documentFile, pdf.file);
    settings.flag(Set::embedBookmarks, pdf.embedBookmarks);
    settings.flag(Set::embedFonts, pdf.embedFonts);
}

void read(const Settings& settings, PptExport& ppt) {
    settings.text(Set::documentFile, ppt.file);
    settings.flag(Set::notesAndCaptions, ppt.notesAndCaptions);
    settings.choice<WideTables>(Set::wideTables, ppt.wideTables);
    settings.length(Set::slideSizeWidth, ppt.slide.width);
    settings.length(Set::slideSizeHeight, ppt.slide.height);
    readMargins(settings, ppt.margins);
    settings.flag(Set::slideTitles, ppt.slideTitles);
}

void read(const Settings& settings, TextExport& text) {
    settings.text(Set::documentFile, text.file);
    settings.flag(Set::notesAndCaptions, text.notesAndCaptions);
    settings.choice<PageImageFormat>(Set::imageFormat, text.imageFormat);
    settings.choice<TextEncoding>(Set::encoding, text.encoding);
    const std::int64_t width = settings.whole(Set::columnWidth);
    if (width > 0 && !settings.isTrue(Set::columnWidth, Part::autofit)) text.columnWidth = width;
    settings.choice<TextSeparator>(Set::separator, text.separator);
    settings.text(Set::rowBorder, text.rowBorder);
    settings.text(Set::columnBorder, text.columnBorder);
}

void read(const Settings& settings, WorkbookExport& book) {
    settings.text(Set::documentFile, book.file);
    settings.flag(Set::notesAndCaptions, book.notesAndCaptions);
    settings.choice<SheetOperation>(Set::operation, book.operation);
    settings.text(Set::sheet, book.sheet);
    settings.choice<SheetLocation>(Set::location, book.location);
    settings.text(Set::startCell, book.startCell);
}

void readSized(const Settings& settings, SizedPicture& picture) {
    settings.text(Set::imageRoot, picture.root);
    settings.number(Set::percentSize, picture.percentSize);
}

void read(const Settings& settings, BmpExport& bmp) {
    readSized(settings, bmp);
    settings.flag(Set::compress, bmp.compress);
}

void read(const Settings& settings, EmfExport& emf) { readSized(settings, emf); }

void read(const Settings& settings, EpsExport& eps) {
    settings.text(Set::imageRoot, eps.root);
    if (settings.has(Set::width)) {
        using Units = ExportEPSSpec::UNITS;
        const double width = settings.number(Set::width, Part::value);
        switch (static_cast<Units>(static_cast<int>(settings.number(Set::width, Part::unit)))) {
            case Units::PERCENT:
                eps.widthPercent = width;
                break;
            case Units::CENTIMETERS:
                eps.widthPoints = width * 10.0 * kPointsOfMillimetre;
                break;
            case Units::INCHES:
                eps.widthPoints = width * kPointsOfInch;
                break;
            case Units::POINTS:
                eps.widthPoints = width;
                break;
        }
    }
    settings.flag(Set::preview, eps.preview);
    settings.choice<FontHandling>(Set::fontHandling, eps.fontHandling);
}

void read(const Settings& settings, JpgExport& jpg) {
    readSized(settings, jpg);
    settings.flag(Set::grayscale, jpg.grayscale);
}

void read(const Settings& settings, PngExport& png) {
    using Depth = ExportPNGSpec::DEPTH;
    readSized(settings, png);
    Depth depth = Depth::SCREEN;
    settings.choice<Depth>(Set::depth, depth);
    if (depth != Depth::SCREEN) {
        png.depth = static_cast<PngDepth>(static_cast<int>(depth) - static_cast<int>(Depth::BLACKWHITE));
    }
}

void read(const Settings& settings, TifExport& tif) { readSized(settings, tif); }

template <class Format>
void readIfPresent(const ExportFormat& spec, std::optional<Format>& format) {
    if (spec.isOptionPresent()) read(Settings(spec), format.emplace());
}

void readCommon(const ExportSpec& spec, ExportRequest& request) {
    const Settings global(spec.global());
    global.text(Set::name, request.name);
    global.choice<PrintRule>(Set::printOption, request.print);
    const Settings contents(spec.contents());
    contents.choice<ExportedItems>(Set::exportType, request.items);
    contents.choice<ExportedLayers>(Set::layers, request.layers);
    contents.choice<ExportedLayers>(Set::modelViews, request.modelViews);
}

}  // namespace

ExportRequest exportRequestOf(const ExportSpec& spec) {
    ExportRequest request;
    readCommon(spec, request);
    readIfPresent(spec.doc(), request.doc);
    readIfPresent(spec.html(), request.html);
    readIfPresent(spec.report(), request.report);
    readIfPresent(spec.pdf(), request.pdf);
    readIfPresent(spec.ppt(), request.ppt);
    readIfPresent(spec.text(), request.text);
    readIfPresent(spec.xls(), request.xls);
    readIfPresent(spec.xlsx(), request.xlsx);
    readIfPresent(spec.xlsm(), request.xlsm);
    readIfPresent(spec.bmp(), request.bmp);
    readIfPresent(spec.emf(), request.emf);
    readIfPresent(spec.eps(), request.eps);
    readIfPresent(spec.jpg(), request.jpg);
    readIfPresent(spec.png(), request.png);
    readIfPresent(spec.tif(), request.tif);
    if (request.report) {
        for (const ExportUrl& url : spec.report().urls()) {
            request.report->links.push_back({toUtf8(url.address), toUtf8(url.label)});
        }
    }
    return request;
}

}  // namespace vexa::frontend
