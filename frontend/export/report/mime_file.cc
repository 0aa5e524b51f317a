#include "frontend/export/report/mime_file.h"

#include <algorithm>

#include "frontend/package/base64.h"

namespace vexa::frontend {

namespace {

/// Neither quoted-printable nor base64 ever holds an equals sign before an underscore.
constexpr std::string_view boundary = "=_vexa_report";
constexpr std::size_t longestLine = 76;
constexpr std::string_view lineEnd = "\r\n";

std::string addressName(std::size_t number) { return "picture" + std::to_string(number) + "@report"; }

/// Base64 in lines.
std::string base64Lines(const std::string& bytes) {
    const std::string text = encodeBase64(bytes);
    std::string lines;
    lines.reserve(text.size() + text.size() / longestLine * 2 + 2);
    for (std::size_t i = 0; i < text.size(); i += longestLine) {
        lines.append(text, i, longestLine).append(lineEnd);
    }
    return lines;
}

/// A header's text: words of at most 45 bytes that end where a character does.
std::string encodedWords(std::string_view text) {
    constexpr std::size_t longest = 45;
    std::string words;
    while (!text.empty()) {
        std::size_t length = std::min(longest, text.size());
        while (length < text.size() && length > 1 &&
               (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
            --length;
        if (!words.empty()) words += "\r\n ";
        words += "=?utf-8?B?" + encodeBase64(text.substr(0, length)) + "?=";
        text.remove_prefix(length);
    }
    return words;
}

void beginPart(std::string& file, std::string_view type, std::string_view encoding) {
    file.append("--").append(boundary).append(lineEnd);
    file.append("Content-Type: ").append(type).append(lineEnd);
    file.append("Content-Transfer-Encoding: ").append(encoding).append(lineEnd);
}

}  // namespace

std::string MimeFile::addPicture(const std::string& png) {
    const auto found = std::find(pictures_.begin(), pictures_.end(), png);
    const auto number = static_cast<std::size_t>(found - pictures_.begin()) + 1;
    if (found == pictures_.end()) pictures_.push_back(png);
    return "cid:" + addressName(number);
}

std::string MimeFile::finish(std::string_view title, std::string_view page) const {
    std::string file = "MIME-Version: 1.0\r\n";
    file.append("Subject: ").append(encodedWords(title)).append(lineEnd);
    file.append("Content-Type: multipart/related; type=\"text/html\"; boundary=\"")
        .append(boundary)
        .append("\"\r\n\r\n");
    beginPart(file, "text/html; charset=utf-8", "quoted-printable");
    file.append("Content-ID: <page@report>\r\n\r\n").append(quotedPrintable(page)).append(lineEnd);
    for (std::size_t i = 0; i < pictures_.size(); ++i) {
        beginPart(file, "image/png", "base64");
        file.append("Content-ID: <").append(addressName(i + 1)).append(">\r\n\r\n");
        file.append(base64Lines(pictures_[i]));
    }
    return file.append("--").append(boundary).append("--\r\n");
}

std::string quotedPrintable(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string quoted;
    quoted.reserve(text.size() + text.size() / 8);
    std::size_t column = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char each = text[i];
        if (each == '\n') {
            quoted.append(lineEnd);
            column = 0;
            continue;
        }
        const auto byte = static_cast<unsigned char>(each);
        const bool endsLine = i + 1 == text.size() || text[i + 1] == '\n';
        const bool isBlank = each == ' ' || each == '\t';
        // A line that begins with a period is misread by some mail programs.
        const bool isPlain = (byte > ' ' && byte < 0x7F && each != '=' && (each != '.' || column > 0)) ||
                             (isBlank && !endsLine);
        const std::size_t width = isPlain ? 1 : 3;
        if (column + width > longestLine - 1) {
            quoted.append("=").append(lineEnd);
            column = 0;
        }
        if (isPlain) {
            quoted += each;
        } else {
            quoted += '=';
            quoted += digits[byte >> 4];
            quoted += digits[byte & 0xF];
        }
        column += width;
    }
    return quoted;
}

}  // namespace vexa::frontend
