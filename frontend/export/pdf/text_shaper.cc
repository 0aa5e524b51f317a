#include "frontend/export/pdf/text_shaper.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-font.h>
#include <pango/pangofc-fontmap.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

#include "backend/platform/memory.h"
#include "backend/text/utf8.h"

namespace vexa::frontend::pdf {

namespace {

/// Points. No page is higher, and the libraries draw no letters of a size far above.
constexpr double largestFont = 14'400;
/// So many texts are kept; those of a table with more are shaped again when they are drawn.
constexpr std::size_t mostKnown = 3'000;
constexpr std::size_t mostKnownLines = 30'000;
/// A paragraph without a line end is shaped in pieces no longer than this, in bytes.
constexpr std::size_t longestParagraph = 16'000;

/// The libraries that find fonts and shape texts end the process where memory lacks. A font is looked for by
/// threads with stacks of their own; texts take little, so that looking now and then is enough.
constexpr std::uint64_t memoryOfFont = std::uint64_t{96} << 20U;
constexpr std::uint64_t memoryOfTexts = std::uint64_t{16} << 20U;
constexpr std::size_t shapedBetween = 64;

struct GObjectRelease {
    void operator()(void* object) const { g_object_unref(object); }
};
template <typename Object>
using GOwned = std::unique_ptr<Object, GObjectRelease>;

struct DescriptionRelease {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
using Description = std::unique_ptr<PangoFontDescription, DescriptionRelease>;

struct CairoOptionsRelease {
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};

/// A font of another size has letters in the same proportions: nothing is rounded to pixels.
GOwned<PangoContext> makeContext(PangoFontMap* map, const std::string& language) {
    GOwned<PangoContext> context(pango_font_map_create_context(map));
    const std::unique_ptr<cairo_font_options_t, CairoOptionsRelease> options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_cairo_context_set_resolution(context.get(), 72);
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    pango_context_set_language(context.get(), pango_language_from_string(language.c_str()));
    return context;
}

Description describe(const TextStyle& style) {
    Description description(pango_font_description_new());
    std::string family = style.font.empty() ? "sans-serif" : style.font;
    std::replace(family.begin(), family.end(), '\0', ' ');
    // A comma would begin a second family.
    std::replace(family.begin(), family.end(), ',', ' ');
    pango_font_description_set_family(description.get(), family.c_str());
    pango_font_description_set_absolute_size(description.get(),
                                             std::min(style.size, largestFont) * PANGO_SCALE);
    pango_font_description_set_weight(description.get(),
                                      style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(description.get(),
                                     style.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    return description;
}

bool isPlainAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char each) { return each >= ' ' && each <= '~'; });
}

/// The characters of a paragraph that is too long, cut into several.
void cutParagraph(std::string_view line, std::string& out) {
    while (line.size() > longestParagraph) {
        std::size_t end = line.rfind(' ', longestParagraph);
        if (end == std::string_view::npos || end < longestParagraph / 2) {
            end = longestParagraph;
            while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0U) == 0x80U) --end;
        }
        out.append(line.substr(0, end));
        out += '\n';
        line.remove_prefix(end + (line[end] == ' ' ? 1U : 0U));
    }
    out.append(line);
}

}  // namespace

struct TextShaper::Pango {
    GOwned<PangoFontMap> map;
    GOwned<PangoContext> context;
    GOwned<PangoLayout> layout;
    std::map<PangoFont*, FontShape> shapes;
    std::vector<GOwned<PangoFont>> held;  // so that no other font gets one's address
    hb_language_t language = HB_LANGUAGE_INVALID;

    FontShape shapeOf(PangoFont* font, PdfFonts& fonts);
};

