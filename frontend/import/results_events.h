// What becomes of the events of a JSON reader: items, one after the other.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "frontend/import/import_context.h"
#include "frontend/import/json_builder.h"
#include "frontend/import/json_cells.h"
#include "frontend/import/json_reader.h"
#include "frontend/import/json_tracker.h"

namespace vexa::frontend {

/// Keys of the document and of items are gathered until the object ends, since they may come in any order.
/// The values of three keys are not: items and views become items at once, and cells become cells.
class ResultsEvents : public JsonEvents {
  public:
    /// All outlive this.
    ResultsEvents(const JsonReader& text, std::string file, const ImportContext& context, Imported& imported);

    [[nodiscard]] const JsonRefusal& refusal() const { return refusal_; }
    /// Where a refusal stands whose path is not enough; the text's length + 1 where it is.
    [[nodiscard]] std::size_t refusedAt() const { return refusedAt_; }

    bool null() override;
    bool boolean(bool value) override;
    bool number_integer(number_integer_t value) override;
    bool number_unsigned(number_unsigned_t value) override;
    bool number_float(number_float_t value, const string_t& text) override;
    bool string(string_t& value) override;
    bool binary(binary_t& value) override;
    bool start_object(std::size_t elements) override;
    bool key(string_t& value) override;
    bool end_object() override;
    bool start_array(std::size_t elements) override;
    bool end_array() override;
    bool parse_error(std::size_t position, const std::string& token,
                     const nlohmann::detail::exception& error) override;

  private:
    /// What the next event belongs to.
    enum class Mode {
        object,    ///< keys of the document or of an item
        value,     ///< a value that is gathered
        children,  ///< the list of items or views
        cells,     ///< the list of cells
        cell,      ///< a cell that is an object
        skipped    ///< a value that nobody wants
    };

    /// The document, or an item that has not ended.
    struct Frame {
        Json keys = Json::object();
        std::string key;  ///< the one whose value comes next or is being read
        JsonCells cells;
        JsonPath path;
        std::size_t begin = 0;  ///< offset of the object
        ItemId id = 0;          ///< once it is in the outline, which is when something under it comes
        std::size_t views = 0;
        bool isUnknown = false;  ///< an item of a type that is not known: everything is gathered
        bool isPartial = false;  ///< not all keys were gathered
    };

    bool scalar(Json value);
    bool number(double value, Json whole);
    bool refuseHere(std::string message);
    bool refuseValue(const std::string& found);
    bool openChild();
    bool openValue(bool isList);
    void addPlaceholder(Frame& frame);
    void noteType();
    void endValue();
    bool endItem(Frame frame);
    bool endDocument(Frame& frame);
    bool rereadUnknown(Frame& frame);
    bool checkUnder(const Frame& frame);
    void warnOfType(const Frame& frame, const std::string& word);
    [[nodiscard]] ItemId parent() const { return frames_.empty() ? 0 : frames_.back().id; }
    [[nodiscard]] Frame& frame() { return frames_.back(); }

    const JsonReader& text_;
    const std::string file_;
    const std::string folder_;
    const ImportContext& context_;
    Imported& imported_;
    Mode mode_ = Mode::children;
    std::size_t skippedDepth_ = 0;  // objects and lists that are open in what is skipped
    std::vector<Frame> frames_;     // the document first
    JsonTracker tracker_;
    JsonBuilder builder_;
    Json cell_;
    JsonRefusal refusal_;
    std::size_t refusedAt_;
    std::size_t unknownTypes_ = 0;
};

}  // namespace vexa::frontend
