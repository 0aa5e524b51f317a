// A command's block in the output log, and the builder of its pivot tables and notes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "backend/pivot/bp_text.h"
#include "backend/pivot/pivot_table.h"

namespace vexa {

struct PivotTableDraft;
class BpDimension;

// BpCategory, BpGroup and BpDimension are handles into the table that made them: cheap to copy, and not to be
// used once it is finished. Labels are compared as they were given (text and arguments), not as they are
// translated, so two texts that a language happens to translate alike stay apart.

/// One category under construction.
class BpCategory {
  public:
    /// Fills the cell at this category; in every other dimension the category added last (or named last)
    /// counts. For a dimension that has no category yet, or is only added later, the cell belongs to the
    /// first one it will get; that it gets one before the table is finished is up to the caller. Filling a
    /// cell again replaces it, with its notes and looks.
    BpCategory& Cell(const BpCellText& value);
    /// Adds a note to the cell filled last through this object; one must have been.
    BpCategory& Note(const BpCellText& note);
    /// Looks of the cell filled last through this object; one must have been.
    BpCategory& Bold();
    BpCategory& Color(std::string_view color);
    BpCategory& Background(std::string_view color);

  private:
    friend class BpDimension;
    friend class BpGroup;
    BpCategory(PivotTableDraft& draft, std::size_t dimension, std::size_t category);

    PivotTableDraft* draft_;
    std::size_t dimension_;
    std::size_t category_;
    std::size_t cell_ = SIZE_MAX;
};

/// A group of categories under construction. A category is known by its label and its group together: the
/// same label in two groups, or in a group and outside it, is two categories.
class BpGroup {
  public:
    /// Adds a category to the group; a label that the group has already names that category again.
    BpCategory Category(const BpCellText& label);
    /// Adds a group within this one, as `BpDimension::Group` does.
    BpGroup Group(const BpCellText& label, bool shown, int sort);

  private:
    friend class BpDimension;
    BpGroup(PivotTableDraft& draft, std::size_t dimension, int group);

    PivotTableDraft* draft_;
    std::size_t dimension_;
    int group_;
};

/// A dimension under construction.
class BpDimension {
  public:
    /// `axis` 0 rows (also when this is never called), 1 columns, 2 layers; `index` and the two flags are
    /// passed on unchanged.
    BpDimension& Position(int axis, int index, int first, int second);
    /// Adds a category outside all groups; a label that the dimension has there already names that category
    /// again.
    BpCategory Category(const BpCellText& label);
    /// Adds a group; a label that stands there already names that group again. A group with `shown` false
    /// keeps its categories together without a header of its own. `sort` is accepted for every dimension kind
    /// and changes nothing: categories stand in the order in which they were added.
    BpGroup Group(const BpCellText& label, bool shown, int sort);

  private:
    friend class BpPivotTable;
    BpDimension(PivotTableDraft& draft, std::size_t dimension);

    PivotTableDraft* draft_;
    std::size_t dimension_;
};

/// A pivot table under construction. It is finished, and the log's listeners receive it, when `Finish` is
/// called or the object dies, whichever comes first; it must die before its procedure.
class BpPivotTable {
  public:
    BpPivotTable(BpPivotTable&&) noexcept;
    BpPivotTable& operator=(BpPivotTable&&) = delete;
    BpPivotTable(const BpPivotTable&) = delete;
    BpPivotTable& operator=(const BpPivotTable&) = delete;
    ~BpPivotTable();

    void Caption(const BpCellText& caption);
    void HideTitle();
    /// Column widths in points.
    void MinDataColumnWidth(int points);
    void MaxDataColumnWidth(int points);
    /// Adds a dimension of the kind `kind`; a label that the table has already names that dimension again,
    /// which keeps the kind that it has.
    BpDimension Dimension(const BpCellText& label, int kind);
    /// Hands the table to the log's listeners; a second call does nothing, every other call after it is a
    /// mistake.
    void Finish();

  private:
    friend class BpHeading;
    explicit BpPivotTable(std::unique_ptr<PivotTableDraft> draft);

    std::unique_ptr<PivotTableDraft> draft_;
};

/// A heading of the log: what tables and notes stand under.
class BpHeading {
  public:
    /// Begins a table under this heading.
    BpPivotTable PivotTable(const BpCellText& title, const BpCellText& subtype, bool flag);
    /// Adds a line to the heading's notes.
    void AddNotes(int level, const BpCellText& label, const BpCellText& value);

  protected:
    BpHeading() = default;
    ~BpHeading() = default;
};

/// A command's block in the log: opened when the object is made, closed when it dies.
class BpProcedure : public BpHeading {
  public:
    static constexpr BpNumberFormat Count = BpNumberFormat::count;

    /// `title` in mixed case, for example "Output New"; it also selects the string table that texts are
    /// looked up in.
    BpProcedure(std::string_view title, int value);
    ~BpProcedure();
    BpProcedure(const BpProcedure&) = delete;
    BpProcedure& operator=(const BpProcedure&) = delete;

  private:
    std::string title_;
    std::string outerProcedure_;
};

}  // namespace vexa