FontShape TextShaper::Pango::shapeOf(PangoFont* font, PdfFonts& fonts) {
    if (const auto found = shapes.find(font); found != shapes.end()) return found->second;
    FontShape shape;
    FcChar8* file = nullptr;
    FcChar8* variations = nullptr;
    int index = 0;
    std::string key;
    if (PANGO_IS_FC_FONT(font)) {
        FcPattern* const pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(font));
        FcPatternGetString(pattern, FC_FILE, 0, &file);
        FcPatternGetInteger(pattern, FC_INDEX, 0, &index);
        FcPatternGetString(pattern, FC_FONT_VARIATIONS, 0, &variations);
        FcMatrix* matrix = nullptr;
        FcBool thickened = FcFalse;
        if (FcPatternGetMatrix(pattern, FC_MATRIX, 0, &matrix) == FcResultMatch) {
            shape.slant = static_cast<float>(matrix->xy);
        }
        if (FcPatternGetBool(pattern, FC_EMBOLDEN, 0, &thickened) == FcResultMatch) {
            shape.isThickened = thickened != FcFalse;
        }
    }
    if (file != nullptr) key = reinterpret_cast<const char*>(file);
    key += '\n' + std::to_string(index) + '\n';
    if (variations != nullptr) key += reinterpret_cast<const char*>(variations);
    shape.id = fonts.find(pango_font_get_hb_font(font), key);
    held.emplace_back(PANGO_FONT(g_object_ref(font)));
    shapes.emplace(font, shape);
    return shape;
}

/// The font of a style for texts that are ASCII throughout, where it has all of that.
struct TextShaper::PlainFont {
    bool isUsable = false;
    FontShape shape;
    HbBuffer buffer;
};

TextShaper::TextShaper(PdfFonts& fonts, const std::string& language, bool embedFonts)
    : fonts_(fonts), writer_(fonts, !embedFonts), pango_(std::make_unique<Pango>()) {
    requireMemory(memoryOfFont);
    pango_->map.reset(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT));
    // The first map lets a thread read what fonts there are. A picture that is drawn meanwhile, in a copy of
    // the process that has no such thread, would wait for it in vain.
    pango_fc_font_map_get_config(PANGO_FC_FONT_MAP(pango_->map.get()));
    pango_->context = makeContext(pango_->map.get(), language);
    pango_->layout.reset(pango_layout_new(pango_->context.get()));
    pango_->language = hb_language_from_string(language.c_str(), -1);
    if (embedFonts) return;
    // Letters that are joined have no character of their own that a font could be asked for.
    PangoAttrList* const attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_font_features_new("liga=0,clig=0"));
    pango_layout_set_attributes(pango_->layout.get(), attributes);
    pango_attr_list_unref(attributes);
}

TextShaper::~TextShaper() = default;

TextStyleId TextShaper::styleOf(const TextStyle& style) {
    const auto found = std::find(styles_.begin(), styles_.end(), style);
    if (found != styles_.end()) return static_cast<TextStyleId>(found - styles_.begin());
    requireMemory(memoryOfFont);
    styles_.push_back(style);
    auto plain = std::make_unique<PlainFont>();
    const Description description = describe(style);
    const GOwned<PangoFont> font(
        pango_font_map_load_font(pango_->map.get(), pango_->context.get(), description.get()));
    if (font != nullptr) {
        plain->shape = pango_->shapeOf(font.get(), fonts_);
        plain->isUsable = true;
        for (hb_codepoint_t each = ' '; each <= '~'; ++each) {
            hb_codepoint_t glyph = 0;
            plain->isUsable = plain->isUsable && hb_font_get_nominal_glyph(
                                                     fonts_.at(plain->shape.id).handle(), each, &glyph) != 0;
        }
    }
    plain->buffer.reset(hb_buffer_create());
    plain_.push_back(std::move(plain));
    return static_cast<TextStyleId>(styles_.size() - 1);
}

const ShapedText& TextShaper::lines(TextStyleId style, std::string_view text) {
    return shape(style, text, 0);
}

const ShapedText& TextShaper::wrapped(TextStyleId style, std::string_view text, double width) {
    // Breaking lines is only asked for where they are too long.
    const ShapedText& whole = shape(style, text, 0);
    return whole.width <= width + 0.05 ? whole : shape(style, text, std::max(width, 1.0));
}

void TextShaper::forgetSome() {
    if (known_.size() < mostKnown && knownLines_ < mostKnownLines) return;
    known_.clear();
    knownLines_ = 0;
}

const ShapedText& TextShaper::shape(TextStyleId style, std::string_view text, double width) {
    const auto hundredths = static_cast<std::uint32_t>(width * 100);
    key_.assign(reinterpret_cast<const char*>(&style), sizeof style);
    key_.append(reinterpret_cast<const char*>(&hundredths), sizeof hundredths);
    key_.append(text);
    if (const auto found = known_.find(key_); found != known_.end()) return found->second;
    const bool isPlain = width == 0 && plain_[style]->isUsable && isPlainAscii(text);
    forgetSome();
    if (++shaped_ % shapedBetween == 0 || text.size() > longestParagraph) requireMemory(memoryOfTexts);
    const std::string key = key_;
    ShapedText shaped = isPlain ? shapePlain(style, text) : shapeAny(style, showableText(text), width, true);
    knownLines_ += shaped.lines.size();
    return known_.insert_or_assign(key, std::move(shaped)).first->second;
}

