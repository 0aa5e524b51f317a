#include "frontend/drawing/post_script.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string_view>

#include "backend/tables/formats/number_text.h"
#include "frontend/drawing/glyph_names.h"

namespace vexa::frontend {

namespace {

constexpr std::size_t lineLength = 200;

void appendNumber(std::string& text, double value) {
    // A comma or an exponent is no part of it.
    const double rounded = std::round(std::clamp(value, -1e6, 1e6) * 1000) / 1000;
    tables::appendShortest(text, rounded == 0 ? 0 : rounded);
    text += ' ';
}

/// Letters that look different beside each other, or stand around each other.
bool takesForms(char32_t code) {
    return (code >= 0x600 && code <= 0x8FF) || (code >= 0x900 && code <= 0xDFF) ||
           (code >= 0xF00 && code <= 0x109F) || (code >= 0x1780 && code <= 0x18AF) ||
           (code >= 0xFB50 && code <= 0xFDFF) || (code >= 0xFE70 && code <= 0xFEFF) || code > 0xFFFF;
}

bool isHebrew(char32_t code) {
    return (code >= 0x590 && code <= 0x5FF) || (code >= 0xFB1D && code <= 0xFB4F);
}

/// A font's name without what would end it.
std::string nameOf(const VectorFont& font) {
    std::string name;
    for (const char each : font.postScript) {
        const bool isPlain = static_cast<unsigned char>(each) > ' ' &&
                             static_cast<unsigned char>(each) < 0x7F &&
                             std::string_view("()<>[]{}/%").find(each) == std::string_view::npos;
        if (isPlain) name += each;
    }
    return name.empty() ? "Helvetica" : name;
}

void appendCode(std::string& codes, unsigned char code) {
    const bool isPlain = code >= ' ' && code < 0x7F && code != '(' && code != ')' && code != '\\';
    if (isPlain) {
        codes += static_cast<char>(code);
    } else {
        codes += '\\';
        for (const unsigned int shift : {6U, 3U, 0U}) codes += static_cast<char>('0' + (code >> shift & 7U));
    }
}

std::string inAscii85(const std::string& bytes) {
    std::string text;
    std::size_t line = 0;
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        std::uint32_t word = 0;
        const std::size_t count = std::min<std::size_t>(4, bytes.size() - i);
        for (std::size_t k = 0; k < 4; ++k) {
            word = word << 8U | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        }
        if (word == 0 && count == 4) {
            text += 'z';
        } else {
            std::array<char, 5> digits{};
            for (std::size_t k = 5; k-- > 0; word /= 85) digits[k] = static_cast<char>('!' + word % 85);
            text.append(digits.data(), count + 1);
        }
        if (text.size() - line > lineLength) {
            text += '\n';
            line = text.size();
        }
    }
    return text + "~>\n";
}

}  // namespace

std::size_t PostScriptFonts::addSheet(const std::string& base, Face& face) {
    face.sheets.push_back(sheets_.size());
    sheets_.push_back({"F" + std::to_string(sheets_.size() + 1), base, {}});
    return sheets_.size() - 1;
}

std::pair<std::size_t, unsigned char> PostScriptFonts::codeOf(const std::string& base, Face& face,
                                                              char32_t character) {
    const auto known = face.codes.find(character);
    if (known != face.codes.end()) return known->second;
    if (face.sheets.empty()) addSheet(base, face);
    std::size_t sheet = face.sheets.front();
    auto code = static_cast<unsigned char>(character);
    if (character < 0x20 || character > 0x7E) {
        // The codes beside those of the usual letters.
        const auto freeCode = [&](std::size_t number) {
            for (unsigned int each = 0x80; each <= 0xFF; ++each) {
                if (sheets_[number].glyphs.find(static_cast<unsigned char>(each)) ==
                    sheets_[number].glyphs.end()) {
                    return each;
                }
            }
            return 0U;
        };
        sheet = face.sheets.back();
        if (freeCode(sheet) == 0) sheet = addSheet(base, face);
        code = static_cast<unsigned char>(freeCode(sheet));
    }
    sheets_[sheet].glyphs[code] = glyphName(character);
    return face.codes[character] = {sheet, code};
}

