#include "backend/viewerxml/export_xml.h"

#include <gtest/gtest.h>

namespace {

TEST(ExportXml, WritesGlobalAndContentsAlways) {
    const vexa::ExportSpec spec;
    EXPECT_EQ(vexa::ExportXML::convertToXML(spec),
              "<exportSpecification><global/><contents/></exportSpecification>");
}

TEST(ExportXml, WritesOnlyFormatsThatArePresent) {
    vexa::ExportSpec spec;
    spec.doc().setPageBreaks(true);
    spec.doc().setPageSizeWidth(vexa::MEASUREMENT_TYPE::MM, 210, "210.0");
    spec.doc().setOptionPresent(true);
    spec.pdf().setEmbedFonts(true);
    EXPECT_EQ(vexa::ExportXML::convertToXML(spec),
              "<exportSpecification><global/><contents/><doc pageSizeWidth=\"210\" pageSizeWidthUnit=\"1\" "
              "pageSizeWidthText=\"210.0\" pageBreaks=\"true\"/></exportSpecification>");
}

TEST(ExportXml, EscapesWhatDoesNotComeEscaped) {
    vexa::ExportSpec spec;
    spec.global().setName("A &amp; B");
    spec.report().addURL("http://a/?b=1&c=\"2\"", "<c>\t\r\n");
    spec.report().setOptionPresent(true);
    EXPECT_EQ(vexa::ExportXML::convertToXML(spec),
              "<exportSpecification><global name=\"A &amp; B\"/><contents/><report>"
              "<url address=\"http://a/?b=1&amp;c=&quot;2&quot;\" label=\"&lt;c>&#x9;&#xD;&#xA;\"/></report>"
              "</exportSpecification>");
}

}  // namespace