double TextShaper::longestPiece(TextStyleId style, std::string_view text) {
    if (!plain_[style]->isUsable || !isPlainAscii(text)) {
        return shapeAny(style, showableText(text), 1, false).width;
    }
    double longest = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        longest = std::max<double>(longest, lines(style, text.substr(0, end)).width);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return longest;
}

ShapedText TextShaper::shapePlain(TextStyleId id, std::string_view text) {
    const PlainFont& plain = *plain_[id];
    PdfFont& font = fonts_.at(plain.shape.id);
    hb_buffer_t* const buffer = plain.buffer.get();
    hb_buffer_clear_contents(buffer);
    hb_buffer_add_utf8(buffer, text.data(), static_cast<int>(text.size()), 0, -1);
    hb_buffer_set_direction(buffer, HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, HB_SCRIPT_LATIN);
    hb_buffer_set_language(buffer, pango_->language);
    constexpr hb_feature_t none[] = {{HB_TAG('l', 'i', 'g', 'a'), 0, 0, static_cast<unsigned int>(-1)},
                                     {HB_TAG('c', 'l', 'i', 'g'), 0, 0, static_cast<unsigned int>(-1)}};
    hb_shape(font.handle(), buffer, none, writer_.prefersNames() ? 2 : 0);
    unsigned int count = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t* const places = hb_buffer_get_glyph_positions(buffer, &count);
    const double scale = 1 / font.unitsPerThousandth();
    glyphs_.clear();
    for (unsigned int i = 0; i < count; ++i) {
        unsigned int next = i + 1;
        while (next < count && infos[next].cluster == infos[i].cluster) ++next;
        glyphs_.push_back({infos[i].codepoint, true, false, places[i].x_advance * scale,
                           places[i].x_offset * scale, places[i].y_offset * scale, infos[i].cluster,
                           next < count ? infos[next].cluster : text.size()});
    }
    const double size = styles_[id].size;
    ShapedText shaped;
    ShapedLine& line = shaped.lines.emplace_back();
    line.ascent = static_cast<float>(font.ascent() * size / 1000);
    line.descent = static_cast<float>(font.descent() * size / 1000);
    if (count > 0) writer_.append(plain.shape, size, glyphs_, text, false, line);
    shaped.width = line.width;
    shaped.height = line.height();
    return shaped;
}

namespace {

/// Fills in where each letter's text ends; they stand in the order of the line, from left to right.
void setTextEnds(std::vector<PlacedGlyph>& glyphs, std::size_t end, bool isBackward) {
    std::size_t behind = end;
    const auto set = [&](std::size_t i, std::size_t neighbour, bool hasNeighbour) {
        if (hasNeighbour && glyphs[neighbour].textBegin != glyphs[i].textBegin) {
            behind = glyphs[neighbour].textBegin;
        }
        glyphs[i].textEnd = behind;
    };
    if (isBackward) {
        for (std::size_t i = 0; i < glyphs.size(); ++i) set(i, i - 1, i > 0);
    } else {
        for (std::size_t i = glyphs.size(); i-- > 0;) set(i, i + 1, i + 1 < glyphs.size());
    }
}

void placeGlyphs(const PangoGlyphItem& item, double scale, std::vector<PlacedGlyph>& glyphs) {
    for (int i = 0; i < item.glyphs->num_glyphs; ++i) {
        const PangoGlyphInfo& glyph = item.glyphs->glyphs[i];
        PlacedGlyph& placed = glyphs.emplace_back();
        placed.textBegin = static_cast<std::size_t>(item.item->offset) +
                           static_cast<std::size_t>(item.glyphs->log_clusters[i]);
        placed.advance = glyph.geometry.width * scale;
        placed.x = glyph.geometry.x_offset * scale;
        placed.y = -glyph.geometry.y_offset * scale;
        placed.id = glyph.glyph;
        placed.isMissing = (glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0;
        placed.isShown = glyph.glyph != PANGO_GLYPH_EMPTY;
    }
}

}  // namespace

/// Paragraph by paragraph, so that a long text takes no more memory than what comes of it.
ShapedText TextShaper::shapeAny(TextStyleId id, const std::string& text, double width, bool breaksWords) {
    const Description description = describe(styles_[id]);
    PangoLayout* const layout = pango_->layout.get();
    pango_layout_set_font_description(layout, description.get());
    pango_layout_set_width(layout, width > 0 ? static_cast<int>(width * PANGO_SCALE) : -1);
    pango_layout_set_wrap(layout, breaksWords ? PANGO_WRAP_WORD_CHAR : PANGO_WRAP_WORD);
    ShapedText shaped;
    for (std::string_view rest = text;;) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view paragraph = rest.substr(0, end);
        const bool isPlain = plain_[id]->isUsable && isPlainAscii(paragraph);
        ShapedText plain = isPlain ? shapePlain(id, paragraph) : ShapedText();
        if (isPlain && (width == 0 || plain.width <= width)) {
            shaped.lines.push_back(std::move(plain.lines[0]));
        } else {
            shapeParagraph(id, paragraph, shaped);
        }
        if (end == rest.size()) break;
        rest.remove_prefix(end + 1);
    }
    for (const ShapedLine& line : shaped.lines) {
        shaped.width = std::max(shaped.width, line.width);
        shaped.height += line.height();
    }
    return shaped;
}

