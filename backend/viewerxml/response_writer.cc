#include "backend/viewerxml/response_writer.h"

#include <cstddef>
#include <string_view>
#include <vector>

#include "backend/viewerxml/response_names.h"
#include "backend/viewerxml/xml_writer.h"

namespace vexa {

namespace {

void begin(XmlWriter& writer, std::string_view element) {
    writer.writeMarkup("<");
    writer.writeMarkup(element);
}

void end(XmlWriter& writer, std::string_view element) {
    writer.writeMarkup("</");
    writer.writeMarkup(element);
    writer.writeMarkup(">");
}

void writeAttributes(const ExportResponse& response, XmlWriter& writer) {
    for (const ResponseAttribute& each : kResponseAttributes) {
        if (const auto* const truth = std::get_if<bool ExportResponse::*>(&each.member)) {
            writer.writeAttribute(each.name, response.*(*truth) ? "true" : "false", false);
        } else if (const auto* const text = std::get_if<std::string ExportResponse::*>(&each.member)) {
            if (!(response.*(*text)).empty()) writer.writeAttribute(each.name, response.*(*text), false);
        } else if (each.name != "imageCount" || response.imageCountPresent) {
            const int number = response.*std::get<int ExportResponse::*>(each.member);
            writer.writeAttribute(each.name, std::to_string(number), false);
        }
    }
}

void writeWarnings(std::size_t code, const std::vector<ExportResponse::Warning>& warnings,
                   XmlWriter& writer) {
    if (warnings.empty()) return;
    begin(writer, kResponseElements[1]);
    writer.writeAttribute(kWarningsCode, std::to_string(code), false);
    writer.writeMarkup(">");
    for (const ExportResponse::Warning& warning : warnings) {
        begin(writer, kResponseElements[2]);
        for (const WarningAttribute& each : kWarningAttributes) {
            writer.writeAttribute(each.name, warning.*each.member, false);
        }
        writer.writeMarkup("/>");
    }
    end(writer, kResponseElements[1]);
}

void write(const ExportResponse& response, XmlWriter& writer) {
    begin(writer, kResponseElements[0]);
    writeAttributes(response, writer);
    writer.writeMarkup(">");
    for (std::size_t code = 0; code < response.warnings.size(); ++code) {
        writeWarnings(code, response.warnings.at(code), writer);
    }
    end(writer, kResponseElements[0]);
}

}  // namespace

std::string writeExportResponse(const ExportResponse& response) {
    return writtenXml([&response](XmlWriter& writer) { write(response, writer); });
}

}  // namespace vexa
