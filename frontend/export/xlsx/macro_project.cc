#include "frontend/export/xlsx/macro_project.h"

#include <algorithm>
#include <cassert>
#include <cstdint>

#include "frontend/package/compound_file.h"
#include "frontend/package/zip_format.h"

namespace vexa::frontend {
namespace {

using zipformat::RecordWriter;

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view projectId = "{5C1E7F0A-93B4-4D7E-8A26-1B0D4F6E2C31}";
constexpr std::string_view projectName = "VBAProject";
// The classes of the objects that modules belong to.
constexpr std::string_view workbookClass = "0{00020819-0000-0000-C000-000000000046}";
constexpr std::string_view sheetClass = "0{00020820-0000-0000-C000-000000000046}";

std::string wide(std::string_view ascii) {
    std::string text;
    for (const char letter : ascii) {
        text += letter;
        text += '\0';
    }
    return text;
}

/// One record of the list of the project's contents: its kind, its length, its bytes.
void record(std::string& out, unsigned kind, std::string_view bytes) {
    RecordWriter(out).two(kind).four(bytes.size()).text(bytes);
}

std::string two(unsigned number) {
    std::string bytes;
    RecordWriter(bytes).two(number);
    return bytes;
}

std::string four(unsigned number) {
    std::string bytes;
    RecordWriter(bytes).four(number);
    return bytes;
}

void writeModule(std::string& out, std::string_view name) {
    constexpr unsigned noCookie = 0xFFFF;
    record(out, 0x0019, name);
    record(out, 0x0047, wide(name));
    record(out, 0x001A, name);  // its stream
    record(out, 0x0032, wide(name));
    record(out, 0x001C, {});  // description
    record(out, 0x0048, {});
    record(out, 0x0031, four(0));  // where its text begins in the stream
    record(out, 0x001E, four(0));  // help
    record(out, 0x002C, two(noCookie));
    record(out, 0x0022, {});  // it belongs to an object
    record(out, 0x002B, {});
}

/// The list of the project's contents.
std::string directory(const std::vector<std::string>& modules) {
    constexpr unsigned english = 0x0409;
    constexpr unsigned westernCodePage = 1252;
    std::string out;
    record(out, 0x0001, four(1));  // made on a system of 32 bits
    record(out, 0x0002, four(english));
    record(out, 0x0014, four(english));
    record(out, 0x0003, two(westernCodePage));
    record(out, 0x0004, projectName);
    record(out, 0x0005, {});  // description
    record(out, 0x0040, {});
    record(out, 0x0006, {});  // files of help
    record(out, 0x003D, {});
    record(out, 0x0007, four(0));
    record(out, 0x0008, four(0));
    RecordWriter(out).two(0x0009).four(4).four(1).two(0);  // version; the length is none of it
    record(out, 0x000C, {});                               // constants
    record(out, 0x003C, {});
    record(out, 0x000F, two(static_cast<unsigned>(modules.size())));
    record(out, 0x0013, two(0xFFFF));
    for (const std::string& module : modules) {
        writeModule(out, module);
    }
    record(out, 0x0010, {});
    return out;
}

std::string moduleText(std::string_view name, std::string_view objectClass) {
    std::string text;
    const auto attribute = [&text](std::string_view key, std::string_view value) {
        text.append("Attribute VB_").append(key).append(" = ").append(value).append(lineEnd);
    };
    const auto quoted = [](std::string_view value) { return "\"" + std::string(value) + "\""; };
    attribute("Name", quoted(name));
    attribute("Base", quoted(objectClass));
    attribute("GlobalNameSpace", "False");
    attribute("Creatable", "False");
    attribute("PredeclaredId", "True");
    attribute("Exposed", "True");
    attribute("TemplateDerived", "False");
    attribute("Customizable", "True");
    return text;
}

/// What says how a project is protected, in the disguise that it has to have: each byte is mixed with those
/// before it, and the first ones with the project's own number.
std::string disguised(std::string_view data, unsigned seed) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr unsigned version = 2;
    unsigned key = 0;
    for (const char letter : projectId) {
        key += static_cast<unsigned char>(letter);
    }
    key &= 0xFFU;
    std::string hexadecimal;
    const auto put = [&](unsigned byte) {
        hexadecimal += digits[byte >> 4U & 0xFU];
        hexadecimal += digits[byte & 0xFU];
    };
    unsigned last = seed ^ key;
    unsigned beforeLast = seed ^ version;
    unsigned plain = key;
    put(seed);
    put(beforeLast);
    put(last);
    const auto mix = [&](unsigned byte) {
        const unsigned mixed = (byte ^ (beforeLast + plain)) & 0xFFU;
        put(mixed);
        beforeLast = last;
        last = mixed;
        plain = byte;
    };
    for (unsigned i = 0; i < (seed & 6U) / 2; ++i) {
        mix(0);  // bytes that nobody reads
    }
    for (const char byte : four(static_cast<unsigned>(data.size())) + std::string(data)) {
        mix(static_cast<unsigned char>(byte));
    }
    return hexadecimal;
}

/// The project as a text, with its modules and how it is protected: not at all.
std::string projectText(const std::vector<std::string>& modules) {
    std::string text;
    const auto line = [&text](std::string_view key, std::string_view value) {
        text.append(key).append("=\"").append(value).append("\"").append(lineEnd);
    };
    line("ID", projectId);
    for (const std::string& module : modules) {
        text.append("Document=").append(module).append("/&H00000000").append(lineEnd);
    }
    line("Name", projectName);
    line("HelpContextID", "0");
    line("VersionCompatible32", "393222000");
    line("CMG", disguised(std::string(4, '\0'), 0x07));
    line("DPB", disguised(std::string(1, '\0'), 0x0E));
    line("GC", disguised("\xFF", 0x15));
    text.append(lineEnd).append("[Host Extender Info]").append(lineEnd);
    text.append("&H00000001={3832D640-CF90-11CF-8E43-00A0C911005A};VBE;&H00000000").append(lineEnd);
    text.append(lineEnd).append("[Workspace]").append(lineEnd);
    for (const std::string& module : modules) {
        text.append(module).append("=0, 0, 0, 0, C").append(lineEnd);
    }
    return text;
}

}  // namespace

