// Documents for tests, and short ways to save and open them in memory.
#pragma once

#include <memory>
#include <string>

#include "frontend/store/document_file.h"

namespace vexa::frontend {

/// A table of `rows` x `columns` cells with labels, groups, numbers, some footnotes and styles.
tables::Table makeTable(std::size_t rows, std::size_t columns);
/// A small picture that can be drawn.
std::shared_ptr<const Picture> makePicture();
/// One item of every kind, hidden ones and texts that XML cannot hold among them.
std::unique_ptr<ViewerDocument> makeEveryKind();

Item makeItem(const std::string& label, ItemContent content);
/// A content that is a text and no more.
TextContent plainText(const std::string& text);

/// The item that stands at a place of the outline, from 1, as `vexa show` counts; it must be there.
const Item& itemAt(const ViewerDocument& document, std::size_t number);

/// The least cost of a key that there is, so that tests take no time.
inline constexpr KeyCost cheapKey{1, 8192};
/// An encrypted form of a password that no test computes.
inline const std::string sampleForm = "abcdefghij-_KLMNOPQ4";

/// The bytes of the file; a failure fails the test and gives an empty text.
std::string saved(const ViewerDocument& document, const SaveOptions& options = {});
/// The opened document; a failure fails the test and gives null.
std::unique_ptr<ViewerDocument> opened(const std::string& bytes, const std::string& password = "");
/// How opening ends, when it is to be a problem.
StoreResult problemOf(const std::string& bytes, const std::string& password = "");

}  // namespace vexa::frontend
