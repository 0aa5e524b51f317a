// The package that every Office Open XML document is: parts with their content types, the relations between
// them, pictures stored once, and the properties of the document. Knows nothing of what the parts say.
//
// Names of parts begin with a slash: "/ppt/slides/slide1.xml". Equal calls in the same order give equal
// bytes.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "frontend/package/package_result.h"
#include "frontend/package/zip_writer.h"

namespace vexa::frontend {

/// What programs show of a file without opening it. UTF-8.
struct OfficeProperties {
    std::string title;
    std::string language;  ///< a language tag, "en" or "pt-BR"; empty for none
};

/// A relation is named by the last word of its type, "slide" or "image"; the rest is the same for all.
class OfficePackage {
  public:
    /// `mainPart` is the part that the document begins with; it is added like every other. The sink gets the
    /// bytes of the file while parts are added.
    OfficePackage(ByteSink sink, const OfficeProperties& properties, const std::string& mainPart);

    /// Relates a part to another, which may be added before or later, and gives the relation's id: "rId1",
    /// "rId2", ... in the order of the calls; the same id for the same relation. `source` must not have been
    /// added yet.
    std::string relate(const std::string& source, std::string_view type, const std::string& target);
    /// The same to an address outside.
    std::string relateOutside(const std::string& source, std::string_view type, const std::string& address);

    /// Adds a part whose relations are all made. The first failure stays the result of every later call.
    PackageResult add(const std::string& part, std::string contentType, std::string content);
    /// Adds a part whose bytes `DeflateStream` has packed; the entry's name is set here.
    PackageResult addPacked(const std::string& part, std::string contentType, ZipEntry entry,
                            std::string packed);
    /// Adds a part of bytes that are compressed already or need no relations, "vbaProject.bin".
    PackageResult addStored(const std::string& part, std::string contentType, std::string content);
    /// The name of the part that holds this picture, in the folder `media` beside the main part: added where
    /// no equal one was. `extension` is "png", "svg", "jpeg" or "emf".
    std::string addPicture(std::string_view bytes, std::string_view extension);
    /// Writes the list of content types and the end of the archive. Nothing is added afterwards.
    PackageResult finish();

  private:
    struct Relation {
        std::string type;
        std::string target;  ///< as it is written
        bool outside = false;
    };
    /// The relations of one part.
    struct Relations {
        std::vector<Relation> all;
        std::unordered_map<std::string, std::size_t> numbers;  ///< by type and target
    };
    std::string relateTo(const std::string& source, Relation relation);
    PackageResult addRelations(const std::string& part);
    void addProperties(const OfficeProperties& properties, const std::string& mainPart);

    std::deque<std::string> packed_;  // what the archive refers to
    ZipWriter zip_;
    PackageResult result_;
    std::string mediaFolder_;
    std::map<std::string, Relations> relations_;                     // by part, of those not added yet
    std::map<std::string, std::string, std::less<>> extensions_;     // content types by extension
    std::vector<std::pair<std::string, std::string>> contentTypes_;  // of parts
    std::map<std::string, std::string> pictures_;                    // part by digest
};

/// The beginning of the content types of a family of parts:
/// "application/vnd.openxmlformats-officedocument." and "presentationml.slide+xml", say.
[[nodiscard]] std::string officeContentType(std::string_view part);

/// The namespace of relations inside parts, what `r:` stands for.
inline constexpr std::string_view officeRelationsSpace =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
/// The namespace of drawings, what `a:` stands for.
inline constexpr std::string_view officeDrawingSpace =
    "http://schemas.openxmlformats.org/drawingml/2006/main";
/// The extension of `a:blip` that names an SVG (`asvg:svgBlip`), and its namespace.
inline constexpr std::string_view officeSvgExtension = "{96DAC541-7B7A-43D3-8B79-37D633B846F1}";
inline constexpr std::string_view officeSvgSpace =
    "http://schemas.microsoft.com/office/drawing/2016/SVG/main";

}  // namespace vexa::frontend
