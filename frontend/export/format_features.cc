#include "frontend/export/format_features.h"

#include "frontend/export/html/html_features.h"
#include "frontend/export/pdf/pdf_features.h"
#include "frontend/export/report/report_features.h"
#include "frontend/export/slides/slides_features.h"
#include "frontend/export/text/text_features.h"
#include "frontend/export/word/word_features.h"
#include "frontend/export/xls/xls_features.h"
#include "frontend/export/xlsx/xlsx_features.h"

namespace vexa::frontend {

namespace {

constexpr std::array formats{
    &htmlFeatures, &reportFeatures, &textFeatures, &pdfFeatures,      &slidesFeatures,
    &xlsxFeatures, &xlsFeatures,    &wordFeatures, &richTextFeatures,
};

}  // namespace

std::span<const FormatFeatures* const> formatFeatures() { return formats; }

std::string_view wordsOf(const FeatureFate& fate) {
    if (!fate.words.empty()) return fate.words;
    switch (fate.fate) {
        case Fate::kept:
        case Fate::changed:
            return "yes";
        case Fate::dropped:
            return "no";
        case Fate::warned:
            break;
    }
    return "no, with a warning";
}

}  // namespace vexa::frontend
