#include "frontend/export/xlsx/sheet_copy.h"

#include <utility>

namespace vexa::frontend {
namespace {

constexpr std::size_t pieceOfSheet = 256U << 10U;

}  // namespace

SheetCopy::SheetCopy(const ByteSource& source, std::string prefix, DeflateStream& sink)
    : xml_(source), prefix_(std::move(prefix)), sink_(sink) {}

PackageResult SheetCopy::finish() {
    if (result_ && xml_.result()) {
        result_ = sink_.write(out_);
    }
    return xml_.result() ? result_ : xml_.result();
}

bool SheetCopy::isOwn() const {
    return xml_.name().size() == prefix_.size() + xml_.localName().size() && xml_.name().starts_with(prefix_);
}

void SheetCopy::emit(std::string_view xml) {
    out_ += xml;
    passOn();
}

void SheetCopy::passOn() {
    if (out_.size() >= pieceOfSheet) {
        result_ = result_ ? sink_.write(out_) : result_;
        out_.clear();
    }
}

void SheetCopy::copyBytes(std::uint64_t count) {
    while (count > 0 && result_) {
        const std::string_view bytes = xml_.takeBytes(count);
        if (bytes.empty()) {
            result_ = {PackageProblem::damaged, "it has XML that is not well formed"_text};
        }
        count -= bytes.size();
        emit(bytes);
    }
}

void SheetCopy::copyBlocks(const PackedBlocks& blocks) {
    result_ = result_ ? sink_.write(out_) : result_;
    out_.clear();
    result_ = result_ ? sink_.copy(blocks) : result_;
}

std::string SheetCopy::takeElement() {
    std::string element(xml_.raw());
    const std::size_t depth = xml_.depth();
    bool isInside = !xml_.isWhole();
    while (isInside && next()) {
        element += xml_.raw();
        isInside = !isEndAt(depth);
    }
    return element;
}

void SheetCopy::skipElement() {
    const std::size_t depth = xml_.depth();
    if (!xml_.isWhole()) {
        while (next() && !isEndAt(depth)) {
        }
    }
}

void SheetCopy::copyElement() {
    const std::size_t depth = xml_.depth();
    copy();
    if (!xml_.isWhole()) {
        while (next()) {
            copy();
            if (isEndAt(depth)) {
                return;
            }
        }
    }
}

std::string withAttribute(std::string_view raw, std::string_view name, std::string_view value) {
    const bool isWhole = raw.ends_with("/>");
    std::string tag(raw.substr(0, raw.find_first_of(" \t\r\n/>", 1)));
    bool isSet = value.empty();
    const auto set = [&] {
        tag += " " + std::string(name) + "=\"" + std::string(value) + "\"";
        isSet = true;
    };
    for (const RawAttribute& attribute : attributesOf(raw)) {
        if (attribute.name != name) {
            tag += attribute.whole;
        } else if (!value.empty()) {
            set();
        }
    }
    if (!isSet) {
        set();
    }
    return tag + (isWhole ? "/>" : ">");
}

}  // namespace vexa::frontend
