#include "module/modify/font_style.h"

#include <vector>

#include "module/frame/xml_text.h"

namespace vexa {

FontStyle readFontStyle(const ParamObj& style) {
    FontStyle result;
    std::vector<std::string_view> keywords;
    // The parser lets nothing but the keywords through.
    static_cast<void>(style.getStringList(keywords));
    for (const std::string_view keyword : keywords) {
        if (AreStringsEqualCase(keyword, "REGULAR")) {
            result.bold.set(false);
            result.italic.set(false);
            result.underline.set(false);
        } else if (AreStringsEqualCase(keyword, "BOLD")) {
            result.bold.set(true);
        } else if (AreStringsEqualCase(keyword, "ITALIC")) {
            result.italic.set(true);
        } else if (AreStringsEqualCase(keyword, "UNDERLINE")) {
            result.underline.set(true);
        }
    }
    return result;
}

void appendStyle(const StyleSetting& setting, std::string_view name, std::string& request) {
    if (setting.given) {
        appendFlag(request, name, setting.on);
    }
}

}  // namespace vexa
