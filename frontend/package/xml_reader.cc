#include "frontend/package/xml_reader.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <utility>

#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {
namespace {

// Text is embedded in its element, which saves a node.
constexpr unsigned oneTextOptions =
    pugi::parse_escapes | pugi::parse_ws_pcdata_single | pugi::parse_embed_pcdata;
constexpr unsigned mixedOptions = pugi::parse_escapes | pugi::parse_ws_pcdata;

unsigned optionsFor(const XmlPolicy& policy) {
    unsigned options = policy.mixed ? mixedOptions : oneTextOptions;
    if (policy.sections) {
        options |= pugi::parse_cdata;
    }
    // Other programs rely on what XML says of line ends and blanks; ours writes none that would change.
    return policy.mixed ? options | pugi::parse_eol | pugi::parse_wconv_attribute : options;
}

template <typename Number>
bool readNumberText(const char* text, Number& value) {
    const char* end = text + std::strlen(text);
    const auto result = std::from_chars(text, end, value);
    return result.ec == std::errc() && result.ptr == end;
}

template <typename Number>
bool readPresent(const pugi::xml_node& node, const char* attribute, Number& value) {
    const pugi::xml_attribute found = node.attribute(attribute);
    return !found || readNumberText(found.value(), value);
}

template <typename Number>
bool readOptional(const pugi::xml_node& node, const char* attribute, std::optional<Number>& value) {
    const pugi::xml_attribute found = node.attribute(attribute);
    return !found || readNumberText(found.value(), value.emplace());
}

}  // namespace

PackageResult XmlReader::parse(std::string xml, std::string_view root, const XmlLimits& limits,
                               const XmlPolicy& policy) {
    buffer_ = std::move(xml);
    if (PackageResult result = checkXml(buffer_, limits, policy, size_); !result) {
        return result;
    }
    // The parser does not find its way through every document type.
    std::fill(buffer_.begin() + static_cast<std::ptrdiff_t>(size_.documentType),
              buffer_.begin() + static_cast<std::ptrdiff_t>(size_.documentTypeEnd), ' ');
    const pugi::xml_parse_result result = document_.load_buffer_inplace(
        buffer_.data(), buffer_.size(), optionsFor(policy), pugi::encoding_utf8);
    if (!result) {
        return result.status == pugi::status_out_of_memory
                   ? PackageResult(PackageProblem::noMemory)
                   : PackageResult::named(PackageProblem::damaged, result.description());
    }
    if (!root.empty() && root != document_.document_element().name()) {
        return {PackageProblem::damaged, "a different root element than expected"_text};
    }
    return {};
}

bool readText(const pugi::xml_node& node, const char* attribute, std::string& value) {
    const pugi::xml_attribute found = node.attribute(attribute);
    if (!found) {
        return true;
    }
    value = found.value();
    return decodeBackslashes(value);
}

bool readInteger(const pugi::xml_node& node, const char* attribute, int& value) {
    return readPresent(node, attribute, value);
}

bool readInteger(const pugi::xml_node& node, const char* attribute, std::optional<int>& value) {
    return readOptional(node, attribute, value);
}

bool readInteger(const pugi::xml_node& node, const char* attribute, std::uint64_t& value) {
    return readPresent(node, attribute, value);
}

bool readNumber(const pugi::xml_node& node, const char* attribute, std::optional<double>& value) {
    return readOptional(node, attribute, value);
}

bool readContent(const pugi::xml_node& node, std::string& value) {
    value = node.value();
    return !node.first_child() && decodeBackslashes(value);
}

}  // namespace vexa::frontend
