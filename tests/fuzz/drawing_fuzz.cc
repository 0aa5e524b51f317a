// A picture and rules for it, divided by a zero byte, as files that draw it: rules never break the picture,
// and every file is whole. A PNG is told by its first byte.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "frontend/drawing/emf_file.h"
#include "frontend/drawing/eps_file.h"
#include "frontend/drawing/picture_style.h"
#include "frontend/package/xml_check.h"

using namespace vexa::frontend;

namespace {

void demand(bool holds) {
    if (!holds) std::abort();
}

bool isXml(std::string_view text) {
    XmlPolicy policy = foreignXml;
    policy.documentTypes = true;
    XmlSize size;
    return static_cast<bool>(checkXml(text, XmlLimits{}, policy, size));
}

std::uint32_t numberAt(std::string_view bytes, std::size_t at, bool fromTheLeft) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number = number << 8U | static_cast<unsigned char>(bytes[fromTheLeft ? at + i : at + 3 - i]);
    }
    return number;
}

/// Records one behind the other, as many as the header says.
void checkEmf(std::string_view file) {
    demand(file.size() >= 108 && numberAt(file, 48, false) == file.size());
    std::uint32_t records = 0;
    std::size_t at = 0;
    std::uint32_t last = 0;
    while (at + 8 <= file.size()) {
        last = numberAt(file, at, false);
        const std::uint32_t size = numberAt(file, at + 4, false);
        demand(size >= 8 && size % 4 == 0 && size <= file.size() - at);
        at += size;
        ++records;
    }
    demand(at == file.size() && last == 14 && records == numberAt(file, 52, false));
}

void checkEps(std::string_view file) {
    demand(file.starts_with("%!PS-Adobe-3.0 EPSF-3.0\n") && file.ends_with("%%EOF\n"));
    for (const char each : file) demand(static_cast<unsigned char>(each) < 0x80);
}

void draw(const Picture& picture) {
    DrawingOrder order;
    order.width = 60;
    order.height = 30;
    std::string reason;
    const std::string emf = emfFile(picture, order, reason);
    if (emf.empty()) {
        demand(!reason.empty());
    } else {
        checkEmf(emf);
    }
    reason.clear();
    const std::string eps = epsFile(picture, order, reason);
    if (eps.empty()) {
        demand(!reason.empty());
    } else {
        checkEps(eps);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.starts_with('\x89')) {
        if (size < 24) return 0;
        // Its size in points, as who imports it finds it.
        draw({PictureForm::png, std::string(input), numberAt(input, 16, true) * 0.75,
              numberAt(input, 20, true) * 0.75});
        return 0;
    }
    const std::size_t end = std::min(input.find('\0'), size);
    const std::string_view svg = input.substr(0, end);
    const std::string_view text = input.substr(std::min(end + 1, size));
    ShownPicture shown;
    shown.templates.emplace_back(text);
    const std::string rules = appliedRules(shown, text);
    const std::string styled = applyRules(svg, rules);
    if (isXml(svg) && rules.find_first_not_of(" \t\r\n") != std::string::npos && isXml(rules + "<r/>")) {
        demand(isXml(styled));
    }
    draw({PictureForm::svg, styled, 60, 30});
    return 0;
}
