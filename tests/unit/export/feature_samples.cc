#include "tests/unit/export/feature_samples.h"

#include <stdexcept>
#include <string>

#include "tests/unit/export/export_samples.h"

namespace vexa::frontend {

namespace {

/// Two rows and a column, with other cells, labels, or further keys.
struct SmallTable {
    std::string cells = "1, 2";
    std::string rows = R"("a", "b")";
    std::string column = R"("c")";
    std::string more;

    [[nodiscard]] std::string json() const {
        return R"({"type": "table", "label": "T", "rows": [{"label": "R", "categories": [)" + rows +
               R"(]}], "columns": [{"label": "C", "categories": [)" + column + R"(]}], "cells": [)" + cells +
               "]" + more + "}";
    }
};

/// A pair of items, written as results are.
struct Pair {
    std::string with;
    std::string without;
};

Pair tables(const SmallTable& with) { return {with.json(), SmallTable{}.json()}; }

Pair cells(const std::string& with) { return tables({with, R"("a", "b")", R"("c")", ""}); }

/// Tables with a look of one element, and with an empty one.
Pair looks(const std::string& element) {
    const auto withLook = [](const std::string& inside) {
        return SmallTable{"1, 2", R"("a", "b")", R"("c")",
                          R"(, "look": "<tableProperties name='l'>)" + inside + R"(</tableProperties>")"}
            .json();
    };
    return {withLook(element), withLook("")};
}

Pair layers() {
    const auto withPrinting = [](const std::string& printing) {
        return SmallTable{
            "1, 2, 3, 4", R"("a", "b")", R"("c")",
            R"(, "layers": [{"label": "L", "categories": ["x", "y"]}], "printLayers": ")" + printing + "\""}
            .json();
    };
    return {withPrinting("all"), withPrinting("visible")};
}

std::string text(const std::string& more = {}) { return R"({"type": "text", "text": "t")" + more + "}"; }

std::string chart(const std::string& more) {
    return R"({"type": "chart", "label": "P", "png": "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==")" +
           more + "}";
}

std::string drawing(const std::string& color) {
    return R"({"type": "chart", "label": "P", "svg": "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'><rect width='30' height='10' fill=')" +
           color + R"('/></svg>"})";
}

std::string header(const std::string& label) {
    return R"({"type": "header", "label": ")" + label + R"(", "items": [)" + text() + "]}";
}

Pair itemsOf(Feature feature) {
    switch (feature) {
        case Feature::fonts:
            return cells(R"({"value": 1, "font": "Liberation Mono"}, 2)");
        case Feature::fontSizes:
            return cells(R"({"value": 1, "size": 20}, 2)");
        case Feature::textColors:
            return cells(R"({"value": 1, "color": "#cc0000"}, 2)");
        case Feature::backgrounds:
            return cells(R"({"value": 1, "background": "#ffee88"}, 2)");
        case Feature::emphasis:
            return cells(R"({"value": 1, "bold": true}, 2)");
        case Feature::alignment:
            return looks("<area name='data' align='center'/>");
        case Feature::borders:
            return looks("<border place='top'/>");
        case Feature::rowBands:
            return looks("<rowBanding rows='1' background='#edf2f7'/>");
        case Feature::columnWidths:
            return tables({"1, 2", R"("a", "b")", R"({"label": "c", "width": 90})", ""});
        case Feature::spans:
            return tables({"1, 2", R"({"group": "g", "categories": ["a", "b"]})", R"("c")", ""});
        case Feature::numbers:
            return {SmallTable{R"("1", "22")", R"("a", "b")", R"("c")", ""}.json(),
                    SmallTable{"1, 22", R"("a", "b")", R"("c")", ""}.json()};
        case Feature::numberFormats:
            return cells(R"({"value": 1, "format": "F8.2"}, 2)");
        case Feature::footnotes:
            return tables({R"({"value": 1, "footnotes": [1]}, 2)", R"("a", "b")", R"("c")",
                           R"(, "footnotes": ["Note."])"});
        case Feature::captions:
            return tables({"1, 2", R"("a", "b")", R"("c")", R"(, "caption": "Weighted.")"});
        case Feature::layers:
            return layers();
        case Feature::headings:
            return {header("One"), header("Two")};
        case Feature::pageTitles:
            return {R"({"type": "pageTitle", "text": "Draft"}, )" + text(), text()};
        case Feature::pageBreaks:
            return {text() + "," + text(R"(, "pageBreakBefore": true)"), text() + "," + text()};
        case Feature::pictures:
            return {text() + "," + chart(""), text()};
        case Feature::vectorPictures:
            return {drawing("#4477aa"), drawing("#aa4477")};
        case Feature::pictureSizes:
            return {chart(R"(, "width": 90)"), chart("")};
        case Feature::alternativeTexts:
            return {chart(R"(, "alternativeText": "One dot")"), chart(R"(, "alternativeText": "A dot")")};
        case Feature::documentName:
        case Feature::documentLanguage:
            return {text(), text()};
        case Feature::unknownItems:
            return {R"({"type": "hologram", "label": "U"}, )" + text(), text()};
    }
    throw std::logic_error("a feature without a sample");
}

}  // namespace

FeatureSample sampleOf(Feature feature) {
    FeatureSample sample;
    const Pair items = itemsOf(feature);
    fill(sample.with, items.with);
    fill(sample.without, items.without);
    sample.with.setName(feature == Feature::documentName ? "April" : "March");
    sample.without.setName("March");
    if (feature == Feature::documentLanguage) sample.language = "de";
    return sample;
}

}  // namespace vexa::frontend
