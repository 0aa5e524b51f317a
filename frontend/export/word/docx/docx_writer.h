// A text document as Office Open XML.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "frontend/export/office/office_package.h"
#include "frontend/export/word/text_styles.h"
#include "frontend/export/word/word_content.h"
#include "frontend/package/deflate_stream.h"

namespace vexa::frontend {

class DocxWriter : public WordWriter {
  public:
    /// The bytes of the file go to `sink`. `language` is that of the document's text, a language code.
    DocxWriter(ByteSink sink, std::string title, const std::string& language, const WordPage& page);

    void begin(const std::vector<WordParagraph>& head) override;
    void beginSection(const std::vector<WordParagraph>& head) override;
    void contents(const std::vector<WordEntry>& entries) override;
    void paragraph(const WordParagraph& paragraph) override;
    void table(const TablePart& part) override;
    void picture(const WordParagraph& place, const WordPicture& picture) override;
    [[nodiscard]] bool holdsDrawings() const override { return true; }

    /// Ends the document and writes what is left; the first failure of all that was written.
    PackageResult finish();

  private:
    /// `w:p` up to the end of its properties.
    void openParagraph(const WordParagraph& paragraph, bool isTurned);
    void appendRuns(std::string& xml, const WordParagraph& paragraph, bool isTurned) const;
    void passOn(std::string& xml);
    PackageResult addBody();
    void appendSection(std::string& xml);
    void setHead(const std::vector<WordParagraph>& head);
    void addFooter();
    void addSettings();

    OfficePackage package_;
    std::string language_;  // a language tag
    WordPage page_;
    TextStyles styles_;
    std::unique_ptr<DeflateStream> written_;  // the beginning of the body, where it is long
    std::string body_;                        // the rest of it
    std::size_t propertiesEnd_ = 0;           // of the last paragraph, in `body_`
    std::string headId_;                      // the relation of the section's head; empty for none
    std::string footId_;
    std::size_t heads_ = 0;
    std::size_t sections_ = 0;
    std::size_t pictures_ = 0;
    std::size_t bookmarks_ = 0;
    bool hasContents_ = false;
};

}  // namespace vexa::frontend
