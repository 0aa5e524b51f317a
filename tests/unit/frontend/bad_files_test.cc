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

const std::string emptyManifest = R"(<vexaDocument format="1" type="VXV"/>)";
const std::string oneText =
    R"(<vexaDocument format="1" type="VXV"><item kind="text" entry="items/000001.xml"/></vexaDocument>)";

std::string fileWithManifest(const std::string& manifest) { return zipOf({{"manifest.xml", manifest}}); }
std::string fileWithItem(const std::string& kind, const std::string& xml) {
    return zipOf({{"manifest.xml", R"(<vexaDocument format="1" type="VXV"><item kind=")" + kind +
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
         {R"(<other format="1"/>)", "<other/>", "<a>", "<vexaDocuments/>",
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
        problemOf(fileWithManifest(R"(<vexaDocument format="2"><new/></vexaDocument>)"));
    EXPECT_EQ(newer.problem, StoreProblem::newerFormat);
    EXPECT_EQ(newer.detail, "2");
    for (
        const char* manifest :
        {R"(<vexaDocument format="0" type="VXV"/>)", R"(<vexaDocument type="VXV"/>)",
         R"(<vexaDocument format="1" type="DOC"/>)", "", "text", R"(<vexaDocument format="1" type="VXV">)",
         R"(<vexaDocument format="1" type="VXV"/><x/>)",
         R"(<vexaDocument format="1" type="VXV"><other/></vexaDocument>)",
         R"(<vexaDocument format="1" type="VXV" locked="maybe"/>)",
         R"(<vexaDocument format="1" type="VXV"><item kind="chart" entry="items/000001.xml"/></vexaDocument>)",
         R"(<vexaDocument format="1" type="VXV"><item kind="text"/></vexaDocument>)",
         R"(<vexaDocument format="1" type="VXV"><item kind="text" entry="items/000001.xml"/></vexaDocument>)",
         R"(<!DOCTYPE x [<!ENTITY a "b">]><vexaDocument format="1" type="VXV" name="&a;"/>)"}) {
        EXPECT_EQ(problemOf(fileWithManifest(manifest)).problem, StoreProblem::damaged) << manifest;
    }
}

TEST(BadFiles, WithDeepNesting) {
    std::string deep = R"(<vexaDocument format="1" type="VXV">)";
    for (int i = 0; i < 100'000; ++i) {
        deep += R"(<item kind="heading">)";
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
    const std::string dimension =
        R"(<dimension kind="0" position="0 0 0 0"><category label="a"/><category label="b"/></dimension>)";
    const std::vector<std::pair<std::string, std::string>> items = {
        {"text", "<message/>"},
        {"text", "<text><b/></text>"},
        {"text", "<text>\\</text>"},
        {"text", "<text><!-- comment --></text>"},
        {"message", R"(<message level="x"/>)"},
        {"notes", "<notes><other/></notes>"},
        {"table", "<table>" + dimension + R"(<c p="2">x</c></table>)"},
        {"table", "<table>" + dimension + R"(<c p="-1">x</c></table>)"},
        {"table", "<table>" + dimension + R"(<c p="1">x</c><c p="1">x</c></table>)"},
        {"table", "<table>" + dimension + R"(<c x="1">x</c></table>)"},
        {"table", "<table>" + dimension + R"(<c n="1e">x</c></table>)"},
        {"table", "<table>" + dimension + "<c/>" + dimension + "</table>"},
        {"table", R"(<table><dimension kind="0" position="0 0 0"/></table>)"},
        {"table", R"(<table><dimension kind="0" position="0 0 0 0"><group parent="0"/></dimension></table>)"},
        {"table",
         R"(<table><dimension kind="0" position="0 0 0 0"><category group="0"/></dimension></table>)"},
        {"table", R"(<table minDataColumnWidth="99999999999"/>)"},
        {"flatTable", R"(<flatTable columns="2" headerRows="0" headerColumns="0"><c/></flatTable>)"},
        {"flatTable", R"(<flatTable columns="1" headerRows="2" headerColumns="0"><c/></flatTable>)"},
        {"flatTable", R"(<flatTable columns="1" headerRows="0" headerColumns="2"><c/></flatTable>)"},
        {"flatTable", R"(<flatTable columns="0" headerRows="0" headerColumns="0"><c/></flatTable>)"},
    };
    for (const auto& [kind, xml] : items) {
        const StoreResult result = problemOf(fileWithItem(kind, xml));
        EXPECT_EQ(result.problem, StoreProblem::damaged) << xml;
        EXPECT_EQ(result.detail, "the entry items/000001.xml") << xml;
    }
}

TEST(BadFiles, ThatAskForTooMuchOfAPassword) {
    const std::string salt = R"(" salt="AAAAAAAAAAAAAAAAAAAAAA"/></vexaDocument>)";
    const auto manifest = [&](const std::string& operations, const std::string& memory) {
        return zipOf({{"manifest.xml", R"(<vexaDocument format="1" protected="true"><protection scheme=")" +
                                           std::string(protectionScheme) + R"(" operations=")" + operations +
                                           R"(" memory=")" + memory + salt},
                      {"content", "x"}});
    };
    EXPECT_EQ(problemOf(manifest("9", "8192"), "p").problem, StoreProblem::tooLarge);
    EXPECT_EQ(problemOf(manifest("1", "99999999999999"), "p").problem, StoreProblem::tooLarge);
    EXPECT_EQ(problemOf(manifest("1", "99999999999999999999"), "p").problem, StoreProblem::damaged);
    EXPECT_EQ(problemOf(manifest("1", "8192"), "p").problem, StoreProblem::damaged);
    EXPECT_EQ(problemOf(fileWithManifest(R"(<vexaDocument format="1" protected="true"/>)"), "p").problem,
              StoreProblem::damaged);
}

// A change that hits nothing that counts (a time, say) may still open, but then to the same document.
void expectSameOrRefused(const std::string& bytes, const ViewerDocument& document, const std::string& what) {
    std::unique_ptr<ViewerDocument> again;
    const StoreResult result = readDocument(bytes, "", again);
    ASSERT_EQ(again != nullptr, static_cast<bool>(result)) << what;
    if (again != nullptr) {
        EXPECT_EQ(again->items(), document.items()) << what;
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
