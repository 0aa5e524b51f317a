// Writes XML, an attribute at a time. For the viewer XML library's own files.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <xercesc/framework/XMLFormatter.hpp>

namespace vexa {

class XmlWriter {
  public:
    /// `markup` is ASCII.
    void writeMarkup(std::string_view markup) { target_.text().append(markup); }
    /// `value` is in the back end's character set; `escaped`: whoever made it has escaped it.
    void writeAttribute(std::string_view name, std::string_view value, bool escaped);
    /// What has been written, in UTF-8.
    [[nodiscard]] std::string& text() { return target_.text(); }

  private:
    /// Collects what the formatter gives out.
    class StringTarget final : public xercesc::XMLFormatTarget {
      public:
        void writeChars(const XMLByte* bytes, const XMLSize_t count,
                        xercesc::XMLFormatter* /*formatter*/) override {
            text_.append(reinterpret_cast<const char*>(bytes), count);
        }
        [[nodiscard]] std::string& text() { return text_; }

      private:
        std::string text_;
    };

    StringTarget target_;
    // Gives the target everything it is handed before it returns, so markup can go there directly.
    xercesc::XMLFormatter formatter_{"UTF-8", &target_};
};

/// What `write` writes; empty only when the XML library cannot work in this process.
[[nodiscard]] std::string writtenXml(const std::function<void(XmlWriter&)>& write);

}  // namespace vexa
