#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ucnv_err.h>

#include <array>
#include <cassert>

#include "backend/text/character_set_implementations.h"

namespace vexa {

namespace {

using ConverterPointer = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

/// Writes U+FFFD for what cannot be read; the stock callback writes a control character for some single
/// bytes.
void U_CALLCONV replaceUnreadable(const void*, UConverterToUnicodeArgs* arguments, const char*, int32_t,
                                  UConverterCallbackReason reason, UErrorCode* status) {
    if (reason > UCNV_IRREGULAR) return;
    const UChar replacement = 0xFFFD;
    *status = U_ZERO_ERROR;
    ucnv_cbToUWriteUChars(arguments, &replacement, 1, 0, status);
}

class IcuConverter final : public CodePageConverter {
  public:
    explicit IcuConverter(ConverterPointer converter) : converter_(std::move(converter)) {}

    [[nodiscard]] Reading classify(std::string_view bytes) const override;
    [[nodiscard]] std::u16string toUtf16(std::string_view text) const override;
    [[nodiscard]] std::optional<std::u16string> toUtf16Strictly(std::string_view text) const override;
    [[nodiscard]] std::string fromUtf16(std::u16string_view text) const override;

  private:
    void stopAtErrors(bool stop) const;
    [[nodiscard]] Reading unassigned(std::string_view bytes) const;
    UErrorCode convert(std::string_view text, std::u16string& result) const;

    ConverterPointer converter_;
};

void IcuConverter::stopAtErrors(bool stop) const {
    UErrorCode status = U_ZERO_ERROR;
    const UConverterToUCallback callback = stop ? UCNV_TO_U_CALLBACK_STOP : replaceUnreadable;
    ucnv_setToUCallBack(converter_.get(), callback, nullptr, nullptr, nullptr, &status);
    assert(U_SUCCESS(status));
}

UErrorCode IcuConverter::convert(std::string_view text, std::u16string& result) const {
    ucnv_resetToUnicode(converter_.get());
    result.resize(text.size() + 8);
    const char* source = text.data();
    std::size_t written = 0;
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        status = U_ZERO_ERROR;
        UChar* target = result.data() + written;
        ucnv_toUnicode(converter_.get(), &target, result.data() + result.size(), &source,
                       text.data() + text.size(), nullptr, 1, &status);
        written = static_cast<std::size_t>(target - result.data());
        if (status == U_BUFFER_OVERFLOW_ERROR) result.resize(result.size() * 2);
    }
    result.resize(written);
    return status;
}

CodePageConverter::Reading IcuConverter::classify(std::string_view bytes) const {
    stopAtErrors(true);
    ucnv_resetToUnicode(converter_.get());
    std::array<UChar, 16> units{};
    UChar* end = units.data();
    const char* source = bytes.data();
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUnicode(converter_.get(), &end, units.data() + units.size(), &source, bytes.data() + bytes.size(),
                   nullptr, 1, &status);
    if (status == U_TRUNCATED_CHAR_FOUND) return end == units.data() ? Reading::needsMore : Reading::broken;
    if (U_FAILURE(status)) return status == U_INVALID_CHAR_FOUND ? unassigned(bytes) : Reading::broken;
    // A character may be two units, as a pair of surrogates or a letter with its mark; what ends in an ASCII
    // character is two characters.
    const bool endsInAscii = end - units.data() > 1 && *(end - 1) < 0x80;
    return endsInAscii ? Reading::broken : Reading::character;
}

/// The bytes just read have the form of the set, but nothing stands for them: one character if they are all
/// of it.
CodePageConverter::Reading IcuConverter::unassigned(std::string_view bytes) const {
    std::array<char, 8> invalid{};
    auto length = static_cast<int8_t>(invalid.size());
    UErrorCode status = U_ZERO_ERROR;
    ucnv_getInvalidChars(converter_.get(), invalid.data(), &length, &status);
    const bool whole = U_SUCCESS(status) && static_cast<std::size_t>(length) == bytes.size();
    return whole ? Reading::character : Reading::broken;
}

std::u16string IcuConverter::toUtf16(std::string_view text) const {
    stopAtErrors(false);
    std::u16string result;
    const UErrorCode status = convert(text, result);
    assert(U_SUCCESS(status));
    static_cast<void>(status);
    return result;
}

std::optional<std::u16string> IcuConverter::toUtf16Strictly(std::string_view text) const {
    stopAtErrors(true);
    std::u16string result;
    if (U_FAILURE(convert(text, result))) return std::nullopt;
    return result;
}

std::string IcuConverter::fromUtf16(std::u16string_view text) const {
    ucnv_resetFromUnicode(converter_.get());
    std::string result(text.size() * 4 + 8, '\0');
    const UChar* source = text.data();
    std::size_t written = 0;
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        status = U_ZERO_ERROR;
        char* target = result.data() + written;
        ucnv_fromUnicode(converter_.get(), &target, result.data() + result.size(), &source,
                         text.data() + text.size(), nullptr, 1, &status);
        written = static_cast<std::size_t>(target - result.data());
        if (status == U_BUFFER_OVERFLOW_ERROR) result.resize(result.size() * 2);
    }
    assert(U_SUCCESS(status));
    result.resize(written);
    return result;
}

/// Sets with shift states, 16-bit sets and pure double-byte sets are none that a syntax file can be written
/// in.
bool isPlain(UConverterType type) {
    return type == UCNV_SBCS || type == UCNV_MBCS || type == UCNV_LATIN_1 || type == UCNV_US_ASCII;
}

std::string canonicalNameOf(UConverter* converter) {
    UErrorCode status = U_ZERO_ERROR;
    std::string internal = ucnv_getName(converter, &status);
    for (const char* standard : {"MIME", "IANA", "WINDOWS"}) {
        status = U_ZERO_ERROR;
        const char* name = ucnv_getStandardName(internal.c_str(), standard, &status);
        if (U_SUCCESS(status) && name != nullptr) return name;
    }
    return internal;
}

}  // namespace

std::unique_ptr<CodePageConverter> CodePageConverter::open(const std::string& name,
                                                           std::string& canonicalName) {
    // A comma would introduce options of the converter, and an empty name mean the locale's own set.
    if (name.empty() || name.find_first_of(std::string_view(",\0", 2)) != std::string::npos) return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    ConverterPointer converter(ucnv_open(name.c_str(), &status), &ucnv_close);
    if (U_FAILURE(status) || converter == nullptr) return nullptr;
    if (ucnv_getType(converter.get()) == UCNV_UTF8) {
        canonicalName = "UTF-8";
        return nullptr;
    }
    if (!isPlain(ucnv_getType(converter.get()))) return nullptr;
    canonicalName = canonicalNameOf(converter.get());
    ucnv_setSubstString(converter.get(), u"?", 1, &status);
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_SUBSTITUTE, nullptr, nullptr, nullptr,
                          &status);
    if (U_FAILURE(status)) return nullptr;
    return std::make_unique<IcuConverter>(std::move(converter));
}

}  // namespace vexa
