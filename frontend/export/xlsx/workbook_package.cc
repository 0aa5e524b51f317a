#include "frontend/export/xlsx/workbook_package.h"

#include <algorithm>
#include <utility>

#include "frontend/export/xlsx/package_xml.h"
#include "frontend/export/xlsx/xml_stream.h"
#include "frontend/package/zip_writer.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view contentTypesPart = "[Content_Types].xml";
constexpr std::string_view noContentTypes =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
    "<Default Extension=\"xml\" ContentType=\"application/xml\"/></Types>";
constexpr std::string_view noRelations =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";

std::string_view extensionOf(std::string_view part) {
    const std::size_t dot = part.rfind('.');
    return dot == std::string_view::npos || part.find('/', dot) != std::string_view::npos
               ? std::string_view()
               : part.substr(dot + 1);
}

std::string_view lastWord(std::string_view address) { return address.substr(address.rfind('/') + 1); }

/// `%20` and the like as the characters that they stand for.
std::string withoutPercents(std::string_view address) {
    const auto digit = [](char byte) {
        const std::string_view digits = "0123456789abcdef";
        return digits.find(lowerCase(std::string_view(&byte, 1)));
    };
    std::string text;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const bool isCode = address[i] == '%' && i + 2 < address.size() && digit(address[i + 1]) < 16 &&
                            digit(address[i + 2]) < 16;
        if (isCode) {
            text += static_cast<char>(digit(address[i + 1]) * 16 + digit(address[i + 2]));
            i += 2;
        } else {
            text += address[i];
        }
    }
    return text;
}

/// How a relation of `part` names another part: from its folder on where that holds both.
std::string targetOf(std::string_view part, std::string_view target) {
    const std::string_view folder = part.substr(0, part.rfind('/') + 1);
    return target.starts_with(folder) ? std::string(target.substr(folder.size())) : "/" + std::string(target);
}

}  // namespace

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
    });
    return lower;
}

std::string relationsPart(std::string_view part) {
    const std::size_t slash = part.rfind('/');
    const std::size_t begin = slash == std::string_view::npos ? 0 : slash + 1;
    return std::string(part.substr(0, begin)) + "_rels/" + std::string(part.substr(begin)) + ".rels";
}

std::string partOf(std::string_view part, std::string_view target) {
    const std::string plain = withoutPercents(target);
    const std::string_view folder = part.substr(0, part.rfind('/') + 1);
    std::string whole = plain.starts_with('/') ? plain.substr(1) : std::string(folder) + plain;
    std::vector<std::string_view> parts;
    for (std::string_view rest = whole; !rest.empty();) {
        const std::string_view step = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(rest.size(), step.size() + 1));
        if (step == ".." && !parts.empty()) {
            parts.pop_back();
        } else if (step != "." && step != ".." && !step.empty()) {
            parts.push_back(step);
        }
    }
    std::string name;
    for (const std::string_view step : parts) {
        name += name.empty() ? "" : "/";
        name += step;
    }
    return name;
}

PackageResult WorkbookPackage::open(std::string bytes) {
    bytes_ = std::move(bytes);
    if (PackageResult result = reader_.open(bytes_); !result) {
        return result;
    }
    for (std::size_t place = 0; place < reader_.count(); ++place) {
        places_.emplace(lowerCase(reader_.entry(place).name), place);
    }
    return loadContentTypes();
}

PackageResult WorkbookPackage::begin() {
    set(contentTypesPart, std::string(noContentTypes));
    return loadContentTypes();
}

std::optional<std::size_t> WorkbookPackage::place(std::string_view part) const {
    if (const std::optional<std::size_t> exact = reader_.find(part)) {
        return exact;
    }
    const auto found = places_.find(lowerCase(part));
    return found == places_.end() ? std::nullopt : std::optional(found->second);
}

const WorkbookPackage::Changed* WorkbookPackage::changed(std::string_view part) const {
    const auto found = changes_.find(lowerCase(part));
    return found == changes_.end() ? nullptr : &found->second;
}

WorkbookPackage::Changed& WorkbookPackage::change(std::string_view part) {
    const auto [found, isNew] = changes_.try_emplace(lowerCase(part));
    if (isNew) {
        const std::optional<std::size_t> place = this->place(part);
        found->second.name = place ? reader_.entry(*place).name : std::string(part);
        if (!place) {
            added_.push_back(found->first);
        }
    }
    found->second.content.clear();
    found->second.entry.reset();
    found->second.isRemoved = false;
    return found->second;
}

bool WorkbookPackage::has(std::string_view part) const {
    const Changed* const changed = this->changed(part);
    return changed != nullptr ? !changed->isRemoved : place(part).has_value();
}

std::uint64_t WorkbookPackage::bytesOf(std::string_view part) const {
    if (const Changed* const changed = this->changed(part); changed != nullptr) {
        return changed->entry ? changed->entry->bytes : changed->content.size();
    }
    const std::optional<std::size_t> place = this->place(part);
    return place ? reader_.entry(*place).bytes : 0;
}

