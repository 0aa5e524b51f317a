// The styles of a workbook, to which those of a sheet are added: behind the ones that are there, which keep
// their numbers, and each only where no equal one is.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/workbook/sheet_content.h"
#include "frontend/export/xlsx/package_xml.h"

namespace vexa::frontend {

class StyleTable {
  public:
    /// The XML of the part.
    PackageResult parse(std::string xml);
    /// The numbers that cells name the styles by, in their order. False where there is no room for them.
    [[nodiscard]] bool add(const std::vector<SheetStyle>& styles, std::vector<std::size_t>& numbers);
    [[nodiscard]] std::string text() const { return xml_.text(); }

  private:
    /// One of the lists: fonts, fills, borders, ...
    struct List {
        pugi::xml_node node;
        std::size_t count = 0;
        std::map<std::string, std::size_t, std::less<>> known;  ///< number by XML
    };
    List& list(const char* name);
    std::size_t intern(const char* name, const std::string& element);
    std::size_t numberFormat(const std::string& code);
    void loadNumberFormats();

    PackageXml xml_;
    std::map<std::string, List, std::less<>> lists_;
    std::map<std::string, std::size_t, std::less<>> formats_;  ///< id by code
    std::size_t nextFormat_ = 0;
};

/// The part of a workbook without any styles of its own.
[[nodiscard]] std::string_view plainStyles();

/// The properties of a font in the order in which Office Open XML lists them. `nameElement` is "name" in the
/// list of fonts and "rFont" in a text; `extra` stands among them.
[[nodiscard]] std::string fontProperties(const SheetStyle& style, std::string_view nameElement,
                                         std::string_view extra = {});

}  // namespace vexa::frontend
