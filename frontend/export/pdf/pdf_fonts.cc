#include "frontend/export/pdf/pdf_fonts.h"

#include <hb-ot.h>
#include <hb-subset.h>

#include <algorithm>
#include <array>
#include <utility>

namespace vexa::frontend::pdf {

namespace {

constexpr double thousand = 1000;

struct SubsetRelease {
    void operator()(hb_subset_input_t* input) const { hb_subset_input_destroy(input); }
};

std::string_view bytesOf(hb_blob_t* blob) {
    unsigned int length = 0;
    const char* const data = hb_blob_get_data(blob, &length);
    return {data, length};
}

/// Letters that a subset is made for are named by a tag of six letters: it says which of them, so that two
/// files with different letters of a font do not take one for the other.
std::string subsetTag(const std::vector<hb_codepoint_t>& glyphs) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const hb_codepoint_t glyph : glyphs) hash = (hash ^ glyph) * 0x100000001B3U;
    std::string tag;
    for (int i = 0; i < 6; ++i, hash /= 26) tag += static_cast<char>('A' + hash % 26);
    return tag;
}

/// The font file with these letters alone, which keep their numbers; empty when the library cannot make it.
HbFace subsetOf(hb_font_t* font, const std::vector<hb_codepoint_t>& glyphs) {
    const std::unique_ptr<hb_subset_input_t, SubsetRelease> input(hb_subset_input_create_or_fail());
    if (input == nullptr) return nullptr;
    hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
    hb_set_t* const wanted = hb_subset_input_glyph_set(input.get());
    for (const hb_codepoint_t glyph : glyphs) hb_set_add(wanted, glyph);
    // A reader of the file needs none of what shapes text.
    hb_set_t* const dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
    for (const char* const each : {"GSUB", "GPOS", "GDEF", "kern", "DSIG", "BASE", "STAT"}) {
        hb_set_add(dropped, hb_tag_from_string(each, 4));
    }
    hb_face_t* const face = hb_font_get_face(font);
    unsigned int axes = hb_ot_var_get_axis_count(face);
    if (axes > 0) {
        std::vector<hb_ot_var_axis_info_t> infos(axes);
        hb_ot_var_get_axis_infos(face, 0, &axes, infos.data());
        unsigned int set = 0;
        const float* const chosen = hb_font_get_var_coords_design(font, &set);
        for (unsigned int i = 0; i < axes; ++i) {
            hb_subset_input_pin_axis_location(input.get(), face, infos[i].tag,
                                              i < set ? chosen[i] : infos[i].default_value);
        }
    }
    return HbFace(hb_subset_or_fail(face, input.get()));
}

std::string boxOf(hb_font_t* font, double ascent, double descent) {
    std::string box = "[";
    hb_glyph_extents_t widest{};
    // Of a letter that is wide in most fonts.
    hb_codepoint_t glyph = 0;
    const unsigned int units = hb_face_get_upem(hb_font_get_face(font));
    double width = thousand;
    if (hb_font_get_nominal_glyph(font, 'W', &glyph) != 0 &&
        hb_font_get_glyph_extents(font, glyph, &widest) != 0) {
        width = (widest.x_bearing + widest.width) * thousand / units;
    }
    appendNumber(box, std::min(0.0, widest.x_bearing * thousand / units));
    box += ' ';
    appendNumber(box, -descent);
    box += ' ';
    appendNumber(box, std::max(width, thousand));
    box += ' ';
    appendNumber(box, ascent);
    return box + "]";
}

double metric(hb_font_t* font, hb_ot_metrics_tag_t tag, double otherwise) {
    hb_position_t value = 0;
    if (hb_ot_metrics_get_position(font, tag, &value) == 0) return otherwise;
    return value * thousand / hb_face_get_upem(hb_font_get_face(font));
}

/// What a reader needs to know of a font, the more so when it has to replace it.
std::string descriptor(hb_font_t* font, const std::string& name, double ascent, double descent,
                       bool isSymbolic) {
    const double angle = hb_style_get_value(font, HB_STYLE_TAG_SLANT_ANGLE);
    const double weight = hb_style_get_value(font, HB_STYLE_TAG_WEIGHT);
    const bool isFixed = hb_font_get_glyph_h_advance(font, 1) == hb_font_get_glyph_h_advance(font, 2);
    const unsigned int flags = (isSymbolic ? 4U : 32U) | (angle != 0 ? 64U : 0U) | (isFixed ? 1U : 0U) |
                               (name.find("Serif") != std::string::npos ? 2U : 0U);
    std::string text = "<</Type/FontDescriptor/FontName";
    appendName(text, name);
    text += "/Flags " + std::to_string(flags) + "/FontBBox" + boxOf(font, ascent, descent) + "/ItalicAngle ";
    appendNumber(text, angle);
    text += "/Ascent ";
    appendNumber(text, ascent);
    text += "/Descent ";
    appendNumber(text, -descent);
    text += "/CapHeight ";
    appendNumber(text, metric(font, HB_OT_METRICS_TAG_CAP_HEIGHT, ascent));
    text += "/StemV " + std::to_string(weight > 550 ? 140 : 80);
    return text;
}

