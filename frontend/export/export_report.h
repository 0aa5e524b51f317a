// What an export could not do in full. Feeds the answer to the command, the log, and the table of
// docs/exports.md.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "backend/text/system_text.h"
#include "frontend/export/export_plan.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

/// The warnings that the answer to an export has codes for.
enum class ExportWarning : std::uint8_t {
    longRowLabel = 0,  ///< a row label takes more than half the page's width
    columnsCut = 1,    ///< columns were left out or cut
    textsCut = 2       ///< texts were cut
};

/// What a document can hold and a format may be unable to show.
enum class Feature : std::uint8_t {
    fonts,
    fontSizes,
    textColors,
    backgrounds,
    emphasis,  ///< bold, italic, underline
    alignment,
    borders,
    rowBands,
    columnWidths,
    spans,  ///< labels over several rows or columns
    numbers,
    numberFormats,
    footnotes,
    captions,
    layers,
    headings,
    pageTitles,
    pageBreaks,
    pictures,
    vectorPictures,
    pictureSizes,
    alternativeTexts,
    documentName,
    documentLanguage,
    unknownItems
};
inline constexpr std::size_t featureCount = 25;

/// How an export failed, by the codes of its answer.
enum class ExportError : std::uint8_t {
    none = 0,
    nothingOpen = 1,
    noSuchDocument = 2,
    emptyDocument = 3,
    everythingHidden = 4,
    noPictures = 5,
    cannotWrite = 6,
    noFolder = 7,
    tooManyColumns = 11,
    textTooLong = 12,
    sheetNameTooLong = 13,
    sheetNameForbidden = 14,
    other = 15
};

/// One warning of the answer.
struct CodedWarning {
    ExportWarning code;
    std::size_t item = 0;
    std::string label;

    bool operator==(const CodedWarning&) const = default;
};

/// What is lost of one item.
struct LostFeatures {
    std::string label;
    std::set<Feature> features;
};

class ExportReport {
  public:
    /// A warning of the answer; the same one of the same item is noted once.
    void warn(ExportWarning code, const ExportedItem& item);
    /// What the format cannot show of an item: one warning of the log for each item, which names all of it.
    void lose(Feature feature, const ExportedItem& item);
    /// Any other warning of the log, in whole sentences, UTF-8, as shown. The same text is noted once.
    void note(std::string text);
    /// The first failure counts; `reason` goes to the log, as shown.
    void fail(ExportError error, std::string reason = {});
    /// Error 6, with the system's reason, or 15 where it is memory that lacks; `file` as it came.
    void failToWrite(const std::string& file, const PackageResult& result);
    /// One more picture that was written.
    void countPicture() { ++pictures_; }

    [[nodiscard]] bool failed() const { return error_ != ExportError::none; }
    [[nodiscard]] ExportError error() const { return error_; }
    [[nodiscard]] const std::string& reason() const { return reason_; }
    [[nodiscard]] const std::vector<CodedWarning>& warnings() const { return warnings_; }
    /// By the items' numbers.
    [[nodiscard]] const std::map<std::size_t, LostFeatures>& losses() const { return losses_; }
    /// What goes to the log at level 2: the notes in the order in which they came, then the losses by item.
    [[nodiscard]] std::vector<std::string> logTexts() const;
    [[nodiscard]] std::size_t pictures() const { return pictures_; }

  private:
    std::vector<CodedWarning> warnings_;
    std::set<std::pair<ExportWarning, std::size_t>> warned_;
    std::map<std::size_t, LostFeatures> losses_;
    std::vector<std::string> notes_;
    std::set<std::string> noted_;
    ExportError error_ = ExportError::none;
    std::string reason_;
    std::size_t pictures_ = 0;
};

/// What a feature is called in messages, as it stands in a list: a key of the string tables.
[[nodiscard]] SystemText featureText(Feature feature);

}  // namespace vexa::frontend
