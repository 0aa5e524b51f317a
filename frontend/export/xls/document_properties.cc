#include "frontend/export/xls/document_properties.h"

#include <utility>
#include <vector>

#include "frontend/export/xls/records.h"

namespace vexa::frontend::biff {

namespace {

constexpr std::uint32_t characterSet = 1;
constexpr std::uint32_t titleProperty = 2;
constexpr std::uint32_t writerProperty = 18;
constexpr std::uint32_t shortKind = 2;
constexpr std::uint32_t textKind = 30;
constexpr std::uint32_t utf8 = 65'001;

std::string textProperty(std::string_view text) {
    std::string value;
    Records(value).four(textKind).four(static_cast<std::uint32_t>(text.size() + 1)).bytes(text);
    value.append(4 - value.size() % 4, '\0');
    return value;
}

}  // namespace

std::string documentProperties(std::string_view title) {
    std::string set;
    Records(set).four(shortKind).two(utf8).two(0);
    const std::vector<std::pair<std::uint32_t, std::string>> properties{
        {characterSet, set},
        {titleProperty, textProperty(title)},
        {writerProperty, textProperty("Vexa Output")}};
    std::string places;
    std::string values;
    const std::size_t head = 8 + 8 * properties.size();
    for (const auto& [number, value] : properties) {
        Records(places).four(number).four(static_cast<std::uint32_t>(head + values.size()));
        values += value;
    }
    std::string bytes;
    Records records(bytes);
    // Byte order, version, system, class; one section, of this kind, from here.
    records.two(0xFFFE).two(0).four(0x00020105).bytes(std::string(16, '\0')).four(1);
    records.bytes({"\xE0\x85\x9F\xF2\xF9\x4F\x68\x10\xAB\x91\x08\x00\x2B\x27\xB3\xD9", 16}).four(48);
    records.four(static_cast<std::uint32_t>(head + values.size()));
    records.four(static_cast<std::uint32_t>(properties.size())).bytes(places).bytes(values);
    return bytes;
}

}  // namespace vexa::frontend::biff
