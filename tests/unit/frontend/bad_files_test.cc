// Files that are no documents, or not whole, or mean harm: each is refused with its reason, and nothing is
// opened.

#include <gtest/gtest.h>

#include "frontend/package/zip_writer.h"
#include "frontend/store/document_file.h"
#include "tests/unit/frontend/sample_documents.h"

namespace vexa::frontend {
namespace {

struct NamedText {
    std::string name;
    std::string text;
};

std::string zipOf(const std::vector<NamedText>& entries) {
    std::string bytes;
    ZipWriter archive(gatherInto(bytes));
    for (const NamedText& entry : entries) {
        EXPECT_TRUE(archive.add(entry.name, entry.text));
    }
    EXPECT_TRUE(archive.finish());
    return bytes;
}

const std::string emptyManifest = R"(<vexaDocument format="2" type="VXV"/>)";
const std::string oneText =
    R"(<vexaDocument format="2" type="VXV"><item type="text" entry="items/000001.xml"/></vexaDocument>)";

std::string fileWithManifest(const std::string& manifest) { return zipOf({{"manifest.xml", manifest}}); }
std::string fileWithItem(const std::string& type, const std::string& xml) {
    return zipOf({{"manifest.xml", R"(<vexaDocument format="2" type="VXV"><item type=")" + type +
                                       R"(" entry="items/000001.xml"/></vexaDocument>)"},
                  {"items/000001.xml", xml}});
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

// Puts a size in the place of what the last entry says of its unpacked bytes.
std::string withDeclaredSize(std::string bytes, std::uint32_t size) {
    const std::size_t central = bytes.rfind("PK\x01\x02");
    const std::size_t local = bytes.rfind("PK\x03\x04");
    for (int i = 0; i < 4; ++i) {
        const char byte = static_cast<char>(size >> (8U * static_cast<unsigned>(i)) & 0xFFU);
        bytes[central + 24 + static_cast<std::size_t>(i)] = byte;
        bytes[local + 22 + static_cast<std::size_t>(i)] = byte;
    }
    return bytes;
}

// Says of the last entry that it is compressed with another method.
std::string withMethod(std::string bytes, char method) {
    bytes[bytes.rfind("PK\x01\x02") + 10] = method;
    bytes[bytes.rfind("PK\x03\x04") + 8] = method;
    return bytes;
}

TEST(BadFiles, SmallestGoodOnesOpen) {
    EXPECT_NE(opened(fileWithManifest(emptyManifest)), nullptr);
    EXPECT_NE(opened(zipOf({{"manifest.xml", oneText}, {"items/000001.xml", "<text/>"}})), nullptr);
}

TEST(BadFiles, AreNoDocuments) {
    for (const std::string& bytes :
         {std::string(), std::string("x"), std::string(70000, 'P'), zipOf({{"a", "b"}})}) {
        EXPECT_EQ(problemOf(bytes).problem, StoreProblem::notADocument);
    }
}

TEST(BadFiles, WhoseManifestIsAnotherPrograms) {
    for (const char* manifest :
         {R"(<other format="2"/>)", "<other/>", "<a>", "<vexaDocuments/>",
          R"(<?xml version="1.0"?><!-- a comment --><o:manifest xmlns:o="o"><vexaDocument/></o:manifest>)"}) {
        EXPECT_EQ(problemOf(fileWithManifest(manifest)).problem, StoreProblem::notADocument) << manifest;
    }
}

TEST(BadFiles, WithAnotherCompression) {
    const std::string text = "<text>" + std::string(1000, 'x') + "</text>";
    const std::string bytes = zipOf({{"manifest.xml", oneText}, {"items/000001.xml", text}});
    EXPECT_TRUE(problemOf(withMethod(bytes, '\x08')));
    for (const int method : {1, 9, 12, 14, 93, 95}) {
        const StoreResult result = problemOf(withMethod(bytes, static_cast<char>(method)));
        EXPECT_EQ(result.problem, StoreProblem::otherCompression);
        EXPECT_EQ(result.detail, "method " + std::to_string(method));
    }
}

TEST(BadFiles, OfAnotherFormat) {
    const StoreResult newer =
        problemOf(fileWithManifest(R"(<vexaDocument format="3"><new/></vexaDocument>)"));
    EXPECT_EQ(newer.problem, StoreProblem::newerFormat);
    EXPECT_EQ(newer.detail, "3");
    for (
        const char* manifest :
        {R"(<vexaDocument format="0" type="VXV"/>)", R"(<vexaDocument type="VXV"/>)",
         R"(<vexaDocument format="2" type="DOC"/>)", "", "text", R"(<vexaDocument format="2" type="VXV">)",
         R"(<vexaDocument format="2" type="VXV"/><x/>)",
         R"(<vexaDocument format="2" type="VXV"><other/></vexaDocument>)",
         R"(<vexaDocument format="2" type="VXV" locked="maybe"/>)",
         R"(<vexaDocument format="2" type="VXV"><item type="chart" entry="items/000001.xml"/></vexaDocument>)",
         R"(<vexaDocument format="2" type="VXV"><item type="text"/></vexaDocument>)",
         R"(<vexaDocument format="2" type="VXV"><item type="text" entry="items/000001.xml"/></vexaDocument>)",
         R"(<!DOCTYPE x [<!ENTITY a "b">]><vexaDocument format="2" type="VXV" name="&a;"/>)"}) {
        EXPECT_EQ(problemOf(fileWithManifest(manifest)).problem, StoreProblem::damaged) << manifest;
    }
}

TEST(BadFiles, WithDeepNesting) {
    std::string deep = R"(<vexaDocument format="2" type="VXV">)";
    for (int i = 0; i < 100'000; ++i) {
        deep += R"(<item type="header">)";
    }
    EXPECT_EQ(problemOf(fileWithManifest(deep)).problem, StoreProblem::damaged);
    for (int i = 0; i < 100'000; ++i) {
        deep += "</item>";
    }
    EXPECT_EQ(problemOf(fileWithManifest(deep + "</vexaDocument>")).problem, StoreProblem::damaged);
}

TEST(BadFiles, WithNamesThatLeaveTheFolder) {
    for (const char* name : {"../x", "/etc/x", "a/../../x", "a\\..\\x", "C:x", "a//b", "./a", "a/"}) {
        // Our own writer would not take such a name.
        const std::string harmless(std::string_view(name).size(), 'q');
        std::string bytes = zipOf({{"manifest.xml", emptyManifest}, {harmless, "x"}});
        replaceAll(bytes, harmless, name);
        const StoreResult result = problemOf(bytes);
        EXPECT_EQ(result.problem, StoreProblem::unsafeName) << name;
        EXPECT_EQ(result.detail, name);
    }
    EXPECT_FALSE(isSafeEntryName(""));
    EXPECT_FALSE(isSafeEntryName(std::string(256, 'a')));
    EXPECT_TRUE(isSafeEntryName("items/000001.xml"));
    EXPECT_TRUE(isSafeEntryName("..a/b.."));
}

TEST(BadFiles, WithDoubledOrUnknownEntries) {
    std::string doubled =
        zipOf({{"manifest.xml", oneText}, {"items/000001.xml", "<text/>"}, {"items/000002.xml", "<text/>"}});
    EXPECT_EQ(problemOf(doubled).problem, StoreProblem::damaged);
    replaceAll(doubled, "items/000002.xml", "items/000001.xml");
    EXPECT_EQ(problemOf(doubled).problem, StoreProblem::damaged);
    EXPECT_EQ(problemOf(doubled).detail, "the archive");
}

TEST(BadFiles, ThatUnpackToGigabytes) {
    const std::string bytes =
        zipOf({{"manifest.xml", oneText}, {"items/000001.xml", std::string(1'000'000, ' ')}});
    EXPECT_EQ(problemOf(withDeclaredSize(bytes, 0x7FFFFFFF)).problem, StoreProblem::tooLarge);
    EXPECT_EQ(problemOf(withDeclaredSize(bytes, 100U << 20U)).problem, StoreProblem::tooLarge);
    // Holds more than it says.
    EXPECT_EQ(problemOf(withDeclaredSize(bytes, 1000)).problem, StoreProblem::damaged);
    EXPECT_EQ(problemOf(withDeclaredSize(bytes, 2'000'000)).problem, StoreProblem::damaged);
}

TEST(BadFiles, WithMoreXmlThanFits) {
    std::string tags = "<notes>";
    for (int i = 0; i < 4'000'000; ++i) {
        tags += "<line/>";
    }
    EXPECT_EQ(problemOf(fileWithItem("notes", tags + "</notes>")).problem, StoreProblem::tooLarge);
}

TEST(BadFiles, WithItemsThatContradictThemselves) {
    const std::string two = R"(<dimension><category label="a"/><category label="b"/></dimension>)";
    const auto table = [&](const std::string& more) {
        return R"(<table rows="0">)" + two + more + "</table>";
    };
    const std::vector<std::pair<std::string, std::string>> items = {
        {"text", "<log/>"},
        {"text", "<text><b/></text>"},
        {"text", "<text>\\</text>"},
        {"text", "<text><!-- comment --></text>"},
        {"text", R"(<text new="1"/>)"},
        {"text", R"(<text size="inf"/>)"},
        {"text", R"(<text color="red"/>)"},
        {"warning", R"(<warning level="x"/>)"},
        {"notes", "<notes><other/></notes>"},
        {"notes", "<notes>text</notes>"},
        {"table", table("<cells>1 2 3</cells>")},
        {"table", table("<cells>*3</cells>")},
        {"table", table("<cells>1  2</cells>")},
        {"table", table("<cells>1 </cells>")},
        {"table", table("<cells>1e</cells>")},
        {"table", table("<cells>#1</cells>")},
        {"table", table("<text>a</text><cells>#0</cells>")},
        {"table", table("<text>a</text><cells>#1:1</cells>")},
        {"table", table("<cells>1:1</cells>")},
        {"table", table(R"(<cells formats="F8.2 X">1</cells>)")},
        {"table", table("<cells>1!1</cells>")},
        {"table", table("<cells><c/></cells>")},
        {"table", table("<cells>1</cells><cells>1</cells>")},
        {"table", table("<cells>1</cells>" + two)},
        {"table", table("<other/>")},
        {"table", table("<cells>1 *1</cells>")},
        {"table", table("<cells>*0 1</cells>")},
        {"table", table("<cells>INF</cells>")},
        {"table", table("<cells>infinity</cells>")},
        {"table", table("<cells>nan(1)</cells>")},
        {"table", table(R"(<style/><area area="title" style="1"/><style bold="true"/>)")},
        {"table",
         table(R"(<style/><label dimension="0" category="1" style="1"/><area area="title" style="1"/>)")},
        {"table",
         table(R"(<style/><cellFormats formats="F8">0:1</cellFormats><cellStyles>0:1</cellStyles>)")},
        {"table", table(R"(<style/><area area="title" style="1"/><area area="title" style="1"/>)")},
        {"table", table(R"(<style/><area area="title"/>)")},
        {"table", table(R"(<style/><area style="1"/>)")},
        {"table", table(R"(<area area="title" style="0"/>)")},
        {"table", R"(<table rows="0" look="0"><dimension><category/></dimension></table>)"},
        {"table", R"(<table rows="0"><dimension><category/><group label="g"/></dimension></table>)"},
        {"text", "<text>\\5c</text>"},
        {"new", "no XML"},
        {"table", table(R"(<extras footnotes="1"/>)")},
        {"table", table(R"(<style size="x"/>)")},
        {"table", table(R"(<area area="data" style="1"/>)")},
        {"table", table(R"(<label dimension="1" category="0"/>)")},
        {"table", table(R"(<label dimension="0" category="2"/>)")},
        {"table", table(R"(<label dimension="0" group="0"/>)")},
        {"table", table("<style/><cellStyles>0:1 0:1</cellStyles>")},
        {"table", table("<style/><cellStyles>1+2:1</cellStyles>")},
        {"table", table("<style/><cellStyles>0:2</cellStyles>")},
        {"table", table(R"(<cellFormats formats="F8">0:2</cellFormats>)")},
        {"table", R"(<table rows="0"><dimension shown="2"><category/></dimension></table>)"},
        {"table", R"(<table rows="0"><dimension order="0 0"><category/><category/></dimension></table>)"},
        {"table", R"(<table rows="0"><dimension hidden="012"><category/><category/></dimension></table>)"},
        {"table", R"(<table rows="0"><dimension><group parent="0"/></dimension></table>)"},
        {"table", R"(<table rows="0"><dimension><category group="0"/></dimension></table>)"},
        {"table", R"(<table rows="0"><dimension><category role="sum"/></dimension></table>)"},
        {"table", "<table>" + two + "</table>"},
        {"table", R"(<table rows="0" columns="0">)" + two + "</table>"},
        {"table", R"(<table rows="1">)" + two + "</table>"},
        {"table", R"(<table look="1"/>)"},
        {"table", R"(<table minColumnWidth="wide"/>)"},
        {"grid", R"(<grid columns="2" headerRows="0" headerColumns="0"><c/></grid>)"},
        {"grid", R"(<grid columns="1" headerRows="2" headerColumns="0"><c/></grid>)"},
        {"grid", R"(<grid columns="1" headerRows="0" headerColumns="2"><c/></grid>)"},
        {"grid", R"(<grid columns="0" headerRows="0" headerColumns="0"><c/></grid>)"},
        {"grid", R"(<grid columns="1" headerRows="0" headerColumns="0"><c s="1"/></grid>)"},
    };
    EXPECT_NE(opened(fileWithItem("text", "<text>\\5C\\0A\\7F\\FF &amp;&lt;&#233;</text>")), nullptr);
    for (const char* manifest :
         {R"(<vexaDocument format="2" type="VXV" protected="false"/>)",
          R"(<vexaDocument format="2" type="VXV"><item type="header" needs="0"/></vexaDocument>)"}) {
        EXPECT_EQ(problemOf(fileWithManifest(manifest)).problem, StoreProblem::damaged) << manifest;
    }
    for (const auto& [type, xml] : items) {
        const StoreResult result = problemOf(fileWithItem(type, xml));
        EXPECT_EQ(result.problem, StoreProblem::damaged) << xml;
        EXPECT_TRUE(result.detail.starts_with("the entry items/000001.xml")) << xml;
    }
}

struct ObjectionCase {
    std::string bytes;
    const char* detail;
};

TEST(BadFiles, AreRefusedWithWhatWasFoundAndWhatWouldFit) {
    const auto plain = [](const std::string& attributes, const std::string& inside = "") {
        return fileWithManifest(R"(<vexaDocument format="2" type="VXV")" + attributes + ">" + inside +
                                "</vexaDocument>");
    };
    const auto sealed = [](const std::string& attributes) {
        return zipOf({{"manifest.xml", R"(<vexaDocument format="2" protected="true"><protection )" +
                                           attributes + "/></vexaDocument>"},
                      {"content", "x"}});
    };
    const std::string scheme = "scheme=\"" + std::string(protectionScheme) + "\" ";
    const std::string salt = R"( salt="AAAAAAAAAAAAAAAAAAAAAA")";
    const ObjectionCase cases[] = {
        {sealed(scheme + R"(operations="0" memory="67108864")" + salt),
         R"(the manifest's protection; found: <protection operations="0">; expected: 1 - 8)"},
        {sealed(scheme + R"(operations="many" memory="67108864")" + salt),
         R"(the manifest's protection; found: <protection operations="many">; expected: a whole number)"},
        {sealed(scheme + R"(operations="9" memory="67108864")" + salt),
         R"(the cost of the password's key; found: <protection operations="9">; expected: 1 - 8)"},
        {sealed(scheme + R"(operations="2" memory="0")" + salt),
         R"(the manifest's protection; found: <protection memory="0">; expected: 8192 - 268435456)"},
        {sealed(scheme + R"(operations="2" memory="8192" salt="AA")"),
         R"(the manifest's protection; found: <protection salt="AA">; expected: 16 bytes as base64url without padding)"},
        {sealed(R"(scheme="rot13" operations="2" memory="8192")" + salt),
         R"(the manifest's protection; found: <protection scheme="rot13">; expected: argon2id13+xchacha20poly1305-stream-65536)"},
        {sealed(scheme + R"(operations="2" memory="8192" pepper="1")" + salt),
         R"(the manifest's protection; found: <protection pepper="1">; expected: no attribute of that name)"},
        {fileWithManifest(R"(<vexaDocument format="0" type="VXV"/>)"),
         R"(the manifest's format version; found: <vexaDocument format="0">; expected: 2)"},
        {fileWithManifest(R"(<vexaDocument format="2" type="VXX"/>)"),
         R"(the manifest; found: <vexaDocument type="VXX">; expected: VXV | VXW)"},
        {plain(R"( locked="yes")"),
         R"(the manifest; found: <vexaDocument locked="yes">; expected: true or false)"},
        {plain("", "<thing/>"), "the manifest; found: <thing>; expected: <item>"},
        {plain("", R"(<item type="header" label="\5c"/>)"),
         R"(the manifest; found: <item label="\5c">; expected: two capital hexadecimal digits behind each backslash)"},
        {plain("", R"(<item type="text" entry="items/000002.xml"/>)"),
         R"(the manifest; found: <item entry="items/000002.xml">; expected: items/000001.xml)"},
        {fileWithItem("text", R"(<text color="red"/>)"),
         R"(the entry items/000001.xml; found: <text color="red">; expected: a color such as #00ff00)"},
        {fileWithItem("table", R"(<table rows="0"><dimension><category role="sum"/></dimension></table>)"),
         R"(the entry items/000001.xml; found: <category role="sum">; expected: )"},
        {fileWithItem("table", R"(<table rows="1"><dimension><category/></dimension></table>)"),
         R"(the entry items/000001.xml; found: <table rows="1">; expected: every dimension once in rows, columns and layers, from 0)"},
        {fileWithItem("table", R"(<table rows="0"><dimension shown="3"><category/></dimension></table>)"),
         R"(the entry items/000001.xml; found: <dimension shown="3">; expected: 1 - 1)"},
        {fileWithItem("table", R"(<table rows="0"><dimension hidden="2"><category/></dimension></table>)"),
         R"(the entry items/000001.xml; found: <dimension hidden="2">; expected: 0 | 1)"},
        {fileWithItem("table", R"(<table rows="0"><dimension order="1"><category/></dimension></table>)"),
         R"(the entry items/000001.xml; found: <dimension order="1">; expected: every category once, from 0)"},
        {fileWithItem("text", "<text>\n a<b</text>"),
         "the entry items/000001.xml; line 2, column 5: a broken tag"},
        {fileWithItem("text", "<text>a</text>b"),
         "the entry items/000001.xml; line 1, column 15: something besides the root element"},
        {fileWithManifest("<vexaDocument format=\"2\"\n type=\"VXV\"></vexaDocumen>"),
         "the manifest; line 2, column 13: "},
        {zipOf({{"items/000001.xml", "<text/>"}, {"manifest.xml", "<vexaDocument/>"}}),
         "the manifest; found: items/000001.xml; expected: manifest.xml"},
        {zipOf(
             {{"manifest.xml",
               R"(<vexaDocument format="2" type="VXV"><item type="text" entry="items/000001.xml"/></vexaDocument>)"},
              {"items/000002.xml", "<text/>"}}),
         "the entry items/000001.xml; found: items/000002.xml; expected: items/000001.xml"},
    };
    for (const ObjectionCase& each : cases) {
        const std::string detail = problemOf(each.bytes, "password").detail;
        EXPECT_TRUE(detail.starts_with(each.detail)) << detail << "\nin place of\n" << each.detail;
    }
}

// Not only how many there are counts, but what they take.
TEST(BadFiles, OfFewBytesThatWouldTakeVeryManyMore) {
    // One text that every cell shows.
    std::string many = R"(<table rows="0 1"><dimension>)";
    for (int i = 0; i < 1000; ++i) many += "<category/>";
    many += "</dimension><dimension>";
    for (int i = 0; i < 100; ++i) many += "<category/>";
    many += R"(</dimension><extras shown=")" + std::string(50'000, 'x') + R"("/><cells>1!1)";
    for (int i = 1; i < 100'000; ++i) many += " 1!1";
    EXPECT_EQ(problemOf(fileWithItem("table", many + "</cells></table>")).problem, StoreProblem::tooLarge);
    // A style for more places than there is memory for.
    std::string wide = R"(<table rows="0 1 2 3">)";
    for (int dimension = 0; dimension < 4; ++dimension) {
        wide += "<dimension>";
        for (int i = 0; i < 1000; ++i) wide += "<category/>";
        wide += "</dimension>";
    }
    wide += R"(<style bold="true"/><cellStyles>0+1000000000000:1</cellStyles></table>)";
    EXPECT_EQ(problemOf(fileWithItem("table", wide)).problem, StoreProblem::tooLarge);
}

TEST(BadFiles, WhoseEntriesStandOtherwiseThanTheManifestSays) {
    const std::string manifest =
        R"(<vexaDocument format="2" type="VXV"><item type="text" entry="items/000001.xml"/>)"
        R"(<item type="text" entry="items/000002.xml"/></vexaDocument>)";
    EXPECT_NE(
        opened(zipOf(
            {{"manifest.xml", manifest}, {"items/000001.xml", "<text/>"}, {"items/000002.xml", "<text/>"}})),
        nullptr);
    EXPECT_EQ(problemOf(zipOf({{"items/000001.xml", "<text/>"},
                               {"manifest.xml", manifest},
                               {"items/000002.xml", "<text/>"}}))
                  .problem,
              StoreProblem::damaged);
    EXPECT_EQ(problemOf(zipOf({{"manifest.xml", manifest},
                               {"items/000002.xml", "<text/>"},
                               {"items/000001.xml", "<text/>"}}))
                  .problem,
              StoreProblem::damaged);
}

TEST(BadFiles, ThatAskForTooMuchOfAPassword) {
    const std::string salt = R"(" salt="AAAAAAAAAAAAAAAAAAAAAA"/></vexaDocument>)";
    const auto manifest = [&](const std::string& operations, const std::string& memory) {
        return zipOf({{"manifest.xml", R"(<vexaDocument format="2" protected="true"><protection scheme=")" +
                                           std::string(protectionScheme) + R"(" operations=")" + operations +
                                           R"(" memory=")" + memory + salt},
                      {"content", "x"}});
    };
    EXPECT_EQ(problemOf(manifest("9", "8192"), "p").problem, StoreProblem::tooLarge);
    EXPECT_EQ(problemOf(manifest("1", "99999999999999"), "p").problem, StoreProblem::tooLarge);
    EXPECT_EQ(problemOf(manifest("1", "99999999999999999999"), "p").problem, StoreProblem::damaged);
    EXPECT_EQ(problemOf(manifest("1", "8192"), "p").problem, StoreProblem::damaged);
    EXPECT_EQ(problemOf(fileWithManifest(R"(<vexaDocument format="2" protected="true"/>)"), "p").problem,
              StoreProblem::damaged);
}

// A change that hits nothing that counts (a time, say) may still open, but then to the same document.
void expectSameOrRefused(const std::string& bytes, const ViewerDocument& document, const std::string& what) {
    std::unique_ptr<ViewerDocument> again;
    const StoreResult result = readDocument(bytes, "", again);
    ASSERT_EQ(again != nullptr, static_cast<bool>(result)) << what;
    if (again != nullptr) {
        EXPECT_TRUE(again->outline() == document.outline()) << what;
        EXPECT_EQ(again->name(), document.name()) << what;
    }
}

TEST(BadFiles, CutAtEveryLength) {
    const std::string bytes = saved(*makeEveryKind());
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const StoreResult result = problemOf(bytes.substr(0, length));
        EXPECT_FALSE(result) << length;
        EXPECT_EQ(result.problem, length < 4 ? StoreProblem::notADocument : StoreProblem::damaged) << length;
    }
}

TEST(BadFiles, ChangedInEveryByte) {
    const auto document = makeEveryKind();
    const std::string bytes = saved(*document);
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        for (const unsigned change : {0x01U, 0x80U, 0xFFU}) {
            std::string changed = bytes;
            changed[place] = static_cast<char>(static_cast<unsigned char>(changed[place]) ^ change);
            expectSameOrRefused(changed, *document, std::to_string(place) + " ^ " + std::to_string(change));
        }
    }
}

TEST(BadFiles, SealedContentChangedInEveryByte) {
    const Protection protection = makeProtection(cheapKey);
    std::string sealed;
    ASSERT_TRUE(seal(sampleForm, protection, "manifest", std::string(300, 'x'), sealed));
    for (std::size_t place = 0; place < sealed.size(); ++place) {
        std::string changed = sealed;
        changed[place] = static_cast<char>(changed[place] ^ 1);
        std::string plain;
        EXPECT_FALSE(unseal(sampleForm, protection, "manifest", changed, plain)) << place;
        EXPECT_TRUE(plain.empty());
    }
}

}  // namespace
}  // namespace vexa::frontend
