// Where lines of text end.
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

#include "backend/text/line_breaks.h"
#include "backend/text/text_width.h"

namespace vexa {
namespace {

using std::string;
using Lines = std::vector<string>;

struct WrapCase {
    string text;
    std::size_t width;
    Lines lines;
};

void expectLines(const std::vector<WrapCase>& cases) {
    for (const WrapCase& each : cases) {
        EXPECT_EQ(wrapText(each.text, each.width), each.lines) << each.text << ' ' << each.width;
    }
}

TEST(WrapText, BreaksAtLineEndsThenAtBlanksThenInsideWords) {
    expectLines({
        {"", 10, {""}},
        {"one two", 10, {"one two"}},
        {"one two three", 7, {"one two", "three"}},
        {"one two three", 8, {"one two", "three"}},
        {"one  two", 5, {"one", "two"}},
        {"  one two", 6, {"  one", "two"}},
        {"one two  ", 7, {"one two"}},
        {"abcdefgh", 3, {"abc", "def", "gh"}},
        {"  abcdefgh", 4, {"  ab", "cdef", "gh"}},
        {"      abc", 4, {"abc"}},
        {"a bcdefg hi", 4, {"a", "bcde", "fg", "hi"}},
        {"a\nb\r\nc\rd", 10, {"a", "b", "c", "d"}},
        {"a\n\nb\n", 10, {"a", "", "b", ""}},
        {"ab", 0, {"a", "b"}},
        {"     ", 3, {""}},
    });
}

TEST(WrapText, MeasuresWideAndCombiningCharacters) {
    expectLines({
        {"漢字語", 4, {"漢字", "語"}},
        {"漢字", 3, {"漢", "字"}},
        {"漢字", 1, {"漢", "字"}},
        {"e\u0301e\u0301", 1, {"e\u0301", "e\u0301"}},
        {"漢\u3099字", 2, {"漢\u3099", "字"}},
        {"x 漢字", 4, {"x 漢", "字"}},
    });
}

TEST(WrapText, BreaksJapaneseBetweenCharactersButNotBeforeWhatClosesOrGoesOn) {
    expectLines({
        {"出力を保存する", 6, {"出力を", "保存す", "る"}},
        {"文書です。次", 8, {"文書で", "す。次"}},  // the full stop takes its character along
        {"文書、名前", 4, {"文", "書、", "名前"}},
        {"（名前なし）", 10, {"（名前な", "し）"}},
        {"値（名前）", 4, {"値", "（名", "前）"}},
        {"値「名前」", 4, {"値", "「名", "前」"}},
        {"データー", 6, {"デー", "ター"}},
        {"データベース", 8, {"データ", "ベース"}},
        {"を待って", 4, {"を", "待っ", "て"}},
        {"キャッシュ", 6, {"キャッ", "シュ"}},
        {"漢々字", 2, {"漢", "々", "字"}},  // nothing else fits
        {"人々の", 4, {"人々", "の"}},
        {"は人々", 4, {"は", "人々"}},
        {"か？！次", 6, {"か？！", "次"}},
        {"本・雑誌", 4, {"本・", "雑誌"}},
        {"約３０％増", 6, {"約３", "０％増"}},
        {"ﾃﾞｰﾀ", 3, {"ﾃﾞｰ", "ﾀ"}},
    });
}

TEST(WrapText, BreaksChineseBetweenCharactersButNotAroundPunctuation) {
    expectLines({
        {"输出文档已保存。", 6, {"输出文", "档已保", "存。"}},
        {"输出文档，名称", 8, {"输出文", "档，名称"}},
        {"名称“文档”错误", 5, {"名称", "“文", "档”错", "误"}},
        {"文件《手册》中", 6, {"文件", "《手", "册》中"}},
        {"稍候……完成", 5, {"稍", "候……", "完成"}},
        {"稍候……完成", 8, {"稍候……完", "成"}},
        {"甲——乙", 4, {"甲——", "乙"}},
        {"關閉文件；儲存", 8, {"關閉文", "件；儲存"}},
    });
}

TEST(WrapText, BreaksKoreanAtBlanks) {
    expectLines({
        {"출력 문서를 저장합니다.", 12, {"출력 문서를", "저장합니다."}},
        {"^1은(는) 올바른", 12, {"^1은(는)", "올바른"}},
        {"PowerPoint가 설치", 14, {"PowerPoint가", "설치"}},
        {"OUTPUT를", 7, {"OUTPUT", "를"}},  // longer than the line
        {"저장합니다", 4, {"저장", "합니", "다"}},
        {"\u1112\u1161\u11ab\u1100\u1173\u11af 가", 5, {"\u1112\u1161\u11ab\u1100\u1173\u11af", "가"}},
    });
}

TEST(WrapText, KeepsWordsCommandsAndMarkersWholeBesideWideCharacters) {
    expectLines({
        {"形式でPowerPointを使う", 10, {"形式で", "PowerPoint", "を使う"}},
        {"次のOUTPUT NEWを実行", 12, {"次のOUTPUT", "NEWを実行"}},
        {"出力できません：^1", 14, {"出力できませ", "ん：^1"}},
        {"出力できません：^12", 17, {"出力できません：", "^12"}},
        {"値^1が^2の", 5, {"値^1", "が^2", "の"}},
        {"拡張(EMF)形式", 9, {"拡張(EMF)", "形式"}},
        {"拡張(EMF)形式", 8, {"拡張", "(EMF)形", "式"}},
        {"位置に\"NAEM\"が", 8, {"位置に", "\"NAEM\"が"}},
        {"位置に\"NAEM\"が", 7, {"位置に", "\"NAEM\"", "が"}},
        {"終わります。\"help\"で", 14, {"終わります。", "\"help\"で"}},
        {"\"終わり。\"次", 9, {"\"終わ", "り。\"次"}},
        {"位置に'NAEM'が", 8, {"位置", "に'NAEM'", "が"}},
        {"はFILE。", 6, {"は", "FILE。"}},
        {"はFILES。", 6, {"は", "FILE", "S。"}},  // neither fits whole
        {"実行：INSERT FILE='more.vxs'。", 20, {"実行：INSERT", "FILE='more.vxs'。"}},
        {"abcde^1", 6, {"abcde", "^1"}},
    });
}

TEST(WrapText, BreaksBehindWhatClosesInGermanAndOpensElsewhere) {
    expectLines({
        {"Den Befehl „NEWW“ gibt es", 17, {"Den Befehl „NEWW“", "gibt es"}},
        {"Den Befehl „NEWW“ gibt es", 14, {"Den Befehl", "„NEWW“ gibt es"}},
        {"mit „^1“: „x“.", 9, {"mit „^1“:", "„x“."}},
        {"número “NEWW” é", 10, {"número", "“NEWW” é"}},
    });
}

TEST(WrapText, NeverBreaksAtNoBreakSpaces) {
    const string words = "un deux\u00a0:";
    expectLines({
        {words, 8, {"un", "deux\u00a0:"}},
        {"un 10\u202f000", 7, {"un", "10\u202f000"}},
        {"漢\u00a0字語", 5, {"漢\u00a0字", "語"}},
        {"語漢\u2060字", 4, {"語", "漢\u2060字"}},
        {"deux\u00a0:", 5, {"deu", "x\u00a0:"}},  // longer than the line
        {"語\U0001F469\u200d\U0001F4BB", 4, {"語", "\U0001F469\u200d\U0001F4BB"}},
        {"abcd\u200befgh", 6, {"abcd\u200b", "efgh"}},  // but a space without width is a break
    });
}

TEST(WrapText, KeepsPunctuationThatStandsAloneWithItsWord) {
    expectLines({
        {"un deux : trois", 7, {"un", "deux :", "trois"}},
        {"un « deux » trois", 9, {"un", "« deux »", "trois"}},
        {"one ... two", 6, {"one", "...", "two"}},  // no word is cut for it
        {"an one ... two", 7, {"an", "one ...", "two"}},
        {"a name )DATE", 7, {"a name", ")DATE"}},  // a word of its own
        {"слово — другое", 8, {"слово —", "другое"}},
        {"sevench :", 7, {"sevench", ":"}},
        {"漢字 。語", 6, {"漢", "字 。", "語"}},
    });
}

TEST(WrapText, BreaksLongPathsBehindTheirSeparators) {
    expectLines({
        {"in c:\\work\\march.vxv", 12, {"in", "c:\\work\\", "march.vxv"}},
        {"https://example.org/a", 10, {"https://", "example.or", "g/a"}},
        {"/subcommand", 8, {"/subcomm", "and"}},
        {"a /PDF/PNG", 8, {"a", "/PDF/PNG"}},
        {"文書c:/work/march", 8, {"文書", "c:/work/", "march"}},
    });
}

TEST(WrapText, NoLineIsWiderThanAskedAndNothingIsLost) {
    const string text =
        "Lorem 漢字 ipsum  dolore\u0301 \U0001F600\U0001F600 sit-amet-consectetur（か、々ー）。 x ： )) "
        "^1「^2」";
    const auto squeezed = [](const string& with) {
        string without;
        for (const char c : with) without += c == ' ' ? "" : string(1, c);
        return without;
    };
    for (std::size_t width = 2; width < 90; ++width) {
        string all;
        for (const string& line : wrapText(text, width)) {
            EXPECT_LE(displayWidth(line), width) << line;
            all += line;
        }
        EXPECT_EQ(squeezed(all), squeezed(text)) << width;
    }
}

/// Of the processor, the shortest of some runs, each of so many texts: a busy machine does not count.
double secondsFor(const string& text, std::size_t times) {
    double best = 1e9;
    for (int i = 0; i < 5; ++i) {
        const std::clock_t begin = std::clock();
        for (std::size_t each = 0; each < times; ++each) EXPECT_FALSE(wrapText(text, 76).empty());
        best = std::min(best, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
    }
    return best;
}

TEST(WrapText, TakesTimeInProportionToTheText) {
    constexpr std::size_t kShort = 5000;
    constexpr std::size_t kTimes = 16;
    for (const char* piece : {"x", "漢", "。", "(", " .", "a ) ", "\u0301", "\u00a0", "字、", "      "}) {
        string small;
        for (std::size_t i = 0; i < kShort; ++i) small += piece;
        string large;
        for (std::size_t i = 0; i < kTimes; ++i) large += small;
        // As much work for both, so that others take as much of the processor from one as from the other.
        EXPECT_LT(secondsFor(large, 1), secondsFor(small, kTimes) * 5 + 0.001) << piece;
    }
}

TEST(LineBreaks, KnowWhatBeginsAndEndsNoLine) {
    const struct {
        char32_t code;
        std::size_t columns;
        bool loose, bindsLeft, bindsRight;
    } cases[] = {
        {U'a', 1, false, false, false},   {U'^', 1, false, false, false},
        {U'/', 1, false, false, false},   {U'!', 1, false, true, false},
        {U')', 1, false, true, false},    {U'(', 1, false, false, true},
        {U'"', 1, false, true, true},     {U'漢', 2, true, false, false},
        {U'あ', 2, true, false, false},   {U'ぁ', 2, true, true, false},
        {U'ゖ', 2, true, true, false},    {U'ァ', 2, true, true, false},
        {U'ア', 2, true, false, false},   {U'ヶ', 2, true, true, false},
        {U'ー', 2, true, true, false},    {U'〜', 2, true, true, false},
        {U'、', 2, true, true, false},    {U'。', 2, true, true, false},
        {U'「', 2, true, false, true},    {U'」', 2, true, true, false},
        {U'（', 2, true, false, true},    {U'）', 2, true, true, false},
        {U'，', 2, true, true, false},    {U'．', 2, true, true, false},
        {U'｢', 1, true, false, true},     {U'｣', 1, true, true, false},
        {U'ｱ', 1, true, false, false},    {U'ｧ', 1, true, true, false},
        {U'ﾞ', 1, true, true, false},     {U'가', 2, false, false, false},
        {0x1100, 2, false, false, false}, {U'ﾡ', 1, false, false, false},
        {U'ä', 1, false, false, false},   {U'«', 1, false, false, true},
        {U'»', 1, false, true, false},    {U'“', 1, false, false, true},
        {U'”', 1, false, true, false},    {0xA0, 1, false, true, true},
        {0x202F, 1, false, true, true},   {0x2009, 1, false, false, false},
        {0x200B, 0, true, true, false},   {0x1F600, 2, true, false, false},
        {0x1F3FB, 2, true, true, false},  {0x10FFFF, 1, false, false, false},
        {0xFFE6, 2, true, false, true},
    };
    for (const auto& each : cases) {
        const BreakTraits traits = breakTraitsOf(each.code, each.columns);
        EXPECT_EQ(traits.loose, each.loose) << std::hex << static_cast<unsigned>(each.code);
        EXPECT_EQ(traits.bindsLeft, each.bindsLeft) << std::hex << static_cast<unsigned>(each.code);
        EXPECT_EQ(traits.bindsRight, each.bindsRight) << std::hex << static_cast<unsigned>(each.code);
    }
}

}  // namespace
}  // namespace vexa