/// Which text each letter stands for.
std::string unicodeMap(const std::map<hb_codepoint_t, std::string>& texts) {
    std::string map =
        "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n/CIDSystemInfo<</Registry(Adobe)"
        "/Ordering(UCS)/Supplement 0>>def\n/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n"
        "1 begincodespacerange\n<0000><FFFF>\nendcodespacerange\n";
    constexpr std::size_t mostLines = 100;
    auto each = texts.begin();
    for (std::size_t left = texts.size(); left > 0;) {
        const std::size_t lines = std::min(left, mostLines);
        map += std::to_string(lines) + " beginbfchar\n";
        for (std::size_t i = 0; i < lines; ++i, ++each) {
            map += '<';
            appendHexCode(map, each->first);
            map += "><";
            appendHexUtf16(map, each->second);
            map += ">\n";
        }
        map += "endbfchar\n";
        left -= lines;
    }
    return map + "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n";
}

struct UsedGlyph {
    hb_codepoint_t id;
    double advance;
};

std::string widthsOf(const std::vector<UsedGlyph>& glyphs) {
    std::string widths = "[";
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        const bool goesOn = i > 0 && glyphs[i].id == glyphs[i - 1].id + 1;
        if (!goesOn) widths += (i == 0 ? "" : "]") + std::to_string(glyphs[i].id) + "[";
        if (goesOn) widths += ' ';
        appendNumber(widths, glyphs[i].advance);
    }
    return widths + (glyphs.empty() ? "]" : "]]");
}

/// The letters themselves: an entry of the descriptor. Outlines of curves of the third degree stand alone in
/// the file, the others with what places them.
std::string outlines(PdfFile& file, hb_face_t* face, bool isCff) {
    if (isCff) {
        const HbBlob table(hb_face_reference_table(face, HB_TAG('C', 'F', 'F', ' ')));
        const PdfObject stream = file.addStream("/Subtype/CIDFontType0C", bytesOf(table.get()));
        return "/FontFile3 " + std::to_string(stream) + " 0 R";
    }
    const HbBlob whole(hb_face_reference_blob(face));
    const std::string_view bytes = bytesOf(whole.get());
    const PdfObject stream = file.addStream("/Length1 " + std::to_string(bytes.size()), bytes);
    return "/FontFile2 " + std::to_string(stream) + " 0 R";
}

bool hasTable(hb_face_t* face, hb_tag_t tag) {
    const HbBlob table(hb_face_reference_table(face, tag));
    return hb_blob_get_length(table.get()) > 0;
}

}  // namespace

void appendHexCode(std::string& text, hb_codepoint_t glyph) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[glyph >> static_cast<unsigned int>(shift) & 0xFU];
}

PdfFont::PdfFont(hb_font_t* font) : font_(hb_font_create(hb_font_get_face(font))) {
    const unsigned int units = hb_face_get_upem(hb_font_get_face(font));
    hb_font_set_scale(font_.get(), static_cast<int>(units), static_cast<int>(units));
    unsigned int axes = 0;
    const float* const chosen = hb_font_get_var_coords_design(font, &axes);
    if (axes > 0) hb_font_set_var_coords_design(font_.get(), chosen, axes);
    unitsPerThousandth_ = units / thousand;
    hb_font_extents_t extents{};
    hb_font_get_h_extents(font_.get(), &extents);
    ascent_ = extents.ascender / unitsPerThousandth_;
    descent_ = -extents.descender / unitsPerThousandth_;
}

PdfFont::Glyph& PdfFont::glyph(hb_codepoint_t id) {
    if (id >= glyphs_.size()) glyphs_.resize(id + std::size_t{1});
    return glyphs_[id];
}

double PdfFont::advance(hb_codepoint_t glyph) {
    Glyph& known = this->glyph(glyph);
    if (known.advance < 0) {
        known.advance =
            static_cast<float>(hb_font_get_glyph_h_advance(font_.get(), glyph) / unitsPerThousandth_);
    }
    return known.advance;
}

bool PdfFont::use(hb_codepoint_t glyph, std::string_view text) {
    isEmbedded_ = true;
    Glyph& known = this->glyph(glyph);
    if (!known.isUsed) {
        known.isUsed = true;
        static_cast<void>(advance(glyph));
    }
    if (text.empty()) return false;
    const auto [found, isNew] = texts_.try_emplace(glyph, text);
    return isNew || found->second == text;
}

