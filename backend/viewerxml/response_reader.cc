#include "backend/viewerxml/response_reader.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "backend/text/character_set.h"
#include "backend/viewerxml/response_names.h"
#include "backend/viewerxml/xml_form_reader.h"

namespace vexa {

namespace {

class ResponseCollector final : public XmlFormCollector {
  public:
    explicit ResponseCollector(ExportResponse& response) : response_(&response) {}

  protected:
    void begin(std::size_t depth, const std::string& name,
               const std::vector<XmlAttribute>& attributes) override;
    void end(std::size_t /*depth*/) override {}

  private:
    /// False when the element of that depth has no such attribute.
    bool set(std::size_t depth, const XmlAttribute& attribute);
    bool setOfResponse(const XmlAttribute& attribute);
    bool setOfWarnings(const XmlAttribute& attribute);
    bool setOfWarning(const XmlAttribute& attribute);
    void setAttributes(std::size_t depth, const std::vector<XmlAttribute>& attributes);

    ExportResponse* response_;
    std::vector<ExportResponse::Warning>* list_ = nullptr;  // that the open element `warnings` stands for
};

void ResponseCollector::begin(std::size_t depth, const std::string& name,
                              const std::vector<XmlAttribute>& attributes) {
    if (depth == 0 && name != kResponseElements[0]) {
        refuse("The answer is not an exportResponse but ^1"_text, {quoted(name)});
    }
    if (depth == std::size(kResponseElements) || name != kResponseElements[depth]) {
        refuse("The element ^1 is not allowed in ^2"_text,
               {quoted(name), std::string(kResponseElements[depth - 1])});
    }
    if (depth == 2) list_->emplace_back();
    setAttributes(depth, attributes);
}

void ResponseCollector::setAttributes(std::size_t depth, const std::vector<XmlAttribute>& attributes) {
    constexpr std::string_view kRequired[] = {"success", kWarningsCode, ""};
    bool complete = kRequired[depth].empty();
    const std::string element(kResponseElements[depth]);
    for (const XmlAttribute& attribute : attributes) {
        if (!set(depth, attribute)) {
            refuse("The element ^1 has no attribute ^2"_text, {element, quoted(attribute.name)});
        }
        complete = complete || attribute.name == kRequired[depth];
    }
    if (!complete) {
        refuse("The element ^1 lacks the attribute ^2"_text, {element, quoted(kRequired[depth])});
    }
}

bool ResponseCollector::set(std::size_t depth, const XmlAttribute& attribute) {
    return depth == 0   ? setOfResponse(attribute)
           : depth == 1 ? setOfWarnings(attribute)
                        : setOfWarning(attribute);
}

bool ResponseCollector::setOfResponse(const XmlAttribute& attribute) {
    const auto* const found =
        std::find_if(std::begin(kResponseAttributes), std::end(kResponseAttributes),
                     [&attribute](const ResponseAttribute& each) { return each.name == attribute.name; });
    if (found == std::end(kResponseAttributes)) return false;
    if (const auto* const truth = std::get_if<bool ExportResponse::*>(&found->member)) {
        response_->*(*truth) = truthOf(attribute);
    } else if (const auto* const text = std::get_if<std::string ExportResponse::*>(&found->member)) {
        response_->*(*text) = fromUtf8(attribute.value);
    } else if (attribute.name == "imageCount") {
        response_->imageCount = numberOf(attribute);
        response_->imageCountPresent = true;
        refuseBelow0(attribute, response_->imageCount);
    } else {
        response_->*std::get<int ExportResponse::*>(found->member) = numberOf(attribute);
    }
    return true;
}

bool ResponseCollector::setOfWarnings(const XmlAttribute& attribute) {
    if (attribute.name != kWarningsCode) return false;
    const int code = numberOf(attribute);
    if (code < 0 || static_cast<std::size_t>(code) >= ExportResponse::kWarningCodes) {
        refuse("There are no warnings with the code ^1"_text, {quoted(attribute.value)});
    }
    list_ = &response_->warnings.at(static_cast<std::size_t>(code));
    return true;
}

bool ResponseCollector::setOfWarning(const XmlAttribute& attribute) {
    for (const WarningAttribute& each : kWarningAttributes) {
        if (each.name != attribute.name) continue;
        list_->back().*each.member = fromUtf8(attribute.value);
        return true;
    }
    return false;
}

}  // namespace

std::string readExportResponse(std::string_view answer, ExportResponse& response) {
    ResponseCollector collector(response);
    const std::string wrong =
        readXmlForm(answer, collector,
                    {"The answer is longer than 16 MiB"_text, "The answer cannot be read as XML"_text});
    if (!wrong.empty()) response = {};
    return fromUtf8(wrong);
}

}  // namespace vexa
