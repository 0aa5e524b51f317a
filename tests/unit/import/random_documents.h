// Documents as chance makes them, for properties that hold of all.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "frontend/document/outline.h"

namespace vexa::frontend {

/// The same seed makes the same documents.
class RandomDocuments {
  public:
    explicit RandomDocuments(std::uint32_t seed) : random_(seed) {}

    /// Items of every type, nested, with every property set here and there. Tables have their dimensions in
    /// the order layers, rows, columns and their categories in the order of the data, unless `arranged` lets
    /// their views and formats differ from their data as modifications do.
    [[nodiscard]] Outline document(std::size_t items, bool arranged = false);
    [[nodiscard]] tables::Table table(bool arranged = false);
    [[nodiscard]] std::string text();

  private:
    [[nodiscard]] std::size_t below(std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
    }
    [[nodiscard]] bool chance(std::size_t oneIn) { return below(oneIn) == 0; }
    [[nodiscard]] double number();
    [[nodiscard]] tables::DisplayFormat format();
    [[nodiscard]] tables::CellStyle style();
    [[nodiscard]] tables::TableDimension dimension(std::size_t footnotes);
    [[nodiscard]] std::vector<tables::FootnoteId> footnoteIds(std::size_t footnotes);
    void addGroups(tables::TableDimension& dimension, tables::GroupId parent, std::size_t depth,
                   std::size_t footnotes);
    void fill(tables::TableDataBuilder& builder, tables::TableStyle& style, std::size_t footnotes);
    void decorate(const std::vector<tables::TableDimension>& dimensions, tables::TableView& view,
                  tables::TableStyle& style);
    void arrange(tables::TableView& view, tables::TableStyle& style, const tables::TableData& data);
    void add(Outline& outline, ItemId under, std::size_t depth, bool arranged);
    [[nodiscard]] Item item(bool arranged);
    [[nodiscard]] ItemContent content(bool arranged);
    [[nodiscard]] ItemContent grid();

    std::mt19937 random_;
};

}  // namespace vexa::frontend
