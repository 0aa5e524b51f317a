// A workbook's package while it is changed: the parts of a file, of which some are replaced, added or left
// out. Everything else is copied as it stands, packed bytes and all.
//
// Names of parts are those of the archive, without a slash at the front; they are found whatever their case,
// as Office Open XML has it.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/package/marked_source.h"
#include "frontend/package/package_result.h"
#include "frontend/package/zip_entry_stream.h"
#include "frontend/package/zip_reader.h"

namespace vexa::frontend {

/// What a workbook may hold. Large parts are never held whole; what is read as a tree has limits of its own.
inline constexpr ZipLimits workbookLimits{1ULL << 30U, 100'000, 4'294'967'294ULL, 32ULL << 30U, 4'096, true};

/// A relation of a part to another one, or to an address outside.
struct PartRelation {
    std::string id;
    std::string type;    ///< the last word of its address
    std::string target;  ///< the name of the part; of outside ones the address
    bool isOutside = false;
};

class WorkbookPackage {
  public:
    WorkbookPackage() : reader_(workbookLimits) {}
    WorkbookPackage(const WorkbookPackage&) = delete;
    WorkbookPackage& operator=(const WorkbookPackage&) = delete;
    WorkbookPackage(WorkbookPackage&&) = delete;
    WorkbookPackage& operator=(WorkbookPackage&&) = delete;
    ~WorkbookPackage() = default;

    /// Takes the bytes of a file. Refuses what is no archive, or one without a list of content types.
    PackageResult open(std::string bytes);
    /// An empty package.
    PackageResult begin();

    [[nodiscard]] bool has(std::string_view part) const;
    /// How large the part is, unpacked; 0 where there is none.
    [[nodiscard]] std::uint64_t bytesOf(std::string_view part) const;
    /// The whole part; refuses one beyond `limit`.
    PackageResult read(std::string_view part, std::string& content, std::uint64_t limit) const;
    /// The part piece by piece; empty where there is none.
    [[nodiscard]] ByteSource source(std::string_view part) const;

    /// The same, with marks in it; parts that are new have none.
    [[nodiscard]] ByteSource source(std::string_view part, PackedMarks& marks) const;
    /// The part without blocks that were marked in it.
    [[nodiscard]] ByteSource source(std::string_view part, std::vector<PackedBlocks> without) const;
    /// The packed bytes that marks of the part are in.
    [[nodiscard]] std::string_view packed(std::string_view part) const;

    /// Replaces or adds a part.
    void set(std::string_view part, std::string content);
    /// The same with bytes that are packed already; `entry` says how.
    void setPacked(std::string_view part, ZipEntry entry, std::string packed);
    void remove(std::string_view part);
    /// A name that no part has: `before`, a number from 1, `behind`.
    [[nodiscard]] std::string freeName(std::string_view before, std::string_view behind) const;

    [[nodiscard]] std::string contentType(std::string_view part) const;
    void setContentType(std::string_view part, std::string_view type);
    /// For all parts with this extension; one that has a type keeps it.
    void setExtension(std::string_view extension, std::string_view type);

    /// In the order of the file; empty where the part has none. Fails where they cannot be read.
    PackageResult relations(std::string_view part, std::vector<PartRelation>& relations) const;
    /// Relates a part to another, and gives the relation's id. `type` is a whole address.
    PackageResult relate(std::string_view part, std::string_view type, std::string_view target,
                         std::string& id);
    /// The same for several others, in their order.
    PackageResult relate(std::string_view part, std::string_view type,
                         const std::vector<std::string>& targets, std::vector<std::string>& ids);
    PackageResult unrelate(std::string_view part, std::string_view id);

    /// The parts that can be reached from the package's own relations.
    PackageResult reachable(std::set<std::string>& parts) const;

    /// Writes the archive: the parts of the file in their order, then the new ones.
    PackageResult write(const ByteSink& sink);

  private:
    struct Changed {
        std::string name;
        std::string content;  ///< or the packed bytes
        std::optional<ZipEntry> entry;
        bool isRemoved = false;
    };
    [[nodiscard]] const Changed* changed(std::string_view part) const;
    Changed& change(std::string_view part);
    [[nodiscard]] std::optional<std::size_t> place(std::string_view part) const;
    PackageResult loadContentTypes();
    void finishContentTypes();

    std::string bytes_;
    ZipReader reader_;
    std::map<std::string, std::size_t, std::less<>> places_;  ///< by name in lower case
    std::map<std::string, Changed, std::less<>> changes_;     ///< by name in lower case
    std::vector<std::string> added_;                          ///< names in lower case, in their order
    std::map<std::string, std::string, std::less<>> extensions_;
    std::map<std::string, std::string, std::less<>> types_;  ///< by name in lower case
    std::vector<std::pair<std::string, std::string>> newTypes_;
    mutable std::map<std::string, std::size_t, std::less<>>
        nextNumbers_;  ///< of names, by what they begin with
    std::vector<std::pair<std::string, std::string>> newExtensions_;
};

/// The type of a relation: the address that ends with `name`, as in "worksheet".
[[nodiscard]] std::string officeRelationType(std::string_view name);

/// The name of the part that holds the relations of `part`; of the package itself for an empty one.
[[nodiscard]] std::string relationsPart(std::string_view part);
/// `target` as a relation of `part` names it, as the name of a part.
[[nodiscard]] std::string partOf(std::string_view part, std::string_view target);
[[nodiscard]] std::string lowerCase(std::string_view text);

}  // namespace vexa::frontend