std::vector<PostScriptFonts::Piece> PostScriptFonts::encode(const VectorFont& font,
                                                            const std::u32string& text) {
    const std::string base = nameOf(font);
    Face& face = faces_[base];
    std::vector<Piece> pieces;
    for (const char32_t character : text) {
        const auto [sheet, code] = codeOf(base, face, character);
        if (pieces.empty() || pieces.back().font != sheets_[sheet].name) {
            pieces.push_back({sheets_[sheet].name, 0, {}});
        }
        ++pieces.back().length;
        appendCode(pieces.back().codes, code);
    }
    return pieces;
}

std::vector<std::string> PostScriptFonts::names() const {
    std::vector<std::string> names;
    for (const auto& [name, face] : faces_) names.push_back(name);
    return names;
}

std::string PostScriptFonts::definitions() const {
    std::string text;
    for (const Sheet& sheet : sheets_) {
        text += "/" + sheet.base +
                " findfont dup length dict begin\n"
                "{1 index /FID ne {def} {pop pop} ifelse} forall\n"
                "/Encoding 256 array def 0 1 255 {Encoding exch /.notdef put} for\n";
        for (const auto& [code, name] : sheet.glyphs) {
            text += "Encoding " + std::to_string(code) + " /" + name + " put\n";
        }
        text += "currentdict end /" + sheet.name + " exch definefont pop\n";
    }
    return text;
}

void PostScriptTarget::number(double value) { appendNumber(body_, value); }

void PostScriptTarget::point(VectorPoint point) {
    number(point.x);
    number(height_ - point.y);
}

void PostScriptTarget::color(VectorColor color) {
    for (const int shift : {16, 8, 0}) number((color >> shift & 0xFFU) / 255.0);
    body_ += "rg\n";
}

void PostScriptTarget::path(const VectorPath& path) {
    body_ += "newpath\n";
    for (const PathPart& part : path.parts) {
        if (part.step == PathStep::close) {
            body_ += "h\n";
            continue;
        }
        const std::size_t count = part.step == PathStep::curve ? 3 : 1;
        for (std::size_t i = 0; i < count; ++i) point(part.points[i]);
        body_ += part.step == PathStep::curve ? "c\n" : part.step == PathStep::line ? "l\n" : "m\n";
    }
}

void PostScriptTarget::save() { body_ += "gsave\n"; }

void PostScriptTarget::restore() { body_ += "grestore\n"; }

void PostScriptTarget::clip(const VectorPath& path, bool evenOdd) {
    this->path(path);
    body_ += evenOdd ? "eoclip\n" : "clip\n";
}

void PostScriptTarget::fill(const VectorPath& path, bool evenOdd, VectorColor color) {
    this->color(color);
    this->path(path);
    body_ += evenOdd ? "eofill\n" : "fill\n";
}

void PostScriptTarget::stroke(const VectorPath& path, const VectorLine& line, VectorColor color) {
    constexpr std::array<std::string_view, 3> joins{"0 setlinejoin\n", "1 setlinejoin\n", "2 setlinejoin\n"};
    this->color(color);
    number(line.width);
    body_ += "setlinewidth ";
    body_ += std::to_string(static_cast<int>(line.cap)) + " setlinecap ";
    body_ += joins[static_cast<std::size_t>(line.join)];
    number(std::max(line.miterLimit, 1.0));
    body_ += "setmiterlimit [";
    // Lengths that are all zero would be an error.
    const bool isDashed =
        std::any_of(line.dashes.begin(), line.dashes.end(), [](double each) { return each > 0; });
    for (std::size_t i = 0; isDashed && i < line.dashes.size(); ++i) number(std::max(line.dashes[i], 0.001));
    body_ += "] ";
    number(line.dashBegin);
    body_ += "setdash\n";
    this->path(path);
    body_ += "stroke\n";
}

