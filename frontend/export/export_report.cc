#include "frontend/export/export_report.h"

#include <array>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "backend/strings/memory_text.h"

namespace vexa::frontend {

namespace {

/// In the order of the enumerators.
constexpr std::array<SystemText, featureCount> featureTexts{"fonts"_text,
                                                            "font sizes"_text,
                                                            "text colors"_text,
                                                            "backgrounds"_text,
                                                            "bold, italic and underlined text"_text,
                                                            "alignment"_text,
                                                            "lines"_text,
                                                            "bands of rows"_text,
                                                            "column widths"_text,
                                                            "labels over several rows or columns"_text,
                                                            "numbers as numbers"_text,
                                                            "display formats"_text,
                                                            "footnotes"_text,
                                                            "captions"_text,
                                                            "layers"_text,
                                                            "headings"_text,
                                                            "page titles"_text,
                                                            "page breaks"_text,
                                                            "pictures"_text,
                                                            "vector pictures"_text,
                                                            "sizes of pictures"_text,
                                                            "alternative texts"_text,
                                                            "the name of the document"_text,
                                                            "the language of the document"_text,
                                                            "items of later versions"_text};

}  // namespace

SystemText featureText(Feature feature) { return featureTexts[static_cast<std::size_t>(feature)]; }

void ExportReport::warn(ExportWarning code, const ExportedItem& item) {
    if (warned_.emplace(code, item.number).second) warnings_.push_back({code, item.number, item.label});
}

void ExportReport::lose(Feature feature, const ExportedItem& item) {
    LostFeatures& lost = losses_[item.number];
    if (lost.features.insert(feature).second) lost.label = item.shortLabel();
}

std::vector<std::string> ExportReport::logTexts() const {
    std::vector<std::string> texts = notes_;
    for (const auto& [number, lost] : losses_) {
        std::string names;
        for (const Feature feature : lost.features) {
            names += (names.empty() ? "" : ", ") + translated(featureText(feature).key());
        }
        texts.push_back(composed("Item ^1 (^2): this format cannot show everything of it. Lost: ^3."_text,
                                 {std::to_string(number), lost.label, names}));
    }
    return texts;
}

void ExportReport::note(std::string text) {
    if (noted_.insert(text).second) notes_.push_back(std::move(text));
}

void ExportReport::fail(ExportError error, std::string reason) {
    if (failed()) return;
    error_ = error;
    reason_ = std::move(reason);
}

void ExportReport::failToWrite(const std::string& file, const PackageResult& result) {
    if (result.problem == PackageProblem::noMemory) {
        fail(ExportError::other, translated(notEnoughMemory.key()));
        return;
    }
    fail(ExportError::cannotWrite,
         composed("The file ^1 cannot be written: ^2"_text, {toNativePath(file), result.shownDetail()}));
}

}  // namespace vexa::frontend