std::string packedMacroText(std::string_view text) {
    constexpr unsigned packedPiece = 0xB000;
    std::string piece;
    while (!text.empty()) {
        piece += '\0';  // the next eight bytes are themselves
        piece += text.substr(0, 8);
        text.remove_prefix(std::min<std::size_t>(text.size(), 8));
    }
    assert(piece.size() <= 4'096);
    std::string out = "\x01";
    RecordWriter(out).two(packedPiece | static_cast<unsigned>(piece.size() - 1)).text(piece);
    return out;
}

PackageResult makeMacroProject(const std::vector<std::string>& sheets, std::string& project) {
    std::vector<std::string> modules{std::string(workbookCodeName)};
    modules.insert(modules.end(), sheets.begin(), sheets.end());
    CompoundFile file;
    const std::size_t storage = file.addStorage(0, "VBA");
    std::string names;
    for (const std::string& module : modules) {
        const bool isWorkbook = module == workbookCodeName;
        file.addStream(storage, module,
                       packedMacroText(moduleText(module, isWorkbook ? workbookClass : sheetClass)));
        names += module + std::string(1, '\0') + wide(module) + std::string(2, '\0');
    }
    file.addStream(storage, "dir", packedMacroText(directory(modules)));
    // Nothing is compiled: programs compile the texts.
    file.addStream(storage, "_VBA_PROJECT", std::string("\xCC\x61\xFF\xFF\0\0\0", 7));
    file.addStream(0, "PROJECT", projectText(modules));
    file.addStream(0, "PROJECTwm", names + std::string(2, '\0'));
    project.clear();
    return file.write(gatherInto(project));
}

}  // namespace vexa::frontend
