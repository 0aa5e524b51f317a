#include "frontend/export/html/svg_inline.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "backend/tables/formats/number_text.h"
#include "frontend/export/html/html_text.h"
#include "frontend/package/xml_reader.h"

namespace vexa::frontend {

namespace {

constexpr double pointsPerPixel = 0.75;
/// Drawings come with a document type more often than not; comments and the like are passed over.
constexpr XmlPolicy svgPolicy{true, true, true, true, true};
constexpr std::string_view svgNamespace = "http://www.w3.org/2000/svg";

/// What is drawn, and what drawings are told with. By their bytes' order.
constexpr std::string_view knownElements[] = {"a",
                                              "circle",
                                              "clipPath",
                                              "defs",
                                              "desc",
                                              "ellipse",
                                              "feBlend",
                                              "feColorMatrix",
                                              "feComponentTransfer",
                                              "feComposite",
                                              "feConvolveMatrix",
                                              "feDiffuseLighting",
                                              "feDisplacementMap",
                                              "feDistantLight",
                                              "feDropShadow",
                                              "feFlood",
                                              "feFuncA",
                                              "feFuncB",
                                              "feFuncG",
                                              "feFuncR",
                                              "feGaussianBlur",
                                              "feMerge",
                                              "feMergeNode",
                                              "feMorphology",
                                              "feOffset",
                                              "fePointLight",
                                              "feSpecularLighting",
                                              "feSpotLight",
                                              "feTile",
                                              "feTurbulence",
                                              "filter",
                                              "g",
                                              "image",
                                              "line",
                                              "linearGradient",
                                              "marker",
                                              "mask",
                                              "metadata",
                                              "path",
                                              "pattern",
                                              "polygon",
                                              "polyline",
                                              "radialGradient",
                                              "rect",
                                              "stop",
                                              "style",
                                              "svg",
                                              "switch",
                                              "symbol",
                                              "text",
                                              "textPath",
                                              "title",
                                              "tspan"};

bool isKnown(std::string_view element) {
    return element == "use" ||
           std::binary_search(std::begin(knownElements), std::end(knownElements), element);
}

/// The name behind the prefix.
std::string_view localName(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

/// The namespace of an element; nothing where none is said.
std::string_view namespaceOf(pugi::xml_node node) {
    const std::string_view name = node.name();
    const std::size_t colon = name.find(':');
    const std::string wanted =
        colon == std::string_view::npos ? "xmlns" : "xmlns:" + std::string(name.substr(0, colon));
    for (; node; node = node.parent()) {
        if (const pugi::xml_attribute found = node.attribute(wanted.c_str())) return found.value();
    }
    return {};
}

bool isPlainName(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](unsigned char each) {
        return std::isalnum(each) != 0 || each == '-';
    });
}

bool startsWithIgnoringCase(std::string_view text, std::string_view beginning) {
    return text.size() >= beginning.size() &&
           std::equal(beginning.begin(), beginning.end(), text.begin(), [](char left, char right) {
               return left == std::tolower(static_cast<unsigned char>(right));
           });
}

class SvgWriter {
  public:
    SvgWriter(std::string& html, const InlineSvg& svg, const PictureScope& scope)
        : html_(html), svg_(svg), scope_(scope) {}

    void write(pugi::xml_node root) {
        html_ += "<svg role=\"img\" aria-label=\"";
        appendHtml(html_, svg_.alternative);
        html_ += "\" width=\"";
        tables::appendShortest(html_, svg_.size.width / pointsPerPixel);
        html_ += "\" height=\"";
        tables::appendShortest(html_, svg_.size.height / pointsPerPixel);
        html_ += '"';
        if (!root.attribute("viewBox")) writeViewBox();
        writeAttributes(root, true);
        html_ += ">";
        writeChildren(root);
        writeAppliedStyle();
        html_ += "</svg>";
    }

  private:
    /// So that a size of the item's own scales the drawing.
    void writeViewBox() {
        html_ += " viewBox=\"0 0 ";
        tables::appendShortest(html_, svg_.picture->picture->width / pointsPerPixel);
        html_ += ' ';
        tables::appendShortest(html_, svg_.picture->picture->height / pointsPerPixel);
        html_ += '"';
    }

    void writeChildren(pugi::xml_node parent) {
        for (const pugi::xml_node child : parent.children()) {
            if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
                appendHtml(html_, child.value());
            } else if (child.type() == pugi::node_element) {
                writeElement(child);
            }
        }
    }

