// A text document in the Rich Text Format.
#pragma once

#include <string>
#include <vector>

#include "frontend/export/word/rtf/rtf_styles.h"
#include "frontend/export/word/rtf/rtf_text.h"
#include "frontend/export/word/word_content.h"
#include "frontend/package/package_result.h"
#include "frontend/package/packed_text.h"

namespace vexa::frontend {

class RtfWriter : public WordWriter {
  public:
    /// The bytes of the file go to `sink`. `language` is that of the document's text, a language code.
    /// Beyond `unpackedBytes` the body is held packed.
    RtfWriter(ByteSink sink, std::string title, const std::string& language, const WordPage& page,
              std::size_t unpackedBytes);

    void begin(const std::vector<WordParagraph>& head) override;
    void beginSection(const std::vector<WordParagraph>& head) override;
    void contents(const std::vector<WordEntry>& entries) override;
    void paragraph(const WordParagraph& paragraph) override;
    void table(const TablePart& part) override;
    void picture(const WordParagraph& place, const WordPicture& picture) override;
    [[nodiscard]] bool holdsDrawings() const override { return false; }

    /// Ends the document and writes it.
    PackageResult finish();

  private:
    void endParagraph();
    void openParagraph(const WordParagraph& paragraph);
    void appendRuns(const WordParagraph& paragraph);
    void appendHead(const std::vector<WordParagraph>& head);
    [[nodiscard]] std::string beginning() const;

    ByteSink sink_;
    std::string title_;
    std::string language_;  // a language tag
    WordPage page_;
    RtfTables tables_;
    RtfStyles styles_;
    PackedText written_;  // the beginning of the body
    std::string body_;
    bool isOpen_ = false;  // the last paragraph lacks its end
};

}  // namespace vexa::frontend
