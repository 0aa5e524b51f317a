// Specifications that are read, written again, and refused.

#include "backend/viewerxml/export_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "backend/text/character_set.h"
#include "backend/viewerxml/export_names.h"
#include "backend/viewerxml/export_xml.h"
#include "tests/unit/viewerxml/whole_specification.h"

namespace {

using testing::HasSubstr;
using vexa::ExportAttributePart;
using vexa::ExportSetting;
using vexa::ExportSpec;
using vexa::ExportXML;
using vexa::ReadExportSpec;
using vexa::readExportSpec;
using vexa::SettingKind;

std::string again(const std::string& xml) {
    const ReadExportSpec read = readExportSpec(xml);
    EXPECT_EQ(read.error, "") << xml;
    return read.spec ? ExportXML::convertToXML(*read.spec) : read.error;
}

TEST(ReadExportSpec, ReadsEverySetting) {
    const std::string everything = vexa::testing::kEverything;
    EXPECT_EQ(again(everything), everything);
    const ReadExportSpec read = readExportSpec(everything);
    for (const vexa::ExportFormat* const format : vexa::exportFormatsOf(*read.spec)) {
        EXPECT_TRUE(format->isOptionPresent());
    }
    EXPECT_EQ(read.spec->report().urls().size(), 2U);
}

TEST(ReadExportSpec, MarksWhatIsThere) {
    const ReadExportSpec read = readExportSpec(
        "<exportSpecification><global printOption=\"2\"/><contents/><png "
        "depth=\"3\"/></exportSpecification>");
    ASSERT_TRUE(read.spec);
    EXPECT_EQ(read.spec->global().getPrintOption(), vexa::ExportGlobalSpec::PRINT_OPTION::ERRORS);
    EXPECT_TRUE(read.spec->png().isOptionPresent());
    EXPECT_FALSE(read.spec->doc().isOptionPresent());
    ASSERT_EQ(read.spec->png().attributes().size(), 1U);
    EXPECT_EQ(read.spec->png().attributes().front().text, "3");
}

TEST(ReadExportSpec, ReadsTextsIntoTheCharacterSetOfTheBackEnd) {
    const std::string xml =
        "<exportSpecification><global name=\"\xC3\xA9 &amp; &quot;\"/><contents/>"
        "<report documentFile=\"\xC3\xA9\"><url address=\"&amp;\" "
        "label=\"\xC3\xA9\"/></report></exportSpecification>";
    vexa::installCharacterSet(vexa::CharacterSet::find("windows-1252"));
    const ReadExportSpec read = readExportSpec(xml);
    EXPECT_EQ(again(xml), xml);
    vexa::installCharacterSet(nullptr);
    ASSERT_TRUE(read.spec);
    EXPECT_EQ(read.spec->global().attributes().front().text, "\xE9 &amp; &quot;");
    EXPECT_EQ(read.spec->report().urls().front().label, "\xE9");
    EXPECT_EQ(read.spec->report().urls().front().address, "&");
}

struct Refused {
    const char* inRoot;
    const char* message;
};

class RefusedSpecs : public testing::TestWithParam<Refused> {};

TEST_P(RefusedSpecs, SayWhatIsWrongAndWhere) {
    const std::string text =
        std::string("<exportSpecification>") + GetParam().inRoot + "</exportSpecification>";
    const ReadExportSpec read = readExportSpec(text);
    EXPECT_EQ(read.spec, nullptr) << text;
    EXPECT_THAT(read.error, HasSubstr(GetParam().message));
    EXPECT_THAT(read.error, HasSubstr("Line 1, column "));
}

INSTANTIATE_TEST_SUITE_P(
    Form, RefusedSpecs,
    testing::Values(
        Refused{"", "The element exportSpecification lacks the element \"global\""},
        Refused{"<global/>", "The element exportSpecification lacks the element \"contents\""},
        Refused{"<contents/><global/>", "The element \"contents\" is not allowed here"},
        Refused{"<global/><contents/><html/><doc/>", "The element \"doc\" is not allowed here"},
        Refused{"<global/><contents/><doc/><doc/>", "The element \"doc\" is not allowed here"},
        Refused{"<global/><contents/><svg/>", "The element \"svg\" is not allowed here"},
        Refused{"<global/><contents/><doc><url/></doc>", "The element \"url\" is not allowed in doc"},
        Refused{"<global/><contents/><report><link/></report>",
                "The element \"link\" is not allowed in report"},
        Refused{"<global/><contents/><report><url address=\"a\" label=\"b\"><a/></url></report>",
                "The element \"a\" is not allowed in url"},
        Refused{"<global/><contents/><report><url address=\"a\"/></report>",
                "The element url lacks the attribute \"label\""},
        Refused{"<global/><contents/><report><url label=\"a\"/></report>",
                "The element url lacks the attribute \"address\""},
        Refused{"<global/><contents/><report><url label=\"a\" x=\"\"/></report>",
                "The element url has no attribute \"x\""},
        Refused{"<global depth=\"1\"/><contents/>", "The element global has no attribute \"depth\""},
        Refused{"<global/><contents/><doc depth=\"1\"/>", "The element doc has no attribute \"depth\""},
        Refused{"<global/><contents/><doc topMarginAutofit=\"true\"/>", "no attribute \"topMarginAutofit\""},
        Refused{"<global/>text<contents/>", "There is text between the elements"},
        Refused{"<global/><contents/><doc/", ""}));

INSTANTIATE_TEST_SUITE_P(
    Values, RefusedSpecs,
    testing::Values(
        Refused{"<global printOption=\"3\"/><contents/>",
                "\"printOption\" is not a whole number from 0 to 2 but \"3\""},
        Refused{"<global printOption=\"-1\"/><contents/>", "from 0 to 2 but \"-1\""},
        Refused{"<global printOption=\" 1\"/><contents/>", "from 0 to 2 but \" 1\""},
        Refused{"<global printOption=\"x\"/><contents/>", "\"printOption\" is not a whole number but \"x\""},
        Refused{"<global/><contents/><doc pageBreaks=\"1\"/>",
                "\"pageBreaks\" is neither true nor false but \"1\""},
        Refused{"<global/><contents/><doc topMargin=\"1\" topMarginUnit=\"0\"/>",
                "The element doc lacks the attribute \"topMarginText\""},
        Refused{"<global/><contents/><doc topMarginText=\"1\"/>", "lacks the attribute \"topMargin\""},
        Refused{"<global/><contents/><doc topMargin=\"1\" topMarginUnit=\"2\" topMarginText=\"1\"/>",
                "\"topMarginUnit\" is not a whole number from 0 to 1"},
        Refused{"<global/><contents/><doc topMargin=\"a\" topMarginUnit=\"0\" topMarginText=\"1\"/>",
                "\"topMargin\" is not a number above 0 but \"a\""},
        Refused{"<global/><contents/><png percentSize=\"inf\" percentSizeText=\"\"/>",
                "\"percentSize\" is not a number above 0 but \"inf\""},
        Refused{"<global/><contents/><png percentSize=\"0\" percentSizeText=\"0\"/>",
                "\"percentSize\" is not a number above 0 but \"0\""},
        Refused{"<global/><contents/><png percentSize=\"1\"/>", "lacks the attribute \"percentSizeText\""},
        Refused{
            "<global/><contents/><text columnWidth=\"-1\" columnWidthText=\"\" columnWidthAutofit=\"true\"/>",
            "\"columnWidth\" is below 0"},
        Refused{
            "<global/><contents/><text columnWidth=\"1\" columnWidthText=\"1\" columnWidthAutofit=\"0\"/>",
            "\"columnWidthAutofit\" is neither"}));

TEST(ReadExportSpec, RefusesWhatIsNoSpecification) {
    EXPECT_THAT(readExportSpec("").error, HasSubstr("Line 1, column 1"));
    EXPECT_THAT(readExportSpec("<exportResponse success=\"true\"/>").error,
                HasSubstr("The export is not an exportSpecification but \"exportResponse\""));
    EXPECT_THAT(readExportSpec("<exportSpecification a=\"\"/>").error,
                HasSubstr("The element exportSpecification has no attribute \"a\""));
    EXPECT_THAT(readExportSpec("<!DOCTYPE exportSpecification><exportSpecification/>").error,
                HasSubstr("There is a document type declaration"));
    EXPECT_THAT(readExportSpec(std::string("<exportSpecification/>\0", 23)).error,
                HasSubstr("There is a zero byte"));
    EXPECT_EQ(readExportSpec(std::string((std::size_t{16} << 20) + 1, ' ')).error,
              "The export is longer than 16 MiB");
}

/// Random settings out of the table of names, as XML.
class SpecDraw {
  public:
    explicit SpecDraw(std::uint32_t seed) : random_(seed) {}

