#include "frontend/export/pdf/pdf_file.h"

#include <array>
#include <cmath>
#include <utility>

#include "backend/text/utf16.h"
#include "backend/text/utf8.h"

namespace vexa::frontend::pdf {

namespace {

constexpr std::size_t objectsInStream = 250;
constexpr std::uint64_t isInStream = std::uint64_t{1} << 63U;
constexpr unsigned int indexBits = 8;
constexpr std::uint64_t hashBegin = 0xCBF29CE484222325U;
constexpr std::uint64_t hashFactor = 0x100000001B3U;
constexpr std::string_view hexDigits = "0123456789ABCDEF";

void appendHexByte(std::string& text, unsigned int byte) {
    text += hexDigits[byte >> 4U & 0xFU];
    text += hexDigits[byte & 0xFU];
}

void appendBigEndian(std::string& bytes, std::uint64_t value, unsigned int length) {
    for (unsigned int i = length; i > 0; --i) bytes += static_cast<char>(value >> (8U * (i - 1)) & 0xFFU);
}

/// What the format's own compression has around the packed bytes.
std::string wrapped(std::string_view packed, std::string_view data) {
    std::string bytes = "\x78\x9C";
    bytes.append(packed);
    appendBigEndian(bytes, adlerOf(data), 4);
    return bytes;
}

}  // namespace

PdfFile::PdfFile(ByteSink sink)
    : sink_(std::move(sink)),
      deflater_(quickDeflateLevel),
      places_(1),
      hash_(hashBegin),
      otherHash_(~hashBegin) {
    // The second line says that the file is no text.
    put("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
}

void PdfFile::put(std::string_view bytes) {
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        hash_ = (hash_ ^ byte) * hashFactor;
        otherHash_ = (otherHash_ + byte) * hashFactor;
    }
    offset_ += bytes.size();
    if (result_) result_ = sink_(bytes);
}

PdfObject PdfFile::reserve() {
    places_.emplace_back();
    return static_cast<PdfObject>(places_.size() - 1);
}

void PdfFile::write(PdfObject number, std::string_view body) {
    if (openStream_ == 0) openStream_ = reserve();
    places_[number] = isInStream | std::uint64_t{openStream_} << indexBits | waiting_++;
    waitingIndex_ += std::to_string(number);
    waitingIndex_ += ' ';
    waitingIndex_ += std::to_string(waitingBodies_.size());
    waitingIndex_ += ' ';
    waitingBodies_ += body;
    waitingBodies_ += '\n';
    if (waiting_ == objectsInStream) flushObjects();
}

PdfObject PdfFile::add(std::string_view body) {
    const PdfObject number = reserve();
    write(number, body);
    return number;
}

void PdfFile::flushObjects() {
    if (openStream_ == 0) return;
    const std::string entries =
        "/Type/ObjStm/N " + std::to_string(waiting_) + "/First " + std::to_string(waitingIndex_.size());
    waitingIndex_ += waitingBodies_;
    putStream(std::exchange(openStream_, 0), entries, waitingIndex_, true);
    waiting_ = 0;
    waitingIndex_.clear();
    waitingBodies_.clear();
}

void PdfFile::writeStream(PdfObject number, std::string_view entries, std::string_view data, bool compress) {
    putStream(number, entries, data, compress);
}

PdfObject PdfFile::addStream(std::string_view entries, std::string_view data) {
    const PdfObject number = reserve();
    putStream(number, entries, data, true);
    return number;
}

void PdfFile::putStream(PdfObject number, std::string_view entries, std::string_view data, bool compress) {
    std::string packed;
    const bool isPacked = compress && deflater_.pack(data, packed);
    if (isPacked) packed = wrapped(packed, data);
    const std::string_view bytes = isPacked ? std::string_view(packed) : data;
    places_[number] = offset_;
    std::string head = std::to_string(number) + " 0 obj\n<<";
    head.append(entries);
    if (isPacked) head += "/Filter/FlateDecode";
    head += "/Length " + std::to_string(bytes.size()) + ">>\nstream\n";
    put(head);
    put(bytes);
    put("\nendstream\nendobj\n");
}

std::string PdfFile::crossReferences() const {
    std::string rows;
    rows.reserve(places_.size() * 8);
    for (const std::uint64_t place : places_) {
        const bool within = (place & isInStream) != 0;
        appendBigEndian(rows, within ? 2 : place == 0 ? 0 : 1, 1);
        appendBigEndian(rows, within ? (place & ~isInStream) >> indexBits : place, 5);
        appendBigEndian(rows, within ? place & ((1U << indexBits) - 1) : place == 0 ? 0xFFFF : 0, 2);
    }
    return rows;
}

std::string PdfFile::idText() const {
    std::string id = "<";
    for (const std::uint64_t half : {hash_, otherHash_}) {
        for (unsigned int i = 8; i > 0; --i)
            appendHexByte(id, static_cast<unsigned int>(half >> (8 * (i - 1)) & 0xFFU));
    }
    return id + ">";
}

PackageResult PdfFile::finish(PdfObject catalog, PdfObject information) {
    flushObjects();
    const PdfObject number = reserve();
    places_[number] = offset_;
    const std::uint64_t begin = offset_;
    std::string entries = "/Type/XRef/Size " + std::to_string(places_.size()) + "/W[1 5 2]/Root ";
    appendReference(entries, catalog);
    entries += "/Info ";
    appendReference(entries, information);
    const std::string id = idText();
    entries += "/ID[" + id + id + "]";
    putStream(number, entries, crossReferences(), true);
    put("startxref\n" + std::to_string(begin) + "\n%%EOF\n");
    return result_;
}

void appendNumber(std::string& text, double number) {
    constexpr double largest = 1e9;
    if (!(std::abs(number) < largest)) number = 0;
    auto hundredths = static_cast<std::int64_t>(std::llround(number * 100));
    if (hundredths < 0) {
        text += '-';
        hundredths = -hundredths;
    }
    std::array<char, 24> digits{};
    std::size_t at = digits.size();
    for (std::int64_t whole = hundredths / 100; whole > 0 || at == digits.size(); whole /= 10) {
        digits[--at] = static_cast<char>('0' + whole % 10);
    }
    text.append(digits.data() + at, digits.size() - at);
    const auto rest = static_cast<int>(hundredths % 100);
    if (rest == 0) return;
    text += '.';
    text += static_cast<char>('0' + rest / 10);
    if (rest % 10 != 0) text += static_cast<char>('0' + rest % 10);
}

void appendReference(std::string& text, PdfObject object) {
    text += std::to_string(object);
    text += " 0 R";
}

void appendHexUtf16(std::string& text, std::string_view utf8) {
    for (const char16_t unit : utf8ToUtf16(utf8)) {
        appendHexByte(text, unit >> 8U);
        appendHexByte(text, unit & 0xFFU);
    }
}

void appendTextString(std::string& text, std::string_view utf8) {
    bool isPlain = true;
    for (const char each : utf8) isPlain = isPlain && each >= ' ' && each <= '~';
    if (!isPlain) {
        text += "<FEFF";
        appendHexUtf16(text, validUtf8(utf8));
        text += '>';
        return;
    }
    text += '(';
    for (const char each : utf8) {
        if (each == '(' || each == ')' || each == '\\') text += '\\';
        text += each;
    }
    text += ')';
}

void appendName(std::string& text, std::string_view name) {
    text += '/';
    for (const char each : name) {
        const auto byte = static_cast<unsigned char>(each);
        const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= 'a' && byte <= 'z') || each == '-' || each == '+' || each == '_' ||
                             each == '.' || each == ',';
        if (isPlain) {
            text += each;
        } else if (byte != 0) {
            text += '#';
            appendHexByte(text, byte);
        }
    }
}

}  // namespace vexa::frontend::pdf
