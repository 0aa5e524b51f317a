#include "frontend/requests/request_scanner.h"

#include <algorithm>
#include <utility>

#include "backend/strings/dictionary.h"
#include "backend/text/utf8.h"

namespace vexa::frontend {

namespace {

constexpr std::size_t kNone = std::string_view::npos;
/// Bytes of a word at most; the longest is a number.
constexpr std::size_t kLongestWord = 32;
/// Bytes of the text that a message repeats.
constexpr std::size_t kLongestQuotation = 40;

bool beginsElement(std::string_view text) {
    return std::any_of(std::begin(form::kBeginnings), std::end(form::kBeginnings),
                       [text](std::string_view each) { return text.starts_with(each); });
}

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

const AttributeForm* attributeNamed(const ElementForm& element, std::string_view name) {
    const auto found = std::find_if(element.attributes.begin(), element.attributes.end(),
                                    [name](const AttributeForm& each) { return each.name == name; });
    return found == element.attributes.end() ? nullptr : &*found;
}

bool hasRawValue(const ElementForm& element) {
    return std::any_of(element.attributes.begin(), element.attributes.end(),
                       [](const AttributeForm& each) { return each.value == ValueForm::raw; });
}

/// The name in front of `="` at the beginning of `text`; empty where there is none.
std::string_view leadingName(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && isLetter(text[length])) {
        ++length;
    }
    return text.substr(length).starts_with("=\"") ? text.substr(0, length) : std::string_view();
}

/// Goes past words of the element's attributes. True when another text of the element begins behind them.
bool passWords(std::string_view& text, const ElementForm& element) {
    for (std::size_t i = 0; i < element.attributes.size() && text.starts_with(' '); ++i) {
        const std::string_view name = leadingName(text.substr(1));
        const AttributeForm* const attribute = attributeNamed(element, name);
        if (attribute == nullptr) {
            return false;
        }
        if (attribute->value != ValueForm::word) {
            return true;
        }
        const std::string_view value = text.substr(name.size() + 3);
        const std::size_t end = value.substr(0, kLongestWord + 1).find_first_of("\"<");
        if (end == kNone || value[end] == '<') {
            return false;
        }
        text = value.substr(end + 1);
    }
    return false;
}

/// True when a value of `element` can end in front of `behind`: what stands behind the quote.
bool goesOn(std::string_view behind, const ElementForm& element) {
    if (passWords(behind, element)) {
        return true;
    }
    if (behind.starts_with("/>")) {
        return beginsElement(behind.substr(2));
    }
    return element.mayHold && behind.starts_with('>') && beginsElement(behind.substr(1));
}

/// The length of the raw value at the beginning of `text`.
std::size_t rawLength(std::string_view text, const ElementForm& element) {
    std::size_t quote = text.find('"');
    while (quote != kNone && !goesOn(text.substr(quote + 1), element)) {
        quote = text.find('"', quote + 1);
    }
    return quote;
}

/// The next place from `from` on where the content of `file` can end.
std::size_t fileEnd(std::string_view text, const FileForm& file, std::size_t from) {
    for (std::size_t end = text.find(file.endTag, from); end != kNone;
         end = text.find(file.endTag, end + 1)) {
        const std::string_view behind = text.substr(end + file.endTag.size());
        if (!file.another.empty() && behind.starts_with(file.another)) {
            return end;
        }
        if (behind.starts_with(file.parentEnd) && beginsElement(behind.substr(file.parentEnd.size()))) {
            return end;
        }
    }
    return kNone;
}

/// True for the content of a file whose root has no end in it, though it begins with that root.
bool isCutOff(std::string_view content, std::string_view root) {
    const std::string_view begin = content.substr(0, content.find('>'));
    const bool hasRoot = begin.starts_with('<') && begin.substr(1).starts_with(root);
    const bool isEmpty = begin.size() < content.size() && begin.ends_with('/');
    return hasRoot && !isEmpty && content.find("</" + std::string(root)) == kNone;
}

/// The beginning of `text` for a message.
std::string excerpt(std::string_view text) {
    std::string_view shown = text.substr(0, kLongestQuotation);
    while (shown.size() < text.size() && !shown.empty() &&
           (static_cast<unsigned char>(text[shown.size()]) & 0xC0U) == 0x80U) {
        shown.remove_suffix(1);
    }
    std::string valid = validUtf8(shown);
    std::replace_if(
        valid.begin(), valid.end(), [](unsigned char byte) { return byte < ' '; }, ' ');
    return '"' + valid + (shown.size() < text.size() ? "..." : "") + '"';
}

}  // namespace

std::string listOf(const std::vector<std::string_view>& texts) {
    std::string list;
    for (const std::string_view text : texts) {
        list.append(list.empty() ? "\"" : ", \"").append(text).append("\"");
    }
    return list;
}

bool RequestScanner::take(std::string_view literal) {
    const bool there = isAt(literal);
    place_ += there ? literal.size() : 0;
    return there;
}

