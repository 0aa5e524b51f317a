#include "frontend/export/office/office_package.h"

#include <sodium.h>

#include <algorithm>
#include <cassert>
#include <utility>

#include "frontend/export/picture_files.h"
#include "frontend/package/xml_writer.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view packageSpace = "http://schemas.openxmlformats.org/package/2006/";
constexpr std::string_view coreRelation =
    "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
constexpr std::string_view coreType = "application/vnd.openxmlformats-package.core-properties+xml";
constexpr std::string_view relationsType = "application/vnd.openxmlformats-package.relationships+xml";

/// An export reads nothing back, so only the form of the archive bounds it.
ZipLimits officeLimits() {
    ZipLimits limits;
    limits.fileBytes = limits.entryBytes = 0xFFFFFFFE;
    limits.totalBytes = std::uint64_t{1} << 40U;
    limits.entries = 10'000'000;
    return limits;
}

std::string fullType(std::string_view type) {
    return type.find(':') != std::string_view::npos
               ? std::string(type)
               : std::string(officeRelationsSpace).append("/").append(type);
}

/// "/ppt/_rels/presentation.xml.rels" of "/ppt/presentation.xml".
std::string relationsPartOf(const std::string& part) {
    const std::size_t folder = part.rfind('/') + 1;
    return part.substr(0, folder) + "_rels/" + part.substr(folder) + ".rels";
}

std::string_view pictureType(std::string_view extension) {
    if (extension == "svg") return "image/svg+xml";
    if (extension == "emf") return "image/x-emf";
    return extension == "png" ? "image/png" : "image/jpeg";
}

std::string digestOf(std::string_view bytes) {
    std::string digest(crypto_generichash_BYTES, '\0');
    crypto_generichash(reinterpret_cast<unsigned char*>(digest.data()), digest.size(),
                       reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), nullptr, 0);
    return digest;
}

std::string coreProperties(const OfficeProperties& properties) {
    XmlWriter xml(officeXml);
    xml.begin("cp:coreProperties")
        .attribute("xmlns:cp", std::string(packageSpace) + "metadata/core-properties")
        .attribute("xmlns:dc", "http://purl.org/dc/elements/1.1/");
    xml.element("dc:title", properties.title);
    if (!properties.language.empty()) xml.element("dc:language", properties.language);
    xml.end();
    return xml.take();
}

std::string applicationProperties() {
    XmlWriter xml(officeXml);
    xml.begin("Properties")
        .attribute("xmlns", "http://schemas.openxmlformats.org/officeDocument/2006/extended-properties");
    xml.element("Application", "Vexa Output");
    xml.end();
    return xml.take();
}

}  // namespace

std::string officeContentType(std::string_view part) {
    return std::string("application/vnd.openxmlformats-officedocument.").append(part);
}

OfficePackage::OfficePackage(ByteSink sink, const OfficeProperties& properties, const std::string& mainPart)
    : zip_(std::move(sink), officeLimits()),
      mediaFolder_(mainPart.substr(0, mainPart.rfind('/') + 1) + "media/") {
    extensions_ = {{"rels", std::string(relationsType)}, {"xml", "application/xml"}};
    addProperties(properties, mainPart);
}

/// First in the file, since programs that only look at its beginning find out there what it is.
void OfficePackage::addProperties(const OfficeProperties& properties, const std::string& mainPart) {
    relate("/", "officeDocument", mainPart);
    relate("/", coreRelation, "/docProps/core.xml");
    relate("/", "extended-properties", "/docProps/app.xml");
    result_ = addRelations("/");
    static_cast<void>(add("/docProps/core.xml", std::string(coreType), coreProperties(properties)));
    static_cast<void>(
        add("/docProps/app.xml", officeContentType("extended-properties+xml"), applicationProperties()));
}

std::string OfficePackage::relate(const std::string& source, std::string_view type,
                                  const std::string& target) {
    return relateTo(source, {fullType(type), relativePath(source, target), false});
}

std::string OfficePackage::relateOutside(const std::string& source, std::string_view type,
                                         const std::string& address) {
    return relateTo(source, {fullType(type), address, true});
}

std::string OfficePackage::relateTo(const std::string& source, Relation relation) {
    Relations& relations = relations_[source];
    const std::string key = (relation.outside ? "x " : "i ") + relation.type + " " + relation.target;
    const auto [found, isNew] = relations.numbers.try_emplace(key, relations.all.size() + 1);
    if (isNew) relations.all.push_back(std::move(relation));
    return "rId" + std::to_string(found->second);
}

PackageResult OfficePackage::addRelations(const std::string& part) {
    const auto found = relations_.find(part);
    if (found == relations_.end()) return {};
    XmlWriter xml(officeXml);
    xml.begin("Relationships").attribute("xmlns", std::string(packageSpace) + "relationships");
    std::size_t number = 0;
    for (const Relation& each : found->second.all) {
        xml.begin("Relationship").attribute("Id", "rId" + std::to_string(++number));
        xml.attribute("Type", each.type).attribute("Target", each.target);
        if (each.outside) xml.attribute("TargetMode", "External");
        xml.end();
    }
    xml.end();
    relations_.erase(found);
    return zip_.add(relationsPartOf(part).substr(1), xml.take());
}

PackageResult OfficePackage::add(const std::string& part, std::string contentType, std::string content) {
    if (!result_) return result_;
    contentTypes_.emplace_back(part, std::move(contentType));
    result_ = zip_.add(part.substr(1), std::move(content));
    if (result_) result_ = addRelations(part);
    return result_;
}

PackageResult OfficePackage::addPacked(const std::string& part, std::string contentType, ZipEntry entry,
                                       std::string packed) {
    if (!result_) return result_;
    contentTypes_.emplace_back(part, std::move(contentType));
    entry.name = part.substr(1);
    result_ = zip_.addPacked(entry, packed_.emplace_back(std::move(packed)));
    if (result_) result_ = addRelations(part);
    return result_;
}

PackageResult OfficePackage::addStored(const std::string& part, std::string contentType,
                                       std::string content) {
    if (!result_) return result_;
    contentTypes_.emplace_back(part, std::move(contentType));
    result_ = zip_.addStored(part.substr(1), std::move(content));
    return result_;
}

std::string OfficePackage::addPicture(std::string_view bytes, std::string_view extension) {
    const std::string number = std::to_string(pictures_.size() + 1);
    const auto [found, isNew] = pictures_.try_emplace(digestOf(bytes).append(extension));
    if (!isNew) return found->second;
    found->second = mediaFolder_ + "image" + number + "." + std::string(extension);
    extensions_.emplace(extension, pictureType(extension));
    const std::string name = found->second.substr(1);
    if (result_) {
        result_ = extension == "svg" || extension == "emf" ? zip_.add(name, std::string(bytes))
                                                           : zip_.addStored(name, std::string(bytes));
    }
    return found->second;
}

PackageResult OfficePackage::finish() {
    if (!result_) return result_;
    assert(relations_.empty());
    XmlWriter xml(officeXml);
    xml.begin("Types").attribute("xmlns", std::string(packageSpace) + "content-types");
    for (const auto& [extension, type] : extensions_) {
        xml.begin("Default").attribute("Extension", extension).attribute("ContentType", type).end();
    }
    for (const auto& [part, type] : contentTypes_) {
        xml.begin("Override").attribute("PartName", part).attribute("ContentType", type).end();
    }
    xml.end();
    result_ = zip_.add("[Content_Types].xml", xml.take());
    if (result_) result_ = zip_.finish();
    return result_;
}

}  // namespace vexa::frontend
