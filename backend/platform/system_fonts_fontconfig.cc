#include <fontconfig/fontconfig.h>

#include <memory>

#include "backend/platform/system_fonts.h"

namespace vexa {

namespace {

template <auto destroy>
struct Destroy {
    template <typename Thing>
    void operator()(Thing* thing) const {
        destroy(thing);
    }
};

using Config = std::unique_ptr<FcConfig, Destroy<FcConfigDestroy>>;
using Pattern = std::unique_ptr<FcPattern, Destroy<FcPatternDestroy>>;
using Properties = std::unique_ptr<FcObjectSet, Destroy<FcObjectSetDestroy>>;
using FontSet = std::unique_ptr<FcFontSet, Destroy<FcFontSetDestroy>>;

/// Every name of the font's family: it may have one in each language, and narrower families of one.
void addFamilies(FcPattern* font, std::vector<std::string>& families) {
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_FAMILY, i, &name) == FcResultMatch; ++i) {
        families.emplace_back(reinterpret_cast<const char*>(name));
    }
}

}  // namespace

std::vector<std::string> systemFonts() {
    // A configuration of its own, so that nothing is left behind in the library, which others may use as
    // well.
    const Config config(FcInitLoadConfigAndFonts());
    const Pattern any(FcPatternCreate());
    const Properties wanted(FcObjectSetBuild(FC_FAMILY, nullptr));
    if (!config || !any || !wanted) return {};
    const FontSet fonts(FcFontList(config.get(), any.get(), wanted.get()));
    std::vector<std::string> families;
    for (int i = 0; fonts && i < fonts->nfont; ++i) addFamilies(fonts->fonts[i], families);
    return families;
}

}  // namespace vexa
