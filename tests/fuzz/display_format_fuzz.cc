// Eight bytes as a number, the rest as the name of a format, and as a text that shows a number in it.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "backend/tables/formats/fixed_text.h"
#include "backend/tables/formats/number_text.h"

namespace {

using vexa::tables::DisplayFormat;
using vexa::tables::FormatKind;

/// Stops the program when something that always holds does not.
void require(bool holds) {
    if (!holds) std::abort();
}

/// The most by which the number that is shown may differ from `value`.
double tolerance(double value, DisplayFormat format) {
    const double digits = std::abs(value) * 1e-14;
    if (vexa::tables::countsSeconds(format.kind)) {
        const bool isTime = format.kind == FormatKind::time;
        const bool isShown =
            isTime ? std::abs(value) < 1e15 : value >= -62135596800.0 && value < 253402300800.0;
        if (!isShown) return digits;
        return isTime || format.kind == FormatKind::dateTime ? 1 : 86400;
    }
    if (format.kind == FormatKind::none) return digits;
    if (format.kind == FormatKind::scientific)
        return std::abs(value) * 5.1 * std::pow(10, -1 - format.decimals) + digits;
    return 0.5 * std::pow(10, -format.decimals) + digits;
}

void show(double value, DisplayFormat format) {
    std::string text = "before ";
    vexa::tables::appendNumber(text, value, format);
    require(text.compare(0, 7, "before ") == 0 && text.size() > 7);
    text.erase(0, 7);
    require(text.find_first_not_of("0123456789+-.,$%:/ AEeJanFebMrpyulgSOctNovDif") == std::string::npos);
    require(text.size() >= format.width || format.kind != FormatKind::zeroPadded || !std::isfinite(value));
    const std::optional<double> back = vexa::tables::parseNumber(text, format);
    // What rounding has carried beyond the greatest double (2E+308) cannot be read.
    if (!back) return require(std::abs(value) >= 1.5e308);
    if (!std::isfinite(value)) return require(std::isnan(value) ? std::isnan(*back) : *back == value);
    require(std::abs(*back - value) <= tolerance(value, format));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    double value = 0;
    if (size < sizeof value) return 0;
    std::memcpy(&value, data, sizeof value);
    const std::string_view name(reinterpret_cast<const char*>(data) + sizeof value, size - sizeof value);
    const std::optional<DisplayFormat> format = vexa::tables::parseFormat(name);
    show(value, {});
    if (format) {
        require(vexa::tables::parseFormat(vexa::tables::formatText(*format)) == format);
        show(value, *format);
        if (std::isfinite(value)) {
            std::string quick;
            std::string byDigits;
            vexa::tables::appendFixed(quick, value, format->decimals, {});
            vexa::tables::appendFixedByDigits(byDigits, value, format->decimals, {});
            require(quick == byDigits);
        }
    }
    for (int kind = 0; kind <= static_cast<int>(FormatKind::dateTime); ++kind) {
        const DisplayFormat any{static_cast<FormatKind>(kind), 0, 0};
        const std::optional<double> number = vexa::tables::parseNumber(name, any);
        if (number) show(*number, any);
    }
    return 0;
}
