#include "frontend/export/office/office_package.h"

#include <gtest/gtest.h>

#include "frontend/package/zip_reader.h"

namespace vexa::frontend {
namespace {

std::string sample() {
    std::string bytes;
    OfficePackage package(gatherInto(bytes), {"March & April", "de-DE"}, "/ppt/presentation.xml");
    EXPECT_EQ("rId1", package.relate("/ppt/presentation.xml", "slide", "/ppt/slides/slide1.xml"));
    EXPECT_EQ("rId2", package.relate("/ppt/presentation.xml", "theme", "/ppt/theme/theme1.xml"));
    EXPECT_EQ("rId1", package.relate("/ppt/presentation.xml", "slide", "/ppt/slides/slide1.xml"));
    const std::string picture = package.addPicture("picture", "png");
    EXPECT_EQ("/ppt/media/image1.png", picture);
    EXPECT_EQ(picture, package.addPicture("picture", "png"));
    EXPECT_EQ("/ppt/media/image2.svg", package.addPicture("<svg/>", "svg"));
    EXPECT_EQ("rId1", package.relate("/ppt/slides/slide1.xml", "image", picture));
    EXPECT_EQ("rId2", package.relateOutside("/ppt/slides/slide1.xml", "hyperlink", "https://a.b/?c&d"));
    EXPECT_TRUE(package.add("/ppt/slides/slide1.xml", "slide/type", "<slide/>"));
    EXPECT_TRUE(package.add("/ppt/presentation.xml", "main/type", "<presentation/>"));
    EXPECT_TRUE(package.finish());
    return bytes;
}

std::string entry(const std::string& bytes, const std::string& name) {
    ZipReader reader;
    EXPECT_TRUE(reader.open(bytes));
    std::string content;
    const std::optional<std::size_t> place = reader.find(name);
    return place && reader.read(*place, content) ? content : "(none)";
}

TEST(OfficePackage, NamesTheRelationsOfEachPart) {
    const std::string bytes = sample();
    const std::string begin =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<Relationships "
        "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    const std::string type = "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    EXPECT_EQ(begin + "<Relationship Id=\"rId1\" " + type +
                  "slide\" Target=\"slides/slide1.xml\"/><Relationship Id=\"rId2\" " + type +
                  "theme\" Target=\"theme/theme1.xml\"/></Relationships>",
              entry(bytes, "ppt/_rels/presentation.xml.rels"));
    EXPECT_EQ(begin + "<Relationship Id=\"rId1\" " + type +
                  "image\" Target=\"../media/image1.png\"/><Relationship Id=\"rId2\" " + type +
                  "hyperlink\" Target=\"https://a.b/?c&amp;d\" TargetMode=\"External\"/></Relationships>",
              entry(bytes, "ppt/slides/_rels/slide1.xml.rels"));
    EXPECT_NE(std::string::npos, entry(bytes, "_rels/.rels").find("Target=\"ppt/presentation.xml\""));
}

TEST(OfficePackage, ListsTheTypeOfEveryPart) {
    const std::string types = entry(sample(), "[Content_Types].xml");
    for (const char* const each :
         {"<Default Extension=\"png\" ContentType=\"image/png\"/>",
          "<Default Extension=\"svg\" ContentType=\"image/svg+xml\"/>",
          "<Override PartName=\"/ppt/slides/slide1.xml\" ContentType=\"slide/type\"/>",
          "<Override PartName=\"/ppt/presentation.xml\" ContentType=\"main/type\"/>",
          "<Override PartName=\"/docProps/core.xml\""}) {
        EXPECT_NE(std::string::npos, types.find(each)) << each << " in " << types;
    }
}

TEST(OfficePackage, SaysNameAndLanguageOfTheDocument) {
    const std::string core = entry(sample(), "docProps/core.xml");
    EXPECT_NE(std::string::npos, core.find("<dc:title>March &amp; April</dc:title>")) << core;
    EXPECT_NE(std::string::npos, core.find("<dc:language>de-DE</dc:language>")) << core;
}

TEST(OfficePackage, HoldsEqualPicturesOnce) {
    const std::string bytes = sample();
    EXPECT_EQ("picture", entry(bytes, "ppt/media/image1.png"));
    EXPECT_EQ("<svg/>", entry(bytes, "ppt/media/image2.svg"));
    EXPECT_EQ("(none)", entry(bytes, "ppt/media/image3.png"));
}

TEST(OfficePackage, GivesTheSameBytesForTheSameCalls) { EXPECT_EQ(sample(), sample()); }

TEST(OfficePackage, KeepsTheFirstFailure) {
    OfficePackage package([](std::string_view) { return PackageResult(PackageProblem::cannotWrite); }, {},
                          "/word/document.xml");
    static_cast<void>(package.add("/word/document.xml", "t", "<document/>"));
    EXPECT_EQ(PackageProblem::cannotWrite, package.finish().problem);
}

}  // namespace
}  // namespace vexa::frontend