bool RequestScanner::takeBeginning(std::string_view name) {
    if (!isAt("<")) {
        return false;
    }
    const std::string_view behind = rest().substr(1);
    if (!behind.starts_with(name) || (behind.size() > name.size() && isLetter(behind[name.size()]))) {
        return false;
    }
    place_ += 1 + name.size();
    return true;
}

ScannedTag RequestScanner::readTag(const ElementForm& element) {
    ScannedTag tag{&element, {}, false};
    const AttributeForm* last = nullptr;
    while (!refusal_) {
        if (take("/>")) {
            break;
        }
        if (element.mayHold && take(">")) {
            tag.open = true;
            break;
        }
        const std::size_t before = place_;
        static_cast<void>(take(" "));
        // Two blanks stand behind `<command` where it has no name, and one where it has no attribute.
        while (last == nullptr && take(" ")) {
        }
        if (last == nullptr && isAt("/>")) {
            continue;
        }
        const AttributeForm* const attribute = place_ == before ? nullptr : findAttribute(tag, last);
        if (attribute == nullptr) {
            refuseHere(element.name, listOf({element.mayHold ? ">" : "/>"}));
            break;
        }
        if (const auto value = readValue(element, *attribute)) {
            addAttribute(tag, *attribute, *value);
        }
        last = attribute;
    }
    return tag;
}

/// Goes past the name and the opening quote of an attribute that may stand here, behind `last`.
const AttributeForm* RequestScanner::findAttribute(const ScannedTag& tag, const AttributeForm* last) {
    const ElementForm& element = *tag.form;
    const std::string_view name = leadingName(rest());
    const AttributeForm* const found = attributeNamed(element, name);
    if (found != nullptr && (element.anyOrder || last == nullptr || found >= last)) {
        place_ += name.size() + 2;
        return found;
    }
    std::vector<std::string_view> fits;
    for (const AttributeForm& each : element.attributes) {
        if (element.anyOrder || last == nullptr || &each > last) {
            fits.push_back(each.name);
        }
    }
    fits.emplace_back(element.mayHold ? ">" : "/>");
    refuseHere(element.name, listOf(fits));
    return nullptr;
}

void RequestScanner::addAttribute(ScannedTag& tag, const AttributeForm& attribute, std::string_view value) {
    const auto earlier =
        std::find_if(tag.attributes.begin(), tag.attributes.end(),
                     [&attribute](const ScannedAttribute& each) { return each.form == &attribute; });
    if (earlier == tag.attributes.end()) {
        tag.attributes.push_back({&attribute, value});
    } else if (earlier->value != value) {
        refuse(value, tag.form->name, attribute.name, excerpt(earlier->value));
    } else if (hasRawValue(*tag.form)) {
        // One of the two may stand in a value, whose end has been taken for another place.
        refuse(value, tag.form->name, attribute.name, listOf({tag.form->mayHold ? ">" : "/>"}));
    }
}

/// The value behind the opening quote that has been taken; goes past the closing one.
std::optional<std::string_view> RequestScanner::readValue(const ElementForm& element,
                                                          const AttributeForm& attribute) {
    const bool raw = attribute.value == ValueForm::raw;
    const std::size_t length = raw ? rawLength(rest(), element) : rest().find_first_of("\"<");
    if (length == kNone || rest()[length] == '<') {
        refuse(rest(), element.name, attribute.name,
               translated("a value with a quotation mark at its end"_text));
        return std::nullopt;
    }
    const std::string_view value = rest().substr(0, length);
    place_ += length + 1;
    return value;
}

std::string_view RequestScanner::readFile(const FileForm& file) {
    if (refusal_) {
        return {};
    }
    const std::size_t end = fileEnd(rest(), file, 0);
    if (end == kNone) {
        refuse(rest(), file.name, {}, listOf({std::string(file.endTag) + std::string(file.parentEnd)}));
        return {};
    }
    const std::string_view content = rest().substr(0, end);
    if (isCutOff(content, file.root) && fileEnd(rest(), file, end + 1) != kNone) {
        refuseDoubt(content, file.name);
        return {};
    }
    place_ += end + file.endTag.size();
    return content;
}

void RequestScanner::refuseHere(std::string_view element, const std::string& fits) {
    refuse(rest(), element, {}, fits);
}

void RequestScanner::refuse(std::string_view found, std::string_view element, std::string_view attribute,
                            const std::string& fits) {
    if (refusal_) {
        return;
    }
    const std::size_t offset = offsetOf(found);
    const std::string where = std::string(element) + (attribute.empty() ? "" : ", ") + std::string(attribute);
    const std::string there =
        offset == text_.size() ? translated("the end of the request"_text) : excerpt(found);
    refusal_ = {offset, std::string(element), std::string(attribute),
                composed("The request cannot be read at byte ^1 (^2). Found: ^3. What would fit: ^4."_text,
                         {std::to_string(offset), where, there, fits})};
}

void RequestScanner::refuseDoubt(std::string_view content, std::string_view element) {
    const std::size_t offset = offsetOf(content);
    refusal_ = {offset,
                std::string(element),
                {},
                composed("The request cannot be read at byte ^1 (^2): what begins there can end in more than "
                         "one place."_text,
                         {std::to_string(offset), std::string(element)})};
}

}  // namespace vexa::frontend
