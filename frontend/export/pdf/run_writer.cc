#include "frontend/export/pdf/run_writer.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "backend/text/utf8.h"

namespace vexa::frontend::pdf {

namespace {

constexpr double noticeable = 0.5;  // thousandths

std::vector<std::string_view> charactersOf(std::string_view text) {
    std::vector<std::string_view> characters;
    while (!text.empty()) {
        const std::size_t length = decodeUtf8(text).length;
        characters.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return characters;
}

/// The operators of one run.
class Operators {
  public:
    /// `sheet` is null for a font that is in the file.
    Operators(PdfFont& font, const FontSheet* sheet, std::string& out)
        : font_(font), sheet_(sheet), out_(out) {}

    void cluster(std::span<const PlacedGlyph> glyphs, std::string_view text) {
        const bool isPlain = glyphs.size() == 1 && glyphs[0].isShown && !glyphs[0].isMissing;
        if (sheet_ != nullptr) {
            show(glyphs[0], sheet_->code(decodeUtf8(text).code));
        } else if (isPlain && font_.use(glyphs[0].id, text)) {
            show(glyphs[0], 0);
        } else if (std::none_of(glyphs.begin(), glyphs.end(),
                                [](const PlacedGlyph& each) { return each.isShown; })) {
            for (const PlacedGlyph& each : glyphs) adjust(-each.advance);
        } else {
            replaced(glyphs, text);
        }
    }

    /// What takes text out of a page turns letters around that are read from right to left, one by one. So
    /// each letter stands for one character here, and where there are more characters than letters, blanks
    /// without room do.
    void backwardCluster(std::span<const PlacedGlyph> glyphs, std::string_view text) {
        const auto isSimple = [](const PlacedGlyph& each) { return each.isShown && !each.isMissing; };
        std::vector<std::string_view> characters = charactersOf(text);
        const bool isUsual = glyphs.size() == 1 && characters.size() == 1;
        if (isUsual || !std::all_of(glyphs.begin(), glyphs.end(), isSimple)) return cluster(glyphs, text);
        std::reverse(characters.begin(), characters.end());
        const bool isRaised = std::any_of(glyphs.begin(), glyphs.end(), [](const PlacedGlyph& each) {
            return std::abs(each.y) > noticeable;
        });
        if (isRaised && !characters.empty()) return markedCluster(glyphs, characters);
        for (std::size_t i = 0; i < glyphs.size(); ++i) {
            showAs(glyphs[i], i < characters.size() ? characters[i] : std::string_view());
        }
        for (std::size_t i = glyphs.size(); i < characters.size(); ++i) standIn(characters[i]);
    }

    void finish() { closeArray(); }

  private:
    /// Marks over and below a letter would be taken for another line: blanks bear their characters.
    void markedCluster(std::span<const PlacedGlyph> glyphs, const std::vector<std::string_view>& characters) {
        for (std::size_t i = 0; i + 1 < characters.size(); ++i) standIn(characters[i]);
        const auto base = std::max_element(
            glyphs.begin(), glyphs.end(),
            [](const PlacedGlyph& one, const PlacedGlyph& other) { return one.advance < other.advance; });
        for (const PlacedGlyph& each : glyphs) {
            showAs(each, &each == &*base ? characters.back() : std::string_view());
        }
    }

    void showAs(const PlacedGlyph& glyph, std::string_view text) {
        if (font_.use(glyph.id, text)) {
            show(glyph, 0);
        } else {
            replaced({&glyph, 1}, text);
        }
    }

    /// A blank without room that stands for a character.
    void standIn(std::string_view text) {
        hb_codepoint_t blank = 0;
        if (hb_font_get_nominal_glyph(font_.handle(), ' ', &blank) == 0) return;
        static_cast<void>(font_.use(blank, {}));
        closeArray();
        out_ += "/Span<</ActualText<FEFF";
        appendHexUtf16(out_, text);
        out_ += ">>>BDC 1 Tz <";
        appendHexCode(out_, blank);
        out_ += ">Tj 100 Tz EMC ";
        owed_ += font_.advance(blank) / 100;
    }

    /// Letters that do not say themselves which text they stand for.
    void replaced(std::span<const PlacedGlyph> glyphs, std::string_view text) {
        closeArray();
        out_ += "/Span<</ActualText<FEFF";
        appendHexUtf16(out_, text);
        out_ += ">>>BDC ";
        for (const PlacedGlyph& each : glyphs) {
            if (each.isMissing) {
                showBlank(each);
            } else if (each.isShown) {
                static_cast<void>(font_.use(each.id, {}));
                show(each, 0);
            } else {
                adjust(-each.advance);
            }
        }
        closeArray();
        out_ += "EMC ";
    }

    /// A blank as wide as the box that it stands for, so that its neighbours are as far as they look.
    void showBlank(const PlacedGlyph& glyph) {
        static_cast<void>(font_.use(glyph.id, {}));
        closeArray();
        appendNumber(out_, 100 * glyph.advance / std::max(1.0, font_.advance(glyph.id)));
        out_ += " Tz <";
        appendHexCode(out_, glyph.id);
        out_ += ">Tj 100 Tz ";
    }

    void show(const PlacedGlyph& glyph, unsigned char code) {
        if (std::abs(glyph.y) > noticeable) {
            closeArray();
            rise(glyph.y);
        }
        adjust(-glyph.x);
        if (!isString_) openString();
        if (sheet_ != nullptr) {
            constexpr std::string_view digits = "0123456789ABCDEF";
            array_ += digits[code >> 4U];
            array_ += digits[code & 0xFU];
        } else {
            appendHexCode(array_, glyph.id);
        }
        adjust(glyph.x + font_.advance(glyph.id) - glyph.advance);
        if (std::abs(glyph.y) > noticeable) {
            closeArray();
            rise(0);
        }
    }

    void rise(double thousandths) {
        appendNumber(out_, thousandths * risePerThousandth);
        out_ += " Ts ";
    }

    /// Goes back by that much; rounding does not add up.
    void adjust(double thousandths) {
        owed_ += thousandths;
        if (std::abs(owed_) <= noticeable) return;
        if (isString_) array_ += '>';
        isString_ = false;
        appendNumber(array_, owed_);
        owed_ = 0;
        isArray_ = true;
    }

    void openString() {
        array_ += '<';
        isString_ = true;
        ++strings_;
    }

    void closeArray() {
        if (isString_) array_ += '>';
        if (!array_.empty() && !isArray_ && strings_ == 1) {
            out_ += array_ + "Tj ";
        } else if (!array_.empty()) {
            out_ += "[" + array_ + "]TJ ";
        }
        array_.clear();
        isString_ = false;
        isArray_ = false;
        strings_ = 0;
    }

  public:
    double risePerThousandth = 0;

  private:
    PdfFont& font_;
    const FontSheet* sheet_;
    std::string& out_;
    std::string array_;
    bool isString_ = false;
    bool isArray_ = false;
    int strings_ = 0;
    double owed_ = 0;
};

/// The letters of the cluster that begins at `begin`.
std::span<const PlacedGlyph> clusterAt(std::span<const PlacedGlyph> glyphs, std::size_t begin) {
    std::size_t end = begin + 1;
    while (end < glyphs.size() && glyphs[end].textBegin == glyphs[begin].textBegin) ++end;
    return glyphs.subspan(begin, end - begin);
}

std::string_view textOf(const PlacedGlyph& glyph, std::string_view text) {
    return text.substr(glyph.textBegin, glyph.textEnd - glyph.textBegin);
}

/// The sheet that shows the letters, each the usual one of one character; null where they need more.
const FontSheet* sheetFor(PdfFont& font, std::span<const PlacedGlyph> glyphs, std::string_view text) {
    std::u32string characters;
    for (const PlacedGlyph& each : glyphs) {
        const std::string_view own = textOf(each, text);
        if (own.empty() || !each.isShown || each.isMissing) return nullptr;
        const Utf8Character character = decodeUtf8(own);
        hb_codepoint_t usual = 0;
        if (character.length != own.size() || !isFoundByName(character.code) ||
            hb_font_get_nominal_glyph(font.handle(), character.code, &usual) == 0 || usual != each.id) {
            return nullptr;
        }
        characters += character.code;
    }
    return font.sheetFor(characters);
}

}  // namespace

void RunWriter::append(const FontShape& shape, double size, std::span<const PlacedGlyph> glyphs,
                       std::string_view text, bool isBackward, ShapedLine& line) {
    PdfFont& font = fonts_.at(shape.id);
    ShapedRun& run = line.runs.emplace_back();
    run.font = shape;
    run.begin = line.width;
    run.sheet = preferNames_ ? sheetFor(font, glyphs, text) : nullptr;
    hasEmbedded_ = hasEmbedded_ || (preferNames_ && run.sheet == nullptr);
    Operators operators(font, run.sheet, run.operators);
    operators.risePerThousandth = size / 1000;
    double advance = 0;
    for (std::size_t i = 0; i < glyphs.size();) {
        const std::span<const PlacedGlyph> cluster = clusterAt(glyphs, i);
        if (isBackward) {
            operators.backwardCluster(cluster, textOf(cluster[0], text));
        } else {
            operators.cluster(cluster, textOf(cluster[0], text));
        }
        for (const PlacedGlyph& each : cluster) {
            if (each.isMissing) {
                line.missing.push_back({static_cast<float>(line.width + advance * size / 1000),
                                        static_cast<float>(each.advance * size / 1000)});
            }
            advance += each.advance;
        }
        i += cluster.size();
    }
    operators.finish();
    line.width += static_cast<float>(advance * size / 1000);
    line.ascent = std::max(line.ascent, static_cast<float>(font.ascent() * size / 1000));
    line.descent = std::max(line.descent, static_cast<float>(font.descent() * size / 1000));
}

}  // namespace vexa::frontend::pdf