    std::string draw() {
        const auto& elements = vexa::exportElements();
        std::string xml = "<exportSpecification>";
        for (std::size_t i = 0; i < elements.size(); ++i) {
            if (i < 2 || below(3) == 0) xml += element(elements.at(i));
        }
        return xml + "</exportSpecification>";
    }

  private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

    std::string element(const vexa::ExportElementForm& form) {
        std::string xml = "<" + std::string(form.name);
        for (const ExportSetting setting : form.settings) {
            if (below(2) == 0) xml += attributes(vexa::formOf(setting));
        }
        std::string urls;
        for (unsigned count = form.hasUrls ? below(3) : 0; count > 0; --count) {
            urls += "<url address=\"" + text(false) + "\" label=\"" + text(false) + "\"/>";
        }
        return urls.empty() ? xml + "/>" : xml + ">" + urls + "</" + std::string(form.name) + ">";
    }

    std::string attributes(const vexa::SettingForm& form) {
        std::string xml;
        for (const ExportAttributePart part : vexa::partsOf(form.kind)) {
            xml.append(" ").append(form.name).append(vexa::endingOf(part)).append("=\"");
            xml.append(value(form, part)).append("\"");
        }
        return xml;
    }

    std::string value(const vexa::SettingForm& form, ExportAttributePart part) {
        const char* const flags[] = {"true", "false"};
        const char* const numbers[] = {"25.4", "210", "0.01", "1e+20", "3", "0.1"};
        if (part == ExportAttributePart::unit || form.kind == SettingKind::choice) {
            return std::to_string(below(static_cast<unsigned>(form.choices)));
        }
        if (part == ExportAttributePart::autofit || form.kind == SettingKind::flag) return flags[below(2)];
        if (part == ExportAttributePart::text || form.kind == SettingKind::text) return text(false);
        if (form.kind == SettingKind::columnWidth) return std::to_string(below(2'000'000'000));
        return form.kind == SettingKind::escapedText ? text(true) : numbers[below(6)];
    }

    /// As XML has it; an apostrophe is escaped only by those who escape themselves.
    std::string text(bool escaped) {
        const char* const pieces[] = {"a",    " ",      "\xC3\xA9",         "\\", "&amp;",
                                      "&lt;", "&quot;", "\xF0\x9F\x98\x80", "."};
        std::string result;
        for (unsigned count = below(5); count > 0; --count) result += pieces[below(9)];
        if (below(3) == 0) result += escaped ? "&apos;&gt;" : "'>&#x9;";
        return result;
    }

    std::mt19937 random_;
};

TEST(ReadExportSpec, ReadsRandomSpecifications) {
    for (std::uint32_t seed = 1; seed <= 1000; ++seed) {
        const std::string xml = SpecDraw(seed).draw();
        const std::string written = again(xml);
        // The writer's forms of a tab and of an unescaped `>`.
        ASSERT_EQ(again(written), written) << seed;
        if (xml.find("'>") == std::string::npos) {
            ASSERT_EQ(written, xml) << seed;
        }
    }
}

}  // namespace
