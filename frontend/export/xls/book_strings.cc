#include "frontend/export/xls/book_strings.h"

#include <algorithm>

#include "frontend/export/xls/book_text.h"
#include "frontend/export/xls/record_reader.h"

namespace vexa::frontend::biff {

namespace {

constexpr std::size_t countsBytes = 8;
constexpr std::uint32_t flagWide = 1;
constexpr std::uint32_t flagExtra = 4;
constexpr std::uint32_t flagRuns = 8;
/// Texts between two entries of the index, and entries at most.
constexpr std::size_t fewestOfBucket = 8;
constexpr std::size_t mostBuckets = 128;

}  // namespace

/// Goes through a table text by text. Where the characters of one go on in another record, that record begins
/// with their width anew.
class BookStrings::Reader {
  public:
    explicit Reader(std::string_view raw) : raw_(raw), end_(headerBytes + twoAt(raw, 2)) {
        at_ = headerBytes + countsBytes;
    }

    [[nodiscard]] bool begins() const { return end_ <= raw_.size() && at_ <= end_; }

    bool next(Place& place) {
        if (at_ == end_ && !enterNext()) return false;
        place.at = static_cast<std::uint32_t>(at_);
        place.inRecord = static_cast<std::uint16_t>(at_ - recordAt_);
        std::uint32_t units = 0;
        std::uint32_t flags = 0;
        std::uint32_t runs = 0;
        std::uint32_t extra = 0;
        return number(2, units) && number(1, flags) && ((flags & flagRuns) == 0 || number(2, runs)) &&
               ((flags & flagExtra) == 0 || number(4, extra)) && characters(units, (flags & flagWide) != 0) &&
               skip(std::size_t{runs} * 4) && skip(extra);
    }

  private:
    bool enterNext() {
        if (end_ + headerBytes > raw_.size()) return false;
        recordAt_ = end_;
        at_ = end_ + headerBytes;
        end_ = at_ + twoAt(raw_, recordAt_ + 2);
        return end_ <= raw_.size();
    }

    bool number(std::size_t bytes, std::uint32_t& value) {
        value = 0;
        for (std::size_t i = 0; i < bytes; ++i) {
            if (at_ == end_ && (!enterNext() || at_ == end_)) return false;
            value |= numberAt(raw_, at_++, 1) << (8 * i);
        }
        return true;
    }

    bool characters(std::size_t units, bool wide) {
        for (;;) {
            const std::size_t width = wide ? 2 : 1;
            const std::size_t taken = std::min(units, (end_ - at_) / width);
            at_ += taken * width;
            units -= taken;
            if (units == 0) return true;
            if (at_ != end_ || !enterNext() || at_ == end_) return false;
            wide = (numberAt(raw_, at_++, 1) & flagWide) != 0;
        }
    }

    bool skip(std::size_t bytes) {
        for (;;) {
            const std::size_t taken = std::min(bytes, end_ - at_);
            at_ += taken;
            bytes -= taken;
            if (bytes == 0) return true;
            if (!enterNext()) return false;
        }
    }

    std::string_view raw_;
    std::size_t recordAt_ = 0;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
};

bool BookStrings::read(std::string_view raw) {
    if (raw.size() < headerBytes + countsBytes) return false;
    references_ = fourAt(raw, headerBytes);
    const std::size_t count = fourAt(raw, headerBytes + 4);
    // Each text takes three bytes at least.
    if (count > raw.size() / 3) return false;
    // A table without texts is made anew: some readers do not look for the first text in the second record.
    if (count > 0) read_ = raw;
    Reader reader(raw);
    if (!reader.begins()) return false;
    places_.resize(count);
    return std::all_of(places_.begin(), places_.end(),
                       [&reader](Place& place) { return reader.next(place); });
}

std::uint32_t BookStrings::add(std::string_view text, std::size_t raised, std::uint16_t font) {
    ++references_;
    std::string key(text);
    if (raised > 0) key += '\0' + std::to_string(raised) + ' ' + std::to_string(font);
    const auto [known, isNew] = added_.emplace(std::move(key), static_cast<std::uint32_t>(places_.size()));
    if (isNew) write(text, raised, font);
    return known->second;
}

/// Begins another CONTINUE record; of a table without texts so far, its first record.
void BookStrings::beginPart() {
    partAt_ = own_.size();
    Records(own_).begin(read_.empty() && own_.empty() ? id::sst : id::continued).end();
    part_ = 0;
    if (partAt_ == 0 && read_.empty()) {
        own_.append(countsBytes, '\0');
        part_ = countsBytes;
    }
}

void BookStrings::write(std::string_view text, std::size_t raised, std::uint16_t font) {
    const BookText encoded = bookText(text);
    const std::size_t header = raised > 0 ? 5 : 3;
    // The head of a text and its first character stand together.
    if (room() < header + encoded.width()) beginPart();
    places_.push_back({static_cast<std::uint32_t>(read_.size() + own_.size()),
                       static_cast<std::uint16_t>(headerBytes + part_)});
    const std::uint32_t wide = encoded.wide ? flagWide : 0;
    Records records(own_);
    records.two(static_cast<std::uint32_t>(encoded.units)).one(wide | (raised > 0 ? flagRuns : 0));
    if (raised > 0) records.two(1);
    part_ += header;
    std::string_view left = encoded.bytes;
    while (!left.empty()) {
        const std::size_t taken = std::min(left.size(), room() / encoded.width() * encoded.width());
        records.bytes(left.substr(0, taken));
        left.remove_prefix(taken);
        part_ += taken;
        setNumber(own_, partAt_ + 2, static_cast<std::uint32_t>(part_), 2);
        if (left.empty()) break;
        beginPart();
        records.one(wide);
        part_ += 1;
    }
    if (raised > 0) {
        if (room() < 4) beginPart();
        const std::size_t plain = bookText(text.substr(0, text.size() - raised)).units;
        records.two(static_cast<std::uint32_t>(plain)).two(font);
        part_ += 4;
    }
    setNumber(own_, partAt_ + 2, static_cast<std::uint32_t>(part_), 2);
}

void BookStrings::append(std::string& out) const {
    const std::size_t begin = out.size();
    out += read_;
    out += own_;
    if (out.size() == begin) {
        Records(out).begin(id::sst).four(0).four(0).end();
    }
    setNumber(out, begin + headerBytes, references_, 4);
    setNumber(out, begin + headerBytes + 4, static_cast<std::uint32_t>(places_.size()), 4);
}

void BookStrings::appendIndex(std::string& out, std::size_t at) const {
    const std::size_t ofBucket = std::max(fewestOfBucket, places_.size() / mostBuckets + 1);
    Records records(out);
    records.begin(id::extSst).two(static_cast<std::uint32_t>(ofBucket));
    for (std::size_t i = 0; i < places_.size(); i += ofBucket) {
        records.four(static_cast<std::uint32_t>(at + places_[i].at)).two(places_[i].inRecord).two(0);
    }
    records.end();
}

}  // namespace vexa::frontend::biff
