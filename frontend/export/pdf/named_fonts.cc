#include "frontend/export/pdf/named_fonts.h"

#include <cstddef>
#include <string>

namespace vexa::frontend::pdf {

namespace {

constexpr std::size_t tagLength = 6;

bool isNamed(QPDFObjectHandle dictionary, const char* key, const std::string& name) {
    QPDFObjectHandle value = dictionary.getKey(key);
    return value.isName() && value.getName() == name;
}

/// "/ABCDEF+Font" is the part of a font with some of its letters.
void dropTag(QPDFObjectHandle dictionary, const char* key) {
    QPDFObjectHandle value = dictionary.getKey(key);
    if (!value.isName()) return;
    const std::string name = value.getName();
    if (name.find('+') != tagLength + 1) return;
    dictionary.replaceKey(key, QPDFObjectHandle::newName("/" + name.substr(tagLength + 2)));
}

bool canBeNamed(const QPDFObjectHandle& font) {
    return (isNamed(font, "/Subtype", "/TrueType") || isNamed(font, "/Subtype", "/Type1")) &&
           isNamed(font, "/Encoding", "/WinAnsiEncoding");
}

}  // namespace

bool nameFonts(QPDF& file) {
    bool all = true;
    for (QPDFObjectHandle& object : file.getAllObjects()) {
        if (!object.isDictionary() || !isNamed(object, "/Type", "/Font")) continue;
        if (!canBeNamed(object)) {
            all = false;
            continue;
        }
        dropTag(object, "/BaseFont");
        QPDFObjectHandle descriptor = object.getKey("/FontDescriptor");
        if (!descriptor.isDictionary()) continue;
        dropTag(descriptor, "/FontName");
        for (const char* const key : {"/FontFile", "/FontFile2", "/FontFile3"}) descriptor.removeKey(key);
    }
    return all;
}

}  // namespace vexa::frontend::pdf