PackageResult WorkbookPackage::read(std::string_view part, std::string& content, std::uint64_t limit) const {
    if (const Changed* const changed = this->changed(part); changed != nullptr && !changed->entry) {
        content = changed->content;
        return {};
    }
    const std::optional<std::size_t> place = this->place(part);
    if (!place) {
        return {PackageProblem::damaged, "the entry ^1"_text, {std::string(part)}};
    }
    return reader_.read(*place, content, limit);
}

ByteSource WorkbookPackage::source(std::string_view part) const {
    if (const Changed* const changed = this->changed(part); changed != nullptr && !changed->entry) {
        return textSource(changed->content);
    }
    const std::optional<std::size_t> place = this->place(part);
    return place ? entrySource(reader_, *place) : textSource({});
}

ByteSource WorkbookPackage::source(std::string_view part, PackedMarks& marks) const {
    const std::optional<std::size_t> place = this->place(part);
    return place && changed(part) == nullptr ? markedSource(reader_, *place, marks) : source(part);
}

ByteSource WorkbookPackage::source(std::string_view part, std::vector<PackedBlocks> without) const {
    const std::optional<std::size_t> place = this->place(part);
    return place && !without.empty() ? sourceWithout(reader_, *place, std::move(without)) : source(part);
}

std::string_view WorkbookPackage::packed(std::string_view part) const {
    const std::optional<std::size_t> place = this->place(part);
    return place ? reader_.packed(*place) : std::string_view();
}

void WorkbookPackage::set(std::string_view part, std::string content) {
    change(part).content = std::move(content);
}

void WorkbookPackage::setPacked(std::string_view part, ZipEntry entry, std::string packed) {
    Changed& changed = change(part);
    changed.content = std::move(packed);
    changed.entry = std::move(entry);
    changed.entry->name = changed.name;
}

void WorkbookPackage::remove(std::string_view part) { change(part).isRemoved = true; }

std::string WorkbookPackage::freeName(std::string_view before, std::string_view behind) const {
    std::size_t& number = nextNumbers_[std::string(before) + std::string(behind)];
    while (true) {
        std::string name = std::string(before) + std::to_string(++number) + std::string(behind);
        if (!place(name) && changed(name) == nullptr) {
            return name;
        }
    }
}

PackageResult WorkbookPackage::loadContentTypes() {
    std::string xml;
    if (PackageResult result = read(contentTypesPart, xml, mostOfATree); !result) {
        return result;
    }
    PackageXml types;
    if (PackageResult result = types.parse(std::move(xml), "Types"); !result) {
        return result;
    }
    for (const pugi::xml_node node : types.root().children()) {
        const std::string type(attributeOf(node, "ContentType"));
        if (localName(node) == "Default") {
            extensions_.emplace(lowerCase(attributeOf(node, "Extension")), type);
        } else if (localName(node) == "Override") {
            types_.emplace(lowerCase(partOf("", attributeOf(node, "PartName"))), type);
        }
    }
    return {};
}

std::string WorkbookPackage::contentType(std::string_view part) const {
    if (const auto found = types_.find(lowerCase(part)); found != types_.end()) {
        return found->second;
    }
    const auto found = extensions_.find(lowerCase(extensionOf(part)));
    return found == extensions_.end() ? std::string() : found->second;
}

void WorkbookPackage::setContentType(std::string_view part, std::string_view type) {
    types_.insert_or_assign(lowerCase(part), std::string(type));
    newTypes_.emplace_back(part, type);
}

void WorkbookPackage::setExtension(std::string_view extension, std::string_view type) {
    if (extensions_.emplace(lowerCase(extension), type).second) {
        newExtensions_.emplace_back(extension, type);
    }
}

/// Writes the new types into the list, and takes those of parts out that are gone.
void WorkbookPackage::finishContentTypes() {
    std::string xml;
    PackageXml types;
    if (!read(contentTypesPart, xml, mostOfATree) || !types.parse(std::move(xml), "Types")) {
        return;
    }
    pugi::xml_node root = types.root();
    std::set<std::string> listed;
    for (pugi::xml_node node = root.first_child(); node;) {
        const pugi::xml_node next = node.next_sibling();
        if (localName(node) == "Override") {
            const std::string part = lowerCase(partOf("", attributeOf(node, "PartName")));
            const Changed* const changed = this->changed(part);
            if (changed != nullptr && changed->isRemoved) {
                root.remove_child(node);
            } else if (const auto type = types_.find(part); type != types_.end()) {
                setAttribute(node, "ContentType", type->second);
                listed.insert(part);
            }
        }
        node = next;
    }
    for (const auto& [extension, type] : newExtensions_) {
        pugi::xml_node node = root.prepend_child(types.named("Default").c_str());
        setAttribute(node, "Extension", extension);
        setAttribute(node, "ContentType", type);
    }
    for (const auto& [part, type] : newTypes_) {
        if (listed.insert(lowerCase(part)).second && has(part)) {
            pugi::xml_node node = root.append_child(types.named("Override").c_str());
            setAttribute(node, "PartName", "/" + part);
            setAttribute(node, "ContentType", type);
        }
    }
    set(contentTypesPart, types.text());
}

