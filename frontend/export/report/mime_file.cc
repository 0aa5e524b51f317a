#include "frontend/export/report/mime_file.h"

#include <algorithm>
#include <utility>

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

std::string MimeFile::addPicture(const std::string& content, std::string_view type) {
    const auto found = std::find_if(pictures_.begin(), pictures_.end(), [&](const Part& each) {
        return each.content == content && each.type == type;
    });
    const auto number = static_cast<std::size_t>(found - pictures_.begin()) + 1;
    if (found == pictures_.end()) pictures_.push_back({content, std::string(type)});
    return "cid:" + addressName(number);
}

PackageResult MimeFile::write(const ByteSink& out, std::string_view title,
                              const std::function<PackageResult(const ByteSink&)>& page) const {
    std::string head = "MIME-Version: 1.0\r\n";
    head.append("Subject: ").append(encodedWords(title)).append(lineEnd);
    head.append("Content-Type: multipart/related; type=\"text/html\"; boundary=\"")
        .append(boundary)
        .append("\"\r\n\r\n");
    beginPart(head, "text/html; charset=utf-8", "quoted-printable");
    head.append("Content-ID: <page@report>\r\n\r\n");
    PackageResult result = out(head);
    QuotedPrintable quoted;
    if (result) result = page([&](std::string_view piece) { return out(quoted.add(piece)); });
    if (result) result = out(quoted.finish().append(lineEnd));
    for (std::size_t i = 0; result && i < pictures_.size(); ++i) {
        std::string part;
        beginPart(part, pictures_[i].type, "base64");
        part.append("Content-ID: <").append(addressName(i + 1)).append(">\r\n\r\n");
        result = out(part.append(base64Lines(pictures_[i].content)));
    }
    return result ? out(std::string("--").append(boundary).append("--\r\n")) : result;
}

std::string QuotedPrintable::add(std::string_view text) {
    std::string quoted;
    quoted.reserve(text.size() + text.size() / 8);
    for (const char each : text) {
        if (waits_) put(quoted, waiting_, each == '\n');
        waits_ = each != '\n';
        waiting_ = each;
        if (waits_) continue;
        quoted.append(lineEnd);
        column_ = 0;
    }
    return quoted;
}

std::string QuotedPrintable::finish() {
    std::string quoted;
    if (std::exchange(waits_, false)) put(quoted, waiting_, true);
    return quoted;
}

void QuotedPrintable::put(std::string& quoted, char each, bool endsLine) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(each);
    const bool isBlank = each == ' ' || each == '\t';
    // A line that begins with a period is misread by some mail programs.
    const bool isPlain =
        (byte > ' ' && byte < 0x7F && each != '=' && (each != '.' || column_ > 0)) || (isBlank && !endsLine);
    const std::size_t width = isPlain ? 1 : 3;
    if (column_ + width > longestLine - 1) {
        quoted.append("=").append(lineEnd);
        column_ = 0;
    }
    if (isPlain) {
        quoted += each;
    } else {
        quoted += '=';
        quoted += digits[byte >> 4];
        quoted += digits[byte & 0xF];
    }
    column_ += width;
}

}  // namespace vexa::frontend
