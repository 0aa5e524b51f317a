// Exports to PDF, tagged, of documents of 100 to 10,000 tables of 40 x 8 numbers: time and memory of a table
// must not depend on their number. Beside direct calls of cairo and pango that draw the same cells untagged,
// with a layout for each cell, and with one that is used again; memory beside that of the document.
//
// LibreOffice and Chromium, which take long, are run by hand on what `vexa export` makes as HTML of the same
// document.

#include <benchmark/benchmark.h>
#include <cairo-pdf.h>
#include <pango/pangocairo.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "bench/measure.h"
#include "bench/process_memory.h"
#include "bench/ratios.h"
#include "bench/study_tables.h"
#include "frontend/document/viewer_document.h"
#include "frontend/export/export_document.h"

namespace vexa::bench {

namespace {

using frontend::ViewerDocument;

void write(const ViewerDocument& document, const std::string& file) {
    frontend::ExportRequest request;
    request.pdf.emplace();
    request.pdf->file = file;
    if (!exportDocument(document, request, {}).response.success) std::abort();
}

void exportAll(benchmark::State& state) {
    const ScratchFolder folder;
    const ViewerDocument document = documentOf(state.range(0));
    measure(state, "pdf/" + std::to_string(state.range(0)), state.range(0),
            [&] { write(document, folder / "pages"); });
}

/// Draws texts one after the other on pages of cairo's.
class DirectPages {
  public:
    DirectPages(const std::string& file, bool usesLayoutAgain)
        : surface_(cairo_pdf_surface_create(file.c_str(), 595.28, 841.89)),
          cairo_(cairo_create(surface_)),
          font_(pango_font_description_from_string("sans-serif")),
          layout_(usesLayoutAgain ? pango_cairo_create_layout(cairo_) : nullptr) {
        pango_font_description_set_absolute_size(font_, 9 * PANGO_SCALE);
        if (layout_ != nullptr) pango_layout_set_font_description(layout_, font_);
    }
    ~DirectPages() {
        if (layout_ != nullptr) g_object_unref(layout_);
        pango_font_description_free(font_);
        cairo_destroy(cairo_);
        cairo_surface_finish(surface_);
        cairo_surface_destroy(surface_);
    }
    DirectPages(const DirectPages&) = delete;
    DirectPages& operator=(const DirectPages&) = delete;

    /// To the left of `x` when it is a number.
    void draw(double x, double y, const char* text, bool isNumber) {
        PangoLayout* layout = layout_;
        if (layout == nullptr) {
            layout = pango_cairo_create_layout(cairo_);
            pango_layout_set_font_description(layout, font_);
        }
        pango_layout_set_text(layout, text, -1);
        int width = 0;
        if (isNumber) pango_layout_get_size(layout, &width, nullptr);
        cairo_move_to(cairo_, x - static_cast<double>(width) / PANGO_SCALE, y);
        pango_cairo_show_layout(cairo_, layout);
        if (layout_ == nullptr) g_object_unref(layout);
    }
    void endPage() { cairo_show_page(cairo_); }

  private:
    cairo_surface_t* surface_;
    cairo_t* cairo_;
    PangoFontDescription* font_;
    PangoLayout* layout_;
};

void drawTable(DirectPages& pages, std::size_t seed, const StudyValues& values) {
    constexpr double left = 70;
    constexpr double columnWidth = 50;
    constexpr double lineHeight = 12.5;
    double y = 70;
    pages.draw(left, y, titleOf(seed).c_str(), false);
    y += lineHeight;
    for (std::size_t column = 0; column < kStudyColumns; ++column) {
        pages.draw(left + columnWidth * static_cast<double>(column + 2), y,
                   ("Statistic " + std::to_string(column)).c_str(), true);
    }
    std::array<char, 64> digits{};
    for (std::size_t row = 0; row < kStudyRows; ++row) {
        y += lineHeight;
        pages.draw(left, y, ("Variable " + std::to_string(row)).c_str(), false);
        for (std::size_t column = 0; column < kStudyColumns; ++column) {
            std::snprintf(digits.data(), digits.size(), "%.2f", values[row * kStudyColumns + column]);
            pages.draw(left + columnWidth * static_cast<double>(column + 2), y, digits.data(), true);
        }
    }
    pages.endPage();
}

void drawDirectly(benchmark::State& state, const std::string& name, bool usesLayoutAgain) {
    const ScratchFolder folder;
    measure(state, name + "/" + std::to_string(state.range(0)), state.range(0), [&] {
        DirectPages pages(folder / "pages", usesLayoutAgain);
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            const auto seed = static_cast<std::size_t>(i);
            drawTable(pages, seed, measured(seed));
        }
    });
}

void makeAlone(const Arguments& arguments) {
    documentAlone() = std::make_unique<ViewerDocument>(documentOf(std::stoll(arguments.at(0))));
}

/// What an export takes beside the document, and what the document itself takes.
void memoryOf(benchmark::State& state) {
    const ScratchFolder folder;
    const std::string count = std::to_string(state.range(0));
    double beside = 0;
    double document = 0;
    for (auto _ : state) {
        beside = static_cast<double>(peakMemoryOf("export pdf", {count, folder / "pages"}));
        document = static_cast<double>(peakMemoryOf("document for pdf", {count}));
    }
    const auto each = static_cast<double>(state.range(0));
    state.counters["bytes each"] = beside / each;
    remember("pdf memory/" + count, (beside + document) / each);
    remember("pdf document memory/" + count, document / each);
}

[[maybe_unused]] const bool registered = [] {
    registerLoneWork("export pdf",
                     {makeAlone, [](const Arguments& given) { write(*documentAlone(), given.at(1)); }});
    registerLoneWork("document for pdf", {[](const Arguments&) {}, makeAlone});
    benchmark::RegisterBenchmark("ExportPdf", exportAll)
        ->Arg(100)
        ->Arg(1000)
        ->Arg(10000)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ExportPdfMemory", memoryOf)
        ->Arg(1000)
        ->Arg(10000)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("PdfByLayouts", drawDirectly, "layouts", false)
        ->Arg(1000)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("PdfByOneLayout", drawDirectly, "one layout", true)
        ->Arg(1000)
        ->Unit(benchmark::kMillisecond);
    const std::string tables = "ns per table of 40 x 8, ";
    compareAtEnd(tables + "PDF tagged / cairo and pango untagged, a layout a cell", "pdf/1000",
                 "layouts/1000");
    compareAtEnd(tables + "PDF tagged / cairo and pango untagged, one layout", "pdf/1000", "one layout/1000");
    compareAtEnd(tables + "PDF: 10,000 / 100 tables", "pdf/10000", "pdf/100");
    for (const std::string count : {"/1000", "/10000"}) {
        compareAtEnd("bytes per table, PDF" + count + " at its peak / document", "pdf memory" + count,
                     "pdf document memory" + count);
    }
    return true;
}();

}  // namespace

}  // namespace vexa::bench