PackageResult WorkbookPackage::relations(std::string_view part, std::vector<PartRelation>& relations) const {
    relations.clear();
    const std::string name = relationsPart(part);
    if (!has(name)) {
        return {};
    }
    std::string xml;
    PackageXml parsed;
    PackageResult result = read(name, xml, mostOfATree);
    if (result) {
        result = parsed.parse(std::move(xml), "Relationships");
    }
    if (!result) {
        return result;
    }
    for (const pugi::xml_node node : parsed.root().children()) {
        if (localName(node) != "Relationship") {
            continue;
        }
        PartRelation& relation = relations.emplace_back();
        relation.id = attributeOf(node, "Id");
        relation.type = lastWord(attributeOf(node, "Type"));
        relation.isOutside = attributeOf(node, "TargetMode") == "External";
        const std::string_view target = attributeOf(node, "Target");
        relation.target = relation.isOutside ? std::string(target) : partOf(part, target);
    }
    return {};
}

PackageResult WorkbookPackage::relate(std::string_view part, std::string_view type, std::string_view target,
                                      std::string& id) {
    std::vector<std::string> ids;
    PackageResult result = relate(part, type, {std::string(target)}, ids);
    id = result ? ids.front() : std::string();
    return result;
}

PackageResult WorkbookPackage::relate(std::string_view part, std::string_view type,
                                      const std::vector<std::string>& targets,
                                      std::vector<std::string>& ids) {
    const std::string name = relationsPart(part);
    std::string xml(noRelations);
    PackageXml parsed;
    PackageResult result = has(name) ? read(name, xml, mostOfATree) : PackageResult();
    if (result) {
        result = parsed.parse(std::move(xml), "Relationships");
    }
    if (!result) {
        return result;
    }
    std::set<std::string, std::less<>> taken;
    for (const pugi::xml_node node : parsed.root().children()) {
        taken.emplace(attributeOf(node, "Id"));
    }
    ids.clear();
    std::size_t number = 0;
    for (const std::string& target : targets) {
        std::string id;
        do {
            id = "rId" + std::to_string(++number);
        } while (taken.contains(id));
        pugi::xml_node node = parsed.root().append_child(parsed.named("Relationship").c_str());
        setAttribute(node, "Id", id);
        setAttribute(node, "Type", type);
        setAttribute(node, "Target", targetOf(part, target));
        ids.push_back(std::move(id));
    }
    set(name, parsed.text());
    return {};
}

PackageResult WorkbookPackage::unrelate(std::string_view part, std::string_view id) {
    const std::string name = relationsPart(part);
    std::string xml;
    PackageXml parsed;
    PackageResult result = read(name, xml, mostOfATree);
    if (result) {
        result = parsed.parse(std::move(xml), "Relationships");
    }
    if (!result) {
        return result;
    }
    pugi::xml_node root = parsed.root();
    for (const pugi::xml_node node : root.children()) {
        if (attributeOf(node, "Id") == id) {
            root.remove_child(node);
            break;
        }
    }
    set(name, parsed.text());
    return {};
}

PackageResult WorkbookPackage::reachable(std::set<std::string>& parts) const {
    std::vector<std::string> waiting{""};
    std::vector<PartRelation> relations;
    while (!waiting.empty()) {
        const std::string part = std::move(waiting.back());
        waiting.pop_back();
        if (PackageResult result = this->relations(part, relations); !result) {
            return result;
        }
        for (const PartRelation& relation : relations) {
            if (!relation.isOutside && has(relation.target) &&
                parts.insert(lowerCase(relation.target)).second) {
                waiting.push_back(relation.target);
            }
        }
    }
    return {};
}

PackageResult WorkbookPackage::write(const ByteSink& sink) {
    finishContentTypes();
    ZipWriter zip(sink, workbookLimits);
    const auto writeChanged = [&zip](const Changed& changed) {
        if (changed.isRemoved) {
            return PackageResult();
        }
        return changed.entry ? zip.addPacked(*changed.entry, changed.content)
                             : zip.add(changed.name, changed.content);
    };
    for (std::size_t place = 0; place < reader_.count(); ++place) {
        const ZipEntry& entry = reader_.entry(place);
        const auto known = places_.find(lowerCase(entry.name));
        const Changed* const changed =
            known != places_.end() && known->second == place ? this->changed(entry.name) : nullptr;
        PackageResult result =
            changed != nullptr ? writeChanged(*changed) : zip.addPacked(entry, reader_.packed(place));
        if (!result) {
            return result;
        }
    }
    for (const std::string& name : added_) {
        if (PackageResult result = writeChanged(changes_.at(name)); !result) {
            return result;
        }
    }
    return zip.finish();
}

std::string officeRelationType(std::string_view name) {
    std::string type = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    type += name;
    return type;
}

}  // namespace vexa::frontend
