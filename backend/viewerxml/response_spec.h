// The front end's answer to an export.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vexa {

/// What an answer says. Texts are in the back end's character set.
struct ExportResponse {
    struct Warning {
        std::string first;
        std::string second;

        bool operator==(const Warning&) const = default;
    };
    static constexpr std::size_t kWarningCodes = 3;

    bool success = false;
    int errorCode = 0;
    std::string name;
    std::string documentFile;
    int imageCount = 0;
    bool imageCountPresent = false;
    std::string imageRoot;
    std::string imageFormat;
    std::array<std::vector<Warning>, kWarningCodes> warnings;  ///< by their code

    bool operator==(const ExportResponse&) const = default;
};

/// Reads an answer and tells what it says. The form is docs/formats/export-response.md;
/// schemas/export-response.xsd describes it.
class ResponseSpec {
  public:
    /// What a warning is about: a row label of a pivot table, the number of columns, the characters of a
    /// cell.
    enum class WARNING_CODE { LONG_ROW_LABEL = 0, MAX_COLUMNS = 1, CELL_CHARACTERS = 2 };
    using Warning = ExportResponse::Warning;

    /// Reads `answer`, which is XML in UTF-8, whatever its declaration says. False when it is no answer of
    /// the documented form, or longer than 16 MiB; `getParserError` then says why, and the other getters
    /// answer as before any answer. Whatever was read before is gone. Nothing but `answer` is read: a
    /// document type declaration, and so every entity but the five of XML, is refused. Comments and
    /// processing instructions are passed over. Initialises the XML library where nobody has. Throws nothing.
    [[nodiscard]] bool processResponse(std::string_view answer) noexcept;

    [[nodiscard]] bool getSuccessCode() const { return response_.success; }
    /// 0 when the answer has none.
    [[nodiscard]] int getErrorCode() const { return response_.errorCode; }
    /// The viewer document's name. This and the following texts are empty when the answer lacks them.
    [[nodiscard]] const std::string& getName() const { return response_.name; }
    [[nodiscard]] const std::string& getDocumentFile() const { return response_.documentFile; }
    /// 0 when the answer has none.
    [[nodiscard]] int getImageCount() const { return response_.imageCount; }
    [[nodiscard]] bool isImageCountPresent() const { return response_.imageCountPresent; }
    [[nodiscard]] const std::string& getImageRoot() const { return response_.imageRoot; }
    [[nodiscard]] const std::string& getImageFormat() const { return response_.imageFormat; }
    /// True when there is at least one warning of any code.
    [[nodiscard]] bool warningsFound() const;
    /// In the order of the answer; empty when there are none of that code.
    [[nodiscard]] const std::vector<Warning>& getWarnings(WARNING_CODE code) const;
    /// What was wrong with the answer, and where ("Line 1, column 20: ..."), in the back end's character set;
    /// empty after an answer that could be read.
    [[nodiscard]] const std::string& getParserError() const { return parserError_; }

  private:
    ExportResponse response_;
    std::string parserError_;
};

}  // namespace vexa
