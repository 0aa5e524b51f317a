#include "frontend/store/entry_reader.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include "frontend/package/xml_reader.h"
#include "frontend/store/item_kinds.h"
#include "frontend/store/limits.h"
#include "frontend/store/objection.h"

namespace vexa::frontend {
namespace {

PackageResult tooLarge() { return {PackageProblem::tooLarge, "what it unpacks to"_text}; }

PackageResult readPicture(const ZipReader& archive, const std::string& name, ReadingContext& context) {
    const ZipEntry& entry = archive.entry(archive.find(name).value());
    if (!context.keep(entry.bytes)) return tooLarge();
    context.picture = std::make_shared<Picture>();
    context.picture->packedBytes = entry.packedBytes;
    context.picture->form =
        name.ends_with(pictureExtension(PictureForm::svg)) ? PictureForm::svg : PictureForm::png;
    return readEntry(archive, name, context.picture->bytes);
}

class EntriesReader {
  public:
    EntriesReader(const ZipReader& archive, const std::vector<SharedLook>& looks, MemoryBudget& budget,
                  std::vector<ManifestItem>& items)
        : archive_(archive), looks_(looks), budget_(budget), items_(items), failed_(items.size()) {}

    PackageResult read() {
        // Less work than starting a thread takes is not shared.
        constexpr std::size_t itemsOfAThread = 32;
        const std::size_t wanted = std::min<std::size_t>(std::max(1U, std::thread::hardware_concurrency()),
                                                         items_.size() / itemsOfAThread + 1);
        std::vector<std::thread> helpers;
        try {
            while (helpers.size() + 1 < wanted) helpers.emplace_back([this] { work(); });
        } catch (const std::exception&) {
            // Fewer helpers do it too.
        }
        work();
        for (std::thread& helper : helpers) helper.join();
        return result_;
    }

  private:
    void work() {
        for (std::size_t i = next_++; i < failed_; i = next_++) {
            PackageResult result;
            try {
                result = readItem(items_[i]);
            } catch (const std::bad_alloc&) {
                result = PackageProblem::noMemory;
            }
            if (result) continue;
            const std::lock_guard lock(mutex_);
            if (i >= failed_) continue;
            failed_ = i;
            result_ = std::move(result);
        }
    }

    PackageResult readItem(ManifestItem& described) {
        if (described.entry.empty()) return budget_.keep(memoryOfItem(0)) ? PackageResult() : tooLarge();
        const std::size_t place = archive_.find(described.entry).value();
        ItemContent& content = described.item.content;
        const std::uint64_t bytes = archive_.entry(place).bytes;
        if (auto* const unknown = std::get_if<UnknownContent>(&content)) {
            if (!budget_.keep(memoryOfItem(bytes))) return tooLarge();
            auto raw = std::make_shared<std::string>();
            PackageResult result = readEntry(archive_, described.entry, *raw);
            if (result && !described.entry.ends_with(rawExtension(*raw))) {
                return {PackageProblem::damaged, "the entry ^1"_text, {described.entry}};
            }
            unknown->raw = std::move(raw);
            return result;
        }
        if (!budget_.keep(memoryOfItem(bytes))) return tooLarge();
        // Large ones are read one at a time, so that their texts are not all there at once.
        constexpr std::uint64_t large = 1ULL << 20;
        std::unique_lock<std::mutex> alone;
        BorrowedMemory memory(budget_);
        if (bytes > large) {
            alone = std::unique_lock(largeOne_);
            if (!memory.borrow(bytes)) return tooLarge();
        }
        std::string xml;
        PackageResult result = readEntry(archive_, described.entry, xml);
        if (result && !budget_.keep(memoryOfLineEnds(xml))) result = tooLarge();
        if (result && !memory.borrow(memoryOfXml(xml) - (alone ? bytes : 0))) result = tooLarge();
        ReadingContext context{looks_, budget_, nullptr};
        if (result && !described.picture.empty()) result = readPicture(archive_, described.picture, context);
        if (!result) return result;
        result = readContent(described.item.type(), std::move(xml), context, content);
        if (result.problem == PackageProblem::damaged) result.entry = described.entry;
        return result;
    }

    const ZipReader& archive_;
    const std::vector<SharedLook>& looks_;
    MemoryBudget& budget_;
    std::vector<ManifestItem>& items_;
    std::atomic<std::size_t> next_ = 0;
    std::mutex largeOne_;
    std::mutex mutex_;
    std::atomic<std::size_t> failed_;  // index of the first item that failed, or their number
    PackageResult result_;             // guarded
};

}  // namespace

PackageResult readEntry(const ZipReader& archive, const std::string& name, std::string& content) {
    return archive.read(archive.find(name).value(), content, limits::entryBytes);
}

PackageResult readContent(ItemType type, std::string xml, ReadingContext& context, ItemContent& content) {
    XmlReader reader;
    const std::string_view word = itemTypeWords[static_cast<std::size_t>(type)];
    if (PackageResult result = reader.parse(std::move(xml), word, limits::xml); !result) return result;
    const ObjectionScope scope;
    ElementReader element(reader.root());
    if (kindOf(type).read(reader.root(), element, content, context) && element.isRead()) return {};
    return context.isTooLarge ? tooLarge() : scope.explain(PackageProblem::damaged);
}

PackageResult readEntries(const ZipReader& archive, const std::vector<SharedLook>& looks,
                          MemoryBudget& budget, std::vector<ManifestItem>& items) {
    return EntriesReader(archive, looks, budget, items).read();
}

}  // namespace vexa::frontend
