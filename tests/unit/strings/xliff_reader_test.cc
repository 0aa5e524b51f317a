#include "backend/strings/xliff_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "backend/strings/dictionary.h"
#include "tests/unit/strings/sample_tables.h"

namespace vexa {

void PrintTo(const keyValueGloss& entry, std::ostream* out) {
    *out << '{' << entry.key << " = " << entry.value << " | " << entry.gloss << '}';
}

namespace {

using std::string;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Entries = std::vector<keyValueGloss>;

Entries entriesOf(const string& bytes) {
    Entries entries = {{"from", "before", ""}};
    const FileResult result = readXliff(bytes, entries);
    EXPECT_TRUE(result) << result.reason;
    return entries;
}

TEST(XliffReader, ReadsUnitsInTheirOrder) {
    const Entries entries = entriesOf(tableOf(R"(
        <trans-unit id="b"><source>Two</source><target>Zwei</target><note>second</note></trans-unit>
        <group><group><trans-unit id="a"><source>One</source></trans-unit></group></group>
        <trans-unit id="b"><source>Two again</source></trans-unit>)"));
    EXPECT_THAT(entries, ElementsAre(keyValueGloss{"b", "Zwei", "second"}, keyValueGloss{"a", "One", ""},
                                     keyValueGloss{"b", "Two again", ""}));
}

TEST(XliffReader, TakesOfAUnitWhatCounts) {
    const struct {
        const char* inside;
        keyValueGloss entry;
    } cases[] = {
        {"", {"k", "", ""}},
        {"<source/>", {"k", "", ""}},
        {"<source>s</source>", {"k", "s", ""}},
        {"<source>s</source><target/>", {"k", "", ""}},
        {"<source>s</source><target></target>", {"k", "", ""}},
        {"<source>s</source><target> </target>", {"k", " ", ""}},
        {"<target>t</target>", {"k", "t", ""}},
        {"<target>t</target><source>s</source>", {"k", "t", ""}},
        {"<source>s</source><note>one</note><note>two</note>", {"k", "s", "one\ntwo"}},
        {"<source> a\n  b </source>", {"k", " a\n  b ", ""}},
        {"<source>a &lt;b&gt; &amp; &quot;c&quot; &#x41;&#66;</source>", {"k", "a <b> & \"c\" AB", ""}},
        {"<source><![CDATA[<b> & ]]>c</source>", {"k", "<b> & c", ""}},
        {"<source>a<!-- no -->b<?no no?>c</source>", {"k", "abc", ""}},
        {"<source>a<g id='1'>b<x id='2'/></g>c</source>", {"k", "abc", ""}},
        {"<source>a<note>b</note>c</source>", {"k", "abc", ""}},
        {"<source>s</source><alt-trans><source>x</source><target>y</target><note>z</note></alt-trans>",
         {"k", "s", ""}},
        {"<seg-source>x</seg-source><source>s</source>", {"k", "s", ""}},
        {"<source>s</source><o:target xmlns:o='other'>x</o:target>", {"k", "s", ""}},
        {"<source>M\u00e4rz \u8868 &#x1F600;</source>", {"k", "M\u00e4rz \u8868 \U0001F600", ""}},
    };
    for (const auto& one : cases) {
        const string unit = "<trans-unit id='k'>" + string(one.inside) + "</trans-unit>";
        EXPECT_THAT(entriesOf(tableOf(unit)), ElementsAre(one.entry)) << one.inside;
    }
}

TEST(XliffReader, NothingOfAUnitGoesToTheNext) {
    EXPECT_THAT(entriesOf(tableOf("<trans-unit id='a'><source>s</source><target>t</target><note>n</note>"
                                  "</trans-unit><trans-unit id='b'/>")),
                ElementsAre(keyValueGloss{"a", "t", "n"}, keyValueGloss{"b", "", ""}));
}

TEST(XliffReader, LeavesOutWhatIsNoUnitOfTheTable) {
    EXPECT_THAT(entriesOf(tableOf("<trans-unit><source>no id</source></trans-unit>")), IsEmpty());
    EXPECT_THAT(entriesOf(tableOf("<trans-unit id=''><source>empty id</source></trans-unit>")), IsEmpty());
    EXPECT_THAT(entriesOf(tableOf("<bin-unit id='a'><source>s</source></bin-unit>")), IsEmpty());
    EXPECT_THAT(entriesOf(tableOf("<other><trans-unit id='a'/></other>")), IsEmpty());
    EXPECT_THAT(entriesOf("<xliff/>"), IsEmpty());
    EXPECT_THAT(entriesOf("<xliff><trans-unit id='a'/></xliff>"), ElementsAre(keyValueGloss{"a", "", ""}));
}

TEST(XliffReader, ReadsTheEncodingThatTheFileNames) {
    const keyValueGloss march = {"k", "M\u00e4rz", ""};
    const string unit = "<trans-unit id='k'><source>M\xE4rz</source></trans-unit>";
    EXPECT_THAT(entriesOf(tableOf(unit, "ISO-8859-1")), ElementsAre(march));
    EXPECT_THAT(entriesOf(tableOf(unit, "windows-1252")), ElementsAre(march));
    const string utf8 = tableOf("<trans-unit id='k'><source>M\u00e4rz</source></trans-unit>");
    EXPECT_THAT(entriesOf("\xEF\xBB\xBF" + utf8), ElementsAre(march));
    string utf16 = "\xFF\xFE";
    for (const char c : string("<xliff><trans-unit id='k'><source>M\xE4rz</source></trans-unit></xliff>")) {
        utf16 += {c, '\0'};
    }
    EXPECT_THAT(entriesOf(utf16), ElementsAre(march));
}

TEST(XliffReader, RefusesBrokenAndHostileFiles) {
    const string unit = "<trans-unit id='k'><source>s</source></trans-unit>";
    string deep;
    for (int i = 0; i < 70; ++i) deep += "<group>";
    const struct {
        string bytes;
        const char* reason;
    } cases[] = {
        {"", "Line 1"},
        {"no XML", "Line 1"},
        {string(1000, '\0'), "Line 1"},
        {"<tables/>", "not an XLIFF"},
        {"<xliff xmlns='urn:other'/>", "not an XLIFF"},
        {"<x:xliff/>", "Line 1"},
        {tableOf(unit) + "more", "Line 7"},
        {tableOf(unit + "<source>"), "Line 6"},
        {tableOf(unit + "&nope;"), "nope"},
        {tableOf(unit + "\xFF\xFE"), "Line"},
        {tableOf(unit, "no-such-encoding"), "Line 1"},
        {tableOf(deep), "too deeply"},
        {"<!DOCTYPE xliff [<!ENTITY a 'x'>]><xliff>&a;</xliff>", "document type"},
        {"<!DOCTYPE xliff SYSTEM 'file:///etc/hostname'><xliff/>", "document type"},
        {"<!DOCTYPE xliff [<!ENTITY % a SYSTEM 'http://localhost:9/a'> %a;]><xliff/>", "document type"},
        {"<!DOCTYPE xliff><xliff>&a;</xliff>", "'a'"},
    };
    for (const auto& one : cases) {
        Entries entries = {{"from", "before", ""}};
        const FileResult result = readXliff(one.bytes, entries);
        EXPECT_FALSE(result) << one.bytes.substr(0, 80);
        EXPECT_THAT(shownReason(result), HasSubstr(one.reason)) << one.bytes.substr(0, 80);
        EXPECT_THAT(entries, IsEmpty());
    }
}

TEST(XliffReader, AFileCutAnywhereBeforeItsLastElementEndsIsRefused) {
    const string whole =
        tableOf("<trans-unit id='k'><source>M\u00e4rz &amp; \U0001F600</source></trans-unit>");
    for (std::size_t length = 0; length + 2 < whole.size(); ++length) {
        Entries entries;
        EXPECT_FALSE(readXliff(whole.substr(0, length), entries)) << length;
        EXPECT_THAT(entries, IsEmpty());
    }
    EXPECT_EQ(entriesOf(whole).size(), 1U);
}

}  // namespace
}  // namespace vexa