void PostScriptTarget::text(const VectorText& text) {
    hasText_ = true;
    VectorText shown = text;
    needsForms_ = needsForms_ || std::any_of(text.text.begin(), text.text.end(), takesForms);
    if (std::any_of(text.text.begin(), text.text.end(), isHebrew)) {
        // Codes stand as they are shown, from the left.
        std::reverse(shown.text.begin(), shown.text.end());
        std::reverse(shown.advances.begin(), shown.advances.end());
    }
    color(shown.color);
    body_ += "gsave ";
    point(shown.begin);
    body_ += "translate ";
    number(shown.angle * 180 / std::numbers::pi);
    body_ += "rotate 0 0 moveto\n";
    std::size_t done = 0;
    for (const PostScriptFonts::Piece& piece : fonts_.encode(shown.font, shown.text)) {
        body_ += "/" + piece.font + " findfont ";
        number(shown.size);
        body_ += "scalefont setfont (" + piece.codes + ")[";
        for (std::size_t i = 0; i < piece.length; ++i) number(shown.advances[done + i]);
        body_ += "]xshow\n";
        done += piece.length;
    }
    body_ += "grestore\n";
}

void PostScriptTarget::bitmap(const VectorBox& place) {
    VectorBox cut = place;
    Bitmap piece;
    if (!bitmaps_.cut(cut, piece)) return;
    const std::string wide = std::to_string(piece.width);
    const std::string high = std::to_string(piece.height);
    body_ += "gsave ";
    point({cut.left, cut.bottom});
    body_ += "translate ";
    number(cut.right - cut.left);
    number(cut.bottom - cut.top);
    body_ += "scale /DeviceRGB setcolorspace\n<</ImageType 1 /Width " + wide + " /Height " + high +
             " /BitsPerComponent 8 /Decode [0 1 0 1 0 1] /ImageMatrix [" + wide + " 0 0 -" + high + " 0 " +
             high + "] /DataSource currentfile /ASCII85Decode filter>> image\n";
    std::string bytes;
    for (const std::uint32_t pixel : piece.pixels) {
        for (const unsigned int shift : {24U, 16U, 8U}) bytes += static_cast<char>(pixel >> shift & 0xFFU);
    }
    body_ += inAscii85(bytes) + "grestore\n";
}

std::string PostScriptTarget::file(const VectorBox& ink, double width) const {
    const VectorBox box = ink.isEmpty() ? VectorBox{0, 0, 0, 0} : ink.within({0, 0, width, height_});
    std::string text = "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox:";
    for (const double each : {std::floor(box.left), std::floor(height_ - box.bottom), std::ceil(box.right),
                              std::ceil(height_ - box.top)}) {
        text += " " + std::to_string(std::lround(each));
    }
    text += "\n%%HiResBoundingBox: ";
    for (const double each : {box.left, height_ - box.bottom, box.right, height_ - box.top})
        appendNumber(text, each);
    text.back() = '\n';
    text += "%%Creator: Vexa Output\n%%LanguageLevel: 2\n%%Pages: 1\n%%DocumentData: Clean7Bit\n";
    std::string_view comment = "%%DocumentNeededResources: font ";
    for (const std::string& name : fonts_.names()) {
        text.append(comment).append(name).append("\n");
        comment = "%%+ font ";
    }
    text +=
        "%%EndComments\n%%BeginProlog\n"
        "/m {moveto} bind def /l {lineto} bind def /c {curveto} bind def /h {closepath} bind def\n"
        "/rg {setrgbcolor} bind def\n%%EndProlog\n%%BeginSetup\n";
    for (const std::string& name : fonts_.names()) text += "%%IncludeResource: font " + name + "\n";
    text += fonts_.definitions() + "%%EndSetup\n%%Page: 1 1\ngsave\n" + body_ +
            "grestore\nshowpage\n%%Trailer\n%%EOF\n";
    return text;
}

}  // namespace vexa::frontend
