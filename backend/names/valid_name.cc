#include "backend/names/valid_name.h"

#include "backend/text/character_set.h"

namespace vexa {

namespace {

bool mayBegin(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '@' || c == '#' || c == '$' || c >= 0x80;
}

bool mayGoOn(unsigned char c) { return mayBegin(c) || (c >= '0' && c <= '9') || c == '.' || c == '_'; }

constexpr int kValid = 0;
constexpr int kInvalid = 1;

}  // namespace

int ValidateVexaNameCheckLastChar(const char* text) {
    if (text == nullptr || !mayBegin(static_cast<unsigned char>(*text))) {
        return kInvalid;
    }
    unsigned char last = 0;
    // By character: a trail byte may look like any ASCII character.
    for (int length = 0; (length = VEXAMBmbclen_A(text)) > 0; text += length) {
        last = static_cast<unsigned char>(*text);
        if (!mayGoOn(last)) {
            return kInvalid;
        }
    }
    return last == '.' || last == '_' ? kInvalid : kValid;
}

}  // namespace vexa