void TextShaper::shapeParagraph(TextStyleId id, std::string_view text, ShapedText& shaped) {
    const double size = styles_[id].size;
    PangoLayout* const layout = pango_->layout.get();
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    const PdfFont& usual = fonts_.at(plain_[id]->shape.id);
    for (GSList* each = pango_layout_get_lines_readonly(layout); each != nullptr; each = each->next) {
        ShapedLine& line = shaped.lines.emplace_back();
        line.ascent = static_cast<float>(usual.ascent() * size / 1000);
        line.descent = static_cast<float>(usual.descent() * size / 1000);
        for (GSList* run = static_cast<PangoLayoutLine*>(each->data)->runs; run != nullptr; run = run->next) {
            const auto* const item = static_cast<PangoGlyphItem*>(run->data);
            const FontShape shape = pango_->shapeOf(item->item->analysis.font, fonts_);
            const bool isBackward = (item->item->analysis.level & 1) != 0;
            glyphs_.clear();
            placeGlyphs(*item, 1000.0 / (size * PANGO_SCALE), glyphs_);
            setTextEnds(
                glyphs_,
                static_cast<std::size_t>(item->item->offset) + static_cast<std::size_t>(item->item->length),
                isBackward);
            noteMissing(shape, text);
            writer_.append(shape, size, glyphs_, text, isBackward, line);
        }
    }
}

void TextShaper::noteMissing(const FontShape& shape, std::string_view text) {
    hb_codepoint_t blank = 0;
    const bool hasBlank = hb_font_get_nominal_glyph(fonts_.at(shape.id).handle(), ' ', &blank) != 0;
    for (PlacedGlyph& each : glyphs_) {
        const bool isBlank = !each.isShown && each.advance > 0 && text[each.textBegin] == ' ';
        if (isBlank && hasBlank) {
            each.id = blank;
            each.isShown = true;
        }
        if (isBlank || !each.isMissing || !each.isShown) {
            each.isMissing = false;
            continue;
        }
        missing_.insert(decodeUtf8(text.substr(each.textBegin)).code);
        // A blank bears the character for whoever takes the text out of the page.
        each.id = hasBlank ? blank : 0;
        each.x = 0;
        each.y = 0;
    }
}

std::string showableText(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    std::string line;
    const auto flush = [&] {
        cutParagraph(line, shown);
        line.clear();
    };
    for (std::size_t i = 0; i < text.size();) {
        const Utf8Character character = decodeUtf8(text.substr(i));
        const bool isEnd = character.code == '\n' || character.code == '\r' || character.code == 0x2028 ||
                           character.code == 0x2029 || character.code == 0x85;
        if (isEnd) {
            flush();
            shown += '\n';
            if (text.substr(i).starts_with("\r\n")) ++i;
        } else if (character.code == '\t') {
            line += '\t';
        } else {
            const bool isControl = character.code < ' ' || (character.code >= 0x7F && character.code < 0xA0);
            appendUtf8(line, isControl ? kReplacementCharacter : character.code);
        }
        i += character.length;
    }
    flush();
    while (!shown.empty() && shown.back() == '\n') shown.pop_back();
    return shown;
}

}  // namespace vexa::frontend::pdf
