#include "frontend/store/save_plan.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "backend/tables/layout/table_grid.h"
#include "frontend/document/walk.h"
#include "frontend/store/item_kinds.h"
#include "frontend/store/limits.h"

namespace vexa::frontend {

/// Chooses the items that are saved, in the order of the outline.
class SaveSelection : public OutlineVisitor {
  public:
    SaveSelection(SavePlan& plan, const SaveOptions& options)
        : plan_(plan), forReaders_(options.type == DocumentFileType::reader), dataModel_(options.dataModel) {}

    bool enter(const WalkPlace& place) override {
        if (forReaders_ && !isForReaders(place)) return false;
        if (!begun_.empty()) begun_.back().views.push_back(place.view);
        begun_.push_back({plan_.manifest_.items.size(), plan_.entries_.size(), {}});
        plan_.isTooDeep_ = plan_.isTooDeep_ || place.depth >= limits::outlineDepth;
        ManifestItem& added = plan_.manifest_.items.emplace_back();
        added.depth = place.depth;
        describe(place.item(), added);
        return true;
    }

    void leave(const WalkPlace& place) override {
        if (forReaders_ && !isForReaders(place)) return;
        const Begun begun = begun_.back();
        begun_.pop_back();
        std::vector<ManifestItem>& items = plan_.manifest_.items;
        // A reader has no use for a header or model with nothing left under it.
        const bool isLeftEmpty = items.size() == begun.item + 1 && !place.node.children.empty();
        const bool isEmptyHeader = items.size() == begun.item + 1 && place.item().type() == ItemType::header;
        if (forReaders_ && (isLeftEmpty || isEmptyHeader)) {
            items.pop_back();
            plan_.entries_.resize(begun.entry);
            if (!begun_.empty()) begun_.back().views.pop_back();
        } else if (auto* const model = std::get_if<ModelContent>(&items[begun.item].item.content)) {
            showKeptView(begun.views, *model);
        }
    }

    /// Gives the entries their names, now that it is known which there are.
    void nameEntries() {
        std::size_t index = 0;
        for (ManifestItem& item : plan_.manifest_.items) {
            if (kindOf(item.item.type()).storage != ItemStorage::manifest) nameEntry(item, index++);
        }
    }

  private:
    /// What there was before an item.
    struct Begun {
        std::size_t item;
        std::size_t entry;
        std::vector<std::size_t> views;  ///< of a model: those that are saved
    };

    /// Where the view that is shown is left out, the one behind it is shown, else the last one.
    static void showKeptView(const std::vector<std::size_t>& views, ModelContent& model) {
        if (views.empty()) return;
        const auto before =
            std::count_if(views.begin(), views.end(), [&](std::size_t view) { return view < model.shown; });
        model.shown = std::min(static_cast<std::size_t>(before), views.size() - 1);
    }

    static bool isForReaders(const WalkPlace& place) {
        const ItemType type = place.item().type();
        return place.item().visible && type != ItemType::log && type != ItemType::warning &&
               type != ItemType::notes;
    }

    void describe(const Item& item, ManifestItem& described) {
        const bool asGrid = item.type() == ItemType::table && !dataModel_;
        const ItemType type = asGrid ? ItemType::grid : item.type();
        Item& copy = described.item;
        copy = Item{item.label,           item.command, item.subtype, item.visible,
                    item.pageBreakBefore, item.width,   item.height,  emptyContent(type)};
        const ItemStorage storage = kindOf(type).storage;
        if (storage == ItemStorage::manifest || storage == ItemStorage::raw) copy.content = item.content;
        if (storage != ItemStorage::manifest) plan_.entries_.push_back({&item.content, asGrid});
        if (type == ItemType::table)
            plan_.looks_.add(std::get<TableContent>(item.content).table.style->look());
    }

    void nameEntry(ManifestItem& item, std::size_t index) const {
        const SavePlan::Entry& entry = plan_.entries_[index];
        if (const auto* const unknown = std::get_if<UnknownContent>(entry.content)) {
            item.entry = itemEntry(index, rawExtension(*unknown->raw));
            return;
        }
        item.entry = itemEntry(index, ".xml");
        if (const ShownPicture* const shown = pictureOf(*entry.content)) {
            item.picture = itemEntry(index, pictureExtension(shown->picture->form));
        }
    }