const FontSheet* PdfFont::sheetFor(const std::u32string& characters) {
    for (FontSheet& sheet : sheets_) {
        if (sheet.take(characters)) return &sheet;
    }
    const std::string name = "N" + embeddedName_.substr(1);
    for (const bool isWestern : {true, false}) {
        FontSheet sheet(sheets_.empty() ? name : name + "." + std::to_string(sheets_.size()), isWestern);
        if (sheet.take(characters)) return &sheets_.emplace_back(std::move(sheet));
    }
    return nullptr;
}

std::string PdfFont::postScriptName() const {
    std::array<char, 128> name{};
    unsigned int length = name.size();
    hb_ot_name_get_utf8(hb_font_get_face(font_.get()), HB_OT_NAME_ID_POSTSCRIPT_NAME, HB_LANGUAGE_INVALID,
                        &length, name.data());
    return length == 0 ? "Font" : std::string(name.data(), length);
}

FontId PdfFonts::find(hb_font_t* font, const std::string& key) {
    const auto [found, isNew] = ids_.try_emplace(key, static_cast<FontId>(fonts_.size()));
    if (isNew) {
        fonts_.push_back(std::make_unique<PdfFont>(font));
        fonts_.back()->embeddedName_ = "F" + std::to_string(fonts_.size());
    }
    return found->second;
}

std::string PdfFonts::write(PdfFile& file) {
    std::string names;
    for (const auto& font : fonts_) {
        if (font->isEmbedded_) names += "/" + font->embeddedName_ + " " + font->writeEmbedded(file);
        for (const FontSheet& sheet : font->sheets_)
            names += "/" + sheet.name() + " " + font->writeSheet(file, sheet);
    }
    return names;
}

std::string PdfFont::writeEmbedded(PdfFile& file) const {
    std::vector<UsedGlyph> used;
    std::vector<hb_codepoint_t> ids;
    for (std::size_t id = 0; id < glyphs_.size(); ++id) {
        if (!glyphs_[id].isUsed) continue;
        ids.push_back(static_cast<hb_codepoint_t>(id));
        used.push_back({ids.back(), glyphs_[id].advance});
    }
    const std::string name = subsetTag(ids) + "+" + postScriptName();
    std::string entries = descriptor(font_.get(), name, ascent_, descent_, true);
    const HbFace subset = subsetOf(font_.get(), ids);
    const bool isCff = subset != nullptr && hasTable(subset.get(), HB_TAG('C', 'F', 'F', ' '));
    if (subset != nullptr) entries += outlines(file, subset.get(), isCff);
    const PdfObject description = file.add(entries + ">>");
    std::string letters = "<</Type/Font/Subtype/CIDFontType";
    letters += isCff ? "0" : "2/CIDToGIDMap/Identity";
    letters += "/BaseFont";
    appendName(letters, name);
    letters += "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/FontDescriptor ";
    appendReference(letters, description);
    letters += "/DW 0/W" + widthsOf(used) + ">>";
    const PdfObject descendant = file.add(letters);
    std::string font = "<</Type/Font/Subtype/Type0/Encoding/Identity-H/BaseFont";
    appendName(font, name);
    font += "/DescendantFonts[";
    appendReference(font, descendant);
    font += "]/ToUnicode ";
    appendReference(font, file.addStream("", unicodeMap(texts_)));
    std::string reference;
    appendReference(reference, file.add(font + ">>"));
    return reference;
}

std::string PdfFont::writeSheet(PdfFile& file, const FontSheet& sheet) const {
    const std::string name = postScriptName();
    const PdfObject description = file.add(descriptor(font_.get(), name, ascent_, descent_, false) + ">>");
    const bool isCff = hasTable(hb_font_get_face(font_.get()), HB_TAG('C', 'F', 'F', ' '));
    std::string font = isCff ? "<</Type/Font/Subtype/Type1" : "<</Type/Font/Subtype/TrueType";
    const std::vector<char32_t> characters = sheet.characters();
    font += "/Encoding" + sheet.encoding() + "/FirstChar 32/LastChar " +
            std::to_string(31 + characters.size()) + "/BaseFont";
    appendName(font, name);
    font += "/FontDescriptor ";
    appendReference(font, description);
    if (const std::string map = sheet.unicodeMap(); !map.empty()) {
        font += "/ToUnicode ";
        appendReference(font, file.addStream("", map));
    }
    font += "/Widths[";
    for (const char32_t each : characters) {
        hb_codepoint_t glyph = 0;
        hb_font_get_nominal_glyph(font_.get(), each, &glyph);
        appendNumber(font, hb_font_get_glyph_h_advance(font_.get(), glyph) / unitsPerThousandth_);
        font += ' ';
    }
    std::string reference;
    appendReference(reference, file.add(font + "]>>"));
    return reference;
}

}  // namespace vexa::frontend::pdf
