#include "frontend/drawing/general_fonts.h"

#include <fontconfig/fontconfig.h>

#include <memory>

namespace vexa::frontend {

namespace {

/// They stand before the rules of the system, so that these know the fonts that are as wide.
constexpr const char* fontRules = R"(<?xml version="1.0"?>
<fontconfig>
  <match target="pattern">
    <test qual="first" name="family"><string>sans-serif</string></test>
    <edit name="family" mode="prepend" binding="strong"><string>Arial</string></edit>
  </match>
  <match target="pattern">
    <test qual="first" name="family"><string>serif</string></test>
    <edit name="family" mode="prepend" binding="strong"><string>Times New Roman</string></edit>
  </match>
</fontconfig>
)";

struct ConfigRelease {
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
};
using Config = std::unique_ptr<FcConfig, ConfigRelease>;

bool settle() {
    const Config config(FcConfigCreate());
    if (config == nullptr) return false;
    const auto* const text = reinterpret_cast<const FcChar8*>(fontRules);
    // Whatever of it fails, the system's own configuration is used as it would have been.
    return FcConfigParseAndLoadFromMemory(config.get(), text, FcTrue) != FcFalse &&
           FcConfigParseAndLoad(config.get(), nullptr, FcTrue) != FcFalse &&
           FcConfigBuildFonts(config.get()) != FcFalse && FcConfigSetCurrent(config.get()) != FcFalse;
}

}  // namespace

void settleGeneralFonts() {
    static const bool isSettled = settle();
    static_cast<void>(isSettled);
}

}  // namespace vexa::frontend