    SavePlan& plan_;
    bool forReaders_;
    bool dataModel_;
    std::vector<Begun> begun_;
};

namespace {

/// A grid that takes more memory than this is made and packed beside nothing else.
constexpr std::uint64_t largeGridBytes = 8ULL << 20;

/// Bytes of the labels of one dimension's categories, their groups' included, as far as they are few.
std::uint64_t labelBytes(const tables::TableDimension& dimension) {
    std::uint64_t bytes = dimension.label.size();
    for (const tables::TableCategory& category : dimension.categories) {
        bytes += category.label.size();
        for (tables::GroupId group = category.group; group != tables::noGroup && bytes < largeGridBytes;
             group = dimension.groups[group].parent) {
            bytes += dimension.groups[group].label.size() + 1;
        }
    }
    return std::min(bytes, largeGridBytes);
}

/// Whether a table may take tens of megabytes as a grid: where the same long text stands in very many cells
/// and beside very many lines, each gets it for itself.
bool isLargeAsGrid(const tables::Table& table) {
    constexpr std::uint64_t bytesOfPlace = 16;
    const tables::TableData& data = *table.data;
    const tables::Place places = std::min(data.placeCount(), largeGridBytes);
    std::uint64_t bytes = places * bytesOfPlace;
    for (const tables::TableDimension& dimension : data.dimensions()) {
        bytes += labelBytes(dimension) * (places / std::max<std::size_t>(dimension.categories.size(), 1));
    }
    data.forEachCell([&](tables::Place /*place*/, const tables::TableCell& cell) {
        if (cell.kind == tables::CellKind::text) bytes += data.text(cell).size();
        if (cell.extras != 0 && data.extras(cell).shown) bytes += data.extras(cell).shown->size();
    });
    return bytes > largeGridBytes;
}

}  // namespace

SavePlan::SavePlan(const ViewerDocument& document, const SaveOptions& options) {
    manifest_.type = options.type;
    manifest_.locked = options.locked;
    manifest_.dataModel = options.dataModel;
    manifest_.name = document.name();
    SaveSelection selection(*this, options);
    walk(document.outline(), selection);
    selection.nameEntries();
    for (const LookEntry& look : looks_.entries()) {
        manifest_.looks.push_back({lookEntry(manifest_.looks.size()), look.isSource});
    }
}

StoreResult SavePlan::check() const {
    if (entries_.size() > limits::items) return {StoreProblem::beyondLimits, "the number of items"_text};
    if (isTooDeep_) return {StoreProblem::beyondLimits, "the depth of the outline"_text};
    return {};
}

PackageResult SavePlan::make(const Entry& entry, std::string& xml) {
    std::optional<ItemContent> flat;
    if (entry.asGrid) {
        const tables::Table& table = std::get<TableContent>(*entry.content).table;
        std::optional<tables::FlatTable> grid = tables::flatten(table);
        if (!grid) {
            const std::lock_guard lock(mutex_);
            isTooLarge_ = true;
            tooLargeTitle_ = table.view->title;
            return PackageProblem::beyondLimits;
        }
        flat = GridContent{std::make_shared<const tables::FlatTable>(*std::move(grid))};
    }
    const ItemContent& content = flat ? *flat : *entry.content;
    XmlWriter writer(documentFileXml);
    WritingContext context{looks_};
    kindOf(static_cast<ItemType>(content.index())).write(content, writer, context);
    const bool fits = writer.tags() <= limits::entryTags && writer.quotes() <= limits::entryQuotes;
    xml = writer.take();
    if (!fits || xml.size() > limits::entryBytes) {
        return {PackageProblem::beyondLimits, "the size of one item"_text};
    }
    const std::lock_guard lock(mutex_);
    kept_ += memoryOfItem(xml.size()) + context.memory;
    mostBorrowed_ = std::max(mostBorrowed_, memoryOfXml(xml));
    return {};
}

void SavePlan::keep(std::uint64_t bytes) {
    const std::lock_guard lock(mutex_);
    kept_ += bytes;
}

PackageResult SavePlan::addMade(ZipWriter& archive, const std::string& name, const Entry& entry) {
    const bool isLarge = entry.asGrid && isLargeAsGrid(std::get<TableContent>(*entry.content).table);
    if (isLarge) {
        if (PackageResult written = archive.writeWaiting(); !written) return written;
    }
    PackageResult added =
        archive.addMade(name, [this, &entry](std::string& xml) { return make(entry, xml); });
    return added && isLarge ? archive.writeWaiting() : added;
}

PackageResult SavePlan::addEntries(ZipWriter& archive) {
    std::string manifest = writeManifest(manifest_);
    mostBorrowed_ = memoryOfXml(manifest);
    PackageResult added = archive.add(manifestEntry, std::move(manifest));
    for (std::size_t i = 0; added && i < manifest_.looks.size(); ++i) {
        const std::string& look = looks_.entries()[i].xml;
        keep(memoryOfLook(look.size()));
        added = archive.add(manifest_.looks[i].entry, look);
    }
    std::size_t index = 0;
    for (const ManifestItem& item : manifest_.items) {
        if (!added) break;
        if (item.entry.empty()) {
            keep(memoryOfItem(0));
            continue;
        }
        const Entry& entry = entries_[index++];
        if (const auto* const unknown = std::get_if<UnknownContent>(entry.content)) {
            keep(memoryOfItem(unknown->raw->size()));
            added = archive.add(item.entry, *unknown->raw);
            continue;
        }
        added = addMade(archive, item.entry, entry);
        if (added && !item.picture.empty()) {
            added = archive.add(item.picture, pictureOf(*entry.content)->picture->bytes);
        }
    }
    return added ? archive.finish() : added;
}

StoreResult SavePlan::write(ZipWriter& archive, const std::uint64_t& written) {
    if (StoreResult result = check(); !result) return result;
    const PackageResult added = addEntries(archive);
    if (isTooLarge_) return {StoreProblem::tableTooLarge, tooLargeTitle_};
    if (!added) return fromPackage(added);
    // Somewhat less than the limit, so that counting in another way never makes the difference.
    const MemoryLimits memory = memoryFor(written);
    if (kept_ > memory.kept / 8 * 7 || mostBorrowed_ > memory.borrowed / 8 * 7) {
        return {StoreProblem::beyondLimits, "the memory that opening it would take"_text};
    }
    return {};
}

}  // namespace vexa::frontend
