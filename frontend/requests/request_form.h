// The form of a modification's text, as tables: the elements that have attributes, and what may begin behind
// an element. For the reader of modifications alone.
#pragma once

#include <span>
#include <string_view>

namespace vexa::frontend {

/// How the module writes the value of an attribute.
enum class ValueForm {
    word,     ///< a few ASCII characters: a flag, a number, a keyword
    escaped,  ///< a text with entities
    raw,      ///< a text as the user wrote it: it may hold quotes, `<` and `&`
    foreign   ///< a text with entities, in the back end's character set
};

struct AttributeForm {
    std::string_view name;
    ValueForm value = ValueForm::word;
};

struct ElementForm {
    std::string_view name;
    std::span<const AttributeForm> attributes;  ///< in the order in which they are written
    bool mayHold = false;                       ///< other elements
    bool anyOrder = false;                      ///< of the attributes
};

/// An element whose content is the XML of a file, whatever that holds.
struct FileForm {
    std::string_view name;  ///< of the element
    std::string_view endTag;
    std::string_view root;     ///< of the file
    std::string_view another;  ///< what stands behind the element unless its parent ends there; may be empty
    std::string_view parentEnd;
};

namespace form {

inline constexpr AttributeForm kRequestAttributes[] = {{"documentName", ValueForm::escaped}, {"debug"}};
inline constexpr ElementForm kRequest{"modifyOutputObject", kRequestAttributes, true};

/// The types in the order of `SelectedType`. The exceptions stand in the order that the user wrote.
inline constexpr AttributeForm kEventAttributes[] = {
    {"all"},    {"charts"},     {"headings"},   {"logs"},     {"notes"},          {"models"},
    {"tables"}, {"texts"},      {"trees"},      {"warnings"}, {"outlineheaders"}, {"unknown"},
    {"other"},  {"pagetitles"}, {"visibleOnly"}};
inline constexpr ElementForm kEvent{"modifyEvent", kEventAttributes, true, true};

inline constexpr AttributeForm kCommandAttributes[] = {
    {"commandName", ValueForm::raw}, {"last"}, {"instance"}};
inline constexpr ElementForm kCommand{"command", kCommandAttributes};

inline constexpr AttributeForm kSubtypeAttributes[] = {{"subtype", ValueForm::raw}};
inline constexpr ElementForm kSubtype{"subtype", kSubtypeAttributes};

/// The modes in the order of `LabelMatch`.
inline constexpr AttributeForm kLabelAttributes[] = {
    {"expression", ValueForm::raw}, {"exact"}, {"begins"}, {"ends"}, {"contains"}};
inline constexpr ElementForm kLabel{"label", kLabelAttributes};

inline constexpr AttributeForm kInstanceAttributes[] = {{"instance"}, {"last"}};
inline constexpr ElementForm kInstance{"instance", kInstanceAttributes};

inline constexpr AttributeForm kIndexAttributes[] = {{"type"}, {"indexStart"}};
inline constexpr ElementForm kIndex{"indexObject", kIndexAttributes};

inline constexpr ElementForm kDelete{"deleteObject", {}};

inline constexpr AttributeForm kGraphAttributes[] = {{"styleSheet", ValueForm::raw}};
inline constexpr ElementForm kGraph{"modifyGraph", kGraphAttributes, true};

inline constexpr AttributeForm kObjectAttributes[] = {{"visible"},       {"sizeWidth"},
                                                      {"sizeHeight"},    {"sizeWidthPCT"},
                                                      {"sizeHeightPCT"}, {"label", ValueForm::escaped}};
inline constexpr ElementForm kObject{"objectProperties", kObjectAttributes};

inline constexpr AttributeForm kTableAttributes[] = {{"title", ValueForm::escaped},
                                                     {"summary", ValueForm::escaped},
                                                     {"transpose"},
                                                     {"sortLabel", ValueForm::escaped},
                                                     {"sortPosition"},
                                                     {"ascending"},
                                                     {"format", ValueForm::raw},
                                                     {"defaultTableLook"}};
inline constexpr ElementForm kTable{"modifyTable", kTableAttributes, true};

/// Layer and category by label, or by number; the form of a category's label hangs on the layer's.
inline constexpr AttributeForm kNamedLayerAttributes[] = {
    {"layer", ValueForm::escaped}, {"category", ValueForm::escaped}, {"categoryInt"}};
inline constexpr ElementForm kNamedLayer{"layer", kNamedLayerAttributes};
inline constexpr AttributeForm kNumberedLayerAttributes[] = {
    {"layerInt"}, {"category", ValueForm::foreign}, {"categoryInt"}};
inline constexpr ElementForm kNumberedLayer{"layer", kNumberedLayerAttributes};

/// First the areas and statistics, in the order of `CellKind`.
inline constexpr AttributeForm kCellsAttributes[] = {{"correlation"},
                                                     {"count"},
                                                     {"mean"},
                                                     {"median"},
                                                     {"percent"},
                                                     {"residual"},
                                                     {"body"},
                                                     {"significance"},
                                                     {"headers"},
                                                     {"footnotes"},
                                                     {"title"},
                                                     {"caption"},
                                                     {"selectExpression", ValueForm::escaped},
                                                     {"selectPosition", ValueForm::escaped},
                                                     {"selectColumns"},
                                                     {"selectCondition", ValueForm::escaped},
                                                     {"revertToDefault"},
                                                     {"bold"},
                                                     {"underline"},
                                                     {"italic"},
                                                     {"columnWidth"},
                                                     {"fontSize"},
                                                     {"textRed"},
                                                     {"textGreen"},
                                                     {"textBlue"},
                                                     {"backgroundRed"},
                                                     {"backgroundGreen"},
                                                     {"backgroundBlue"},
                                                     {"applyTo"},
                                                     {"format", ValueForm::raw},
                                                     {"font", ValueForm::raw},
                                                     {"replaceValue"},
                                                     {"replace", ValueForm::raw}};
inline constexpr ElementForm kCells{"tableCells", kCellsAttributes};

inline constexpr AttributeForm kTextAttributes[] = {{"expression", ValueForm::escaped},
                                                    {"fontFamily", ValueForm::raw},
                                                    {"textRed"},
                                                    {"textGreen"},
                                                    {"textBlue"},
                                                    {"fontSize"},
                                                    {"fontBold"},
                                                    {"fontItalic"},
                                                    {"fontUnderline"}};
inline constexpr ElementForm kText{"modifyText", kTextAttributes};

/// What may stand behind an element within a group, or behind its start tag.
inline constexpr std::string_view kBeginnings[] = {
    "<command ",       "<subtype ",      "<label ",           "<instance ",   "<indexObject ",
    "<deleteObject/>", "<modifyGraph",   "<objectProperties", "<modifyTable", "<tableCells ",
    "<modifyText",     "</modifyEvent>", "<layer ",           "<tableLook>",  "<chartTemplate>"};

inline constexpr FileForm kTemplate{"chartTemplate", "</chartTemplate>", "template", "<chartTemplate>",
                                    "</modifyGraph>"};
inline constexpr FileForm kLook{"tableLook", "</tableLook>", "tableProperties", "", "</modifyTable>"};

}  // namespace form

}  // namespace vexa::frontend
