#include "frontend/modify/change_notes.h"

#include <algorithm>
#include <array>
namespace vexa::frontend {

namespace {

/// In the order of the enumerators.
constexpr std::array<SystemText, changeKindCount> changeTexts{
    "deleted"_text,       "visibility"_text, "label"_text,
    "size"_text,          "index"_text,      "chart"_text,
    "title"_text,         "caption"_text,    "rows and columns"_text,
    "order of rows"_text, "format"_text,     "look"_text,
    "layer"_text,         "cells"_text,      "text"_text};

}  // namespace

SystemText changeText(ChangeKind kind) { return changeTexts[static_cast<std::size_t>(kind)]; }

void ItemPlan::add(ChangeKind kind) {
    if (std::find(changes.begin(), changes.end(), kind) == changes.end()) changes.push_back(kind);
}

void ItemPlan::report(SystemText reason) { passedOver.push_back({reason, true}); }

void ItemPlan::passOver(SystemText reason) { passedOver.push_back({reason, false}); }

void Complaints::invalidFormat(const std::string& format) {
    if (known_.insert("format " + format).second) formats_.push_back(format);
}

void Complaints::invalidFont(const std::string& font) {
    if (known_.insert("font " + font).second) fonts_.push_back(font);
}

}  // namespace vexa::frontend