    void writeElement(pugi::xml_node node) {
        const std::string_view name = localName(node.name());
        const std::string_view space = namespaceOf(node);
        if (!isKnown(name) || name == "metadata" || (!space.empty() && space != svgNamespace)) return;
        if (name == "style") {
            writeStyle(textOf(node));
            return;
        }
        html_.append("<").append(name);
        writeAttributes(node, false);
        html_ += '>';
        if (name == "title" || name == "desc") {
            appendHtml(html_, textOf(node));
        } else {
            writeChildren(node);
        }
        html_.append("</").append(name).append(">");
    }

    static std::string textOf(pugi::xml_node node) {
        std::string text;
        for (const pugi::xml_node child : node.children()) text += child.value();
        return text;
    }

    void writeStyle(std::string_view css) {
        const std::string rules = scopedRules(css, scope_);
        if (rules.empty()) return;
        html_ += "<style>";
        appendHtml(html_, rules);
        html_ += "</style>";
    }

    void writeAppliedStyle() {
        for (const std::string& each : svg_.picture->templates) writeStyle(templateRules(each));
        writeStyle(svg_.styleSheet);
    }

    void writeAttributes(pugi::xml_node node, bool isRoot) {
        bool hasReference = false;
        for (const pugi::xml_attribute each : node.attributes()) {
            const std::string_view name = each.name();
            const bool isReference = name == "href" || name == "xlink:href";
            if (isRoot && (name == "width" || name == "height" || name == "role")) continue;
            if (isReference && !hasReference) {
                hasReference = writeReference(localName(node.name()), each.value());
            } else if (name == "xml:space" || name == "xml:lang") {
                writeAttribute(name == "xml:lang" ? "lang" : name, each.value());
            } else if (!isReference && isPlainName(name)) {
                writePlain(name, each.value());
            }
        }
    }

    void writePlain(std::string_view name, std::string_view value) {
        if (startsWithIgnoringCase(name, "on") || startsWithIgnoringCase(name, "xmlns") ||
            startsWithIgnoringCase(name, "aria-") || name == "lang" || name == "tabindex" ||
            name == "contenteditable" || name == "autofocus") {
            return;
        }
        if (name == "id") {
            writeAttribute(name, scope_.prefixed(value));
        } else if (name == "class") {
            writeAttribute(name, prefixedWords(value));
        } else if (name == "style") {
            const std::string declarations = safeDeclarations(value, scope_);
            if (!declarations.empty()) writeAttribute(name, declarations);
        } else {
            std::string text(value);
            if (scopeReferences(text, scope_)) writeAttribute(name, text);
        }
    }

    bool writeReference(std::string_view element, std::string_view address) {
        if (address.starts_with('#')) {
            writeAttribute("href", "#" + scope_.prefixed(address.substr(1)));
            return true;
        }
        const auto begins = [address](std::string_view beginning) {
            return startsWithIgnoringCase(address, beginning);
        };
        const bool isPicture = element == "image" && (begins("data:image/png") || begins("data:image/jpeg") ||
                                                      begins("data:image/gif"));
        const bool isLink = element == "a" && (begins("http://") || begins("https://") || begins("mailto:"));
        if (!isPicture && !isLink) return false;
        writeAttribute("href", address);
        return true;
    }

    [[nodiscard]] std::string prefixedWords(std::string_view words) const {
        constexpr std::string_view blanks = " \t\r\n";
        std::string text;
        for (;;) {
            const std::size_t begin = words.find_first_not_of(blanks);
            if (begin == std::string_view::npos) return text;
            words.remove_prefix(begin);
            const std::size_t end = std::min(words.find_first_of(blanks), words.size());
            text += (text.empty() ? "" : " ") + scope_.prefixed(words.substr(0, end));
            words.remove_prefix(end);
        }
    }

    void writeAttribute(std::string_view name, std::string_view value) {
        html_.append(" ").append(name).append("=\"");
        appendHtml(html_, value);
        html_ += '"';
    }

    std::string& html_;
    const InlineSvg& svg_;
    const PictureScope& scope_;
};

}  // namespace

PackageResult appendSvg(std::string& html, const InlineSvg& svg, const PictureScope& scope) {
    XmlReader reader;
    PackageResult result = reader.parse(svg.picture->picture->bytes, {}, XmlLimits{}, svgPolicy);
    if (!result) return result;
    SvgWriter(html, svg, scope).write(reader.root());
    return {};
}

std::string templateRules(const std::string& text) {
    XmlReader reader;
    if (!reader.parse(text, {}, XmlLimits{}, svgPolicy)) return {};
    std::string rules;
    for (const pugi::xml_node child : reader.root().children()) {
        if (localName(child.name()) != "style") continue;
        for (const pugi::xml_node piece : child.children()) rules += piece.value();
        rules += '\n';
    }
    return rules;
}

}  // namespace vexa::frontend
