#include "frontend/export/xlsx/shared_strings.h"

#include <algorithm>
#include <utility>

#include "frontend/export/xlsx/package_xml.h"
#include "frontend/export/xlsx/style_table.h"
#include "frontend/export/xlsx/xml_stream.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {
namespace {

constexpr std::size_t pieceOfStrings = 256U << 10U;

bool isHexadecimal(char byte) {
    const std::string_view digits = "0123456789abcdefABCDEF";
    return digits.find(byte) != std::string_view::npos;
}

/// Whether readers would take what begins here for a character: `_x0041_`.
bool looksEscaped(std::string_view text) {
    return text.size() >= 7 && text[0] == '_' && text[1] == 'x' && text[6] == '_' &&
           std::all_of(text.begin() + 2, text.begin() + 6, isHexadecimal);
}

void appendText(std::string& out, std::string_view text) {
    out += "<t";
    const auto isBlank = [](char byte) { return byte == ' ' || byte == '\n' || byte == '\t'; };
    if (std::any_of(text.begin(), text.end(), isBlank)) {
        out += " xml:space=\"preserve\"";
    }
    out += '>';
    appendEscapedText(out, text);
    out += "</t>";
}

/// The start tag of the root with both counts raised. Those that are missing, or no numbers, stay so.
std::string countedRoot(std::string_view raw, std::size_t uses, std::size_t texts) {
    std::string tag(raw.substr(0, raw.find_first_of(" \t\r\n/>")));
    for (const RawAttribute& attribute : attributesOf(raw)) {
        const bool isCount = attribute.name == "count";
        constexpr auto none = static_cast<std::size_t>(-1);
        const std::size_t number =
            isCount || attribute.name == "uniqueCount" ? numberOr(attribute.value, none) : none;
        if (number == none) {
            tag += attribute.whole;
        } else {
            tag += " " + std::string(attribute.name) + "=\"";
            tag += std::to_string(number + (isCount ? uses : texts)) + "\"";
        }
    }
    return tag + ">";
}

/// With its colon; empty where the name has none.
std::string_view prefixOf(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon + 1);
}

}  // namespace

std::string_view noSharedStrings() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
           "<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" count=\"0\" "
           "uniqueCount=\"0\"></sst>";
}

void appendEscapedText(std::string& out, std::string_view text) {
    std::size_t done = 0;
    const auto flush = [&](std::size_t end) {
        appendXmlText(out, text.substr(done, end - done), XmlEscapes::replacing);
        done = end;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte == '_' && looksEscaped(text.substr(i))) {
            flush(i);
            out += "_x005F_";
            ++done;
        } else if (byte < 0x20U && byte != '\t' && byte != '\n') {
            constexpr std::string_view digits = "0123456789ABCDEF";
            flush(i);
            out += "_x00";
            out += digits[byte >> 4U];
            out += digits[byte & 0xFU];
            out += '_';
            ++done;
        }
    }
    flush(text.size());
}

std::string prefixed(std::string_view xml, std::string_view prefix) {
    if (prefix.empty()) {
        return std::string(xml);
    }
    std::string text;
    while (!xml.empty()) {
        const std::size_t tag = xml.find('<');
        if (tag == std::string_view::npos) {
            break;
        }
        const std::size_t name = tag + (xml.substr(tag + 1).starts_with('/') ? 2 : 1);
        text += xml.substr(0, name);
        text += prefix;
        xml.remove_prefix(name);
    }
    return text.append(xml);
}

std::size_t SharedStrings::add(const SheetContent& content, const SheetCell& cell) {
    const SheetStyle& style = content.styles[cell.style];
    Key key{content.text(cell), 0, 0};
    key.raised = std::min<std::size_t>(cell.raised, key.text.size());
    if (key.raised > 0) {
        key.font = fonts_.try_emplace(fontProperties(style, "rFont"), fonts_.size() + 1).first->second;
    }
    ++uses_;
    const auto [found, isNew] = known_.try_emplace(key, count_);
    if (!isNew) return found->second;
    items_ += "<si>";
    if (key.raised == 0) {
        appendText(items_, key.text);
    } else {
        appendRaised(key.text, key.raised, style);
    }
    items_ += "</si>";
    packed_.take(items_);
    return count_++;
}

void SharedStrings::appendRaised(std::string_view text, std::size_t raised, const SheetStyle& style) {
    if (raised < text.size()) {
        items_ += "<r><rPr>" + fontProperties(style, "rFont") + "</rPr>";
        appendText(items_, text.substr(0, text.size() - raised));
        items_ += "</r>";
    }
    items_ += "<r><rPr>" + fontProperties(style, "rFont", "<vertAlign val=\"superscript\"/>") + "</rPr>";
    appendText(items_, text.substr(text.size() - raised));
    items_ += "</r>";
}

PackageResult SharedStrings::writeItems(DeflateStream& out, std::string_view prefix) {
    packed_.takeAll(items_);
    return packed_.release([&](std::string_view piece) {
        return prefix.empty() ? out.write(piece) : out.write(prefixed(piece, prefix));
    });
}

PackageResult SharedStrings::write(const ByteSource& source, DeflateStream& out, std::size_t& before) {
    XmlStream xml(source);
    std::string waiting;
    before = 0;
    PackageResult result;
    bool isDone = false;
    while (result && xml.next()) {
        const bool isRoot = xml.depth() == 0 && (xml.isStart() || xml.isEnd());
        if (isRoot && xml.localName() != "sst") {
            return {PackageProblem::damaged, "a different root element than expected"_text};
        }
        if (xml.isStart() && xml.depth() == 1 && xml.localName() == "si") {
            ++before;
        }
        const bool isExtension = xml.isStart() && xml.depth() == 1 && xml.localName() == "extLst";
        if (isRoot && xml.isStart()) {
            waiting += countedRoot(xml.raw(), uses_, count_);
        }
        const bool isLast = isExtension || (isRoot && (xml.isEnd() || xml.isWhole()));
        if (isLast && !std::exchange(isDone, true)) {
            result = out.write(waiting);
            waiting.clear();
            if (result) result = writeItems(out, prefixOf(xml.name()));
        }
        if (isRoot && xml.isStart() && xml.isWhole()) {
            waiting += "</" + std::string(xml.name()) + ">";
        } else if (!isRoot || xml.isEnd()) {
            waiting += xml.raw();
        }
        if (result && waiting.size() >= pieceOfStrings) {
            result = out.write(waiting);
            waiting.clear();
        }
    }
    return !result ? result : !xml.result() ? xml.result() : out.write(waiting);
}

}  // namespace vexa::frontend
