#include "frontend/store/xml_reader.h"

#include <charconv>
#include <cstring>
#include <utility>

#include "frontend/store/limits.h"
#include "frontend/store/xml_writer.h"

namespace vexa::frontend {
namespace {

// Text is embedded in its element, which saves a node; blanks count as text only where nothing else stands.
constexpr unsigned parseOptions =
    pugi::parse_escapes | pugi::parse_ws_pcdata_single | pugi::parse_embed_pcdata;

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

StoreResult XmlReader::parse(std::string xml, std::string_view root) {
    buffer_ = std::move(xml);
    const XmlSize size = measureXml(buffer_);
    if (size.tags > limits::entryTags || size.quotes > limits::entryQuotes) {
        return {StoreProblem::tooLarge, "XML elements"_text};
    }
    if (buffer_.find("<!") != std::string::npos || buffer_.find('\0') != std::string::npos) {
        return {StoreProblem::damaged, "XML that does not belong into a document"_text};
    }
    const pugi::xml_parse_result result =
        document_.load_buffer_inplace(buffer_.data(), buffer_.size(), parseOptions, pugi::encoding_utf8);
    if (!result) {
        return {StoreProblem::damaged, result.description()};
    }
    const pugi::xml_node element = document_.document_element();
    if (root != element.name() || element.next_sibling() || element.previous_sibling()) {
        return {StoreProblem::damaged, "another root element than expected"_text};
    }
    return {};
}

bool readText(const pugi::xml_node& node, const char* attribute, std::string& value) {
    const pugi::xml_attribute found = node.attribute(attribute);
    if (!found) {
        return true;
    }
    value = found.value();
    return decodeText(value);
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

bool readFlag(const pugi::xml_node& node, const char* attribute, bool& value) {
    const pugi::xml_attribute found = node.attribute(attribute);
    if (!found) {
        return true;
    }
    value = std::strcmp(found.value(), "true") == 0;
    return value || std::strcmp(found.value(), "false") == 0;
}

bool readContent(const pugi::xml_node& node, std::string& value) {
    value = node.value();
    return !node.first_child() && decodeText(value);
}

}  // namespace vexa::frontend
