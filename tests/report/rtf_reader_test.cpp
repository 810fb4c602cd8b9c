#include "report/rtf/rtf_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "report/rtf/rtf_tokens.h"

namespace tonvale {
namespace {

TEST(RtfTokenizerTest, TokensAreTheBytes) {
    const std::string bytes =
        "{\\rtf1\\b-0 a\\'e8\\{\\\\\\~\r\n\\bin4 }{\\}x\\li-720\\*\\\n\\u8364?\\'zz\\bin9 short";
    RtfTokenizer tokens(bytes);
    std::string joined;
    std::string seen;
    for (RtfToken token = tokens.Next(); token.kind != RtfToken::Kind::kEnd;
         token = tokens.Next()) {
        joined += token.source;
        if (token.name == "li") seen += "li" + std::to_string(token.parameter);
        if (token.kind == RtfToken::Kind::kByte) seen += "byte" + std::to_string(token.parameter);
        if (token.kind == RtfToken::Kind::kBinary) seen += "[" + std::string(token.text) + "]";
    }
    EXPECT_EQ(joined, bytes);
    EXPECT_EQ(seen, "byte232[}{\\}]li-720[short]");
}

TEST(RtfReaderTest, ReadsCharacterFormats) {
    const RichText text = ReadRichText(
        "{\\rtf1\\ansi{\\fonttbl{\\f0\\fswiss Arial;}{\\f1 Courier New;}}"
        "{\\colortbl;\\red255\\green0\\blue128;}\\f0\\fs20 uno "
        "{\\b due}\\i\\ul\\strike\\cf1\\f1\\fs30 tre\\i0\\ulnone\\strike0\\cf0\\up5  su"
        "\\dn4 gi\\'f9\\super x\\nosupersub y\\plain z}");
    ASSERT_EQ(text.size(), 1U);
    const auto& runs = text[0].runs;
    ASSERT_EQ(runs.size(), 8U);
    EXPECT_EQ(runs[0].text, "uno ");
    EXPECT_EQ(runs[0].style, (CharacterStyle{.face = "Arial", .size_twips = 200}));
    EXPECT_EQ(runs[1].style, (CharacterStyle{.face = "Arial", .size_twips = 200, .bold = true}));
    EXPECT_EQ(runs[2].style, (CharacterStyle{.face = "Courier New",
                                             .size_twips = 300,
                                             .italic = true,
                                             .underline = true,
                                             .strikeout = true,
                                             .color = Color{255, 0, 128}}));
    EXPECT_EQ(runs[3].text, " su");
    EXPECT_EQ(runs[3].style.offset_twips, 50);
    EXPECT_EQ(runs[3].style.color, std::nullopt);
    EXPECT_EQ(runs[4].text, "giù");
    EXPECT_EQ(runs[4].style.offset_twips, -40);
    EXPECT_EQ(runs[5].style.script, Script::kSuper);
    EXPECT_EQ(runs[6].style.script, Script::kNone);
    EXPECT_EQ(runs[7].style.size_twips, 240);
}

TEST(RtfReaderTest, ReadsParagraphs) {
    const RichText text = ReadRichText(
        "{\\rtf1\\pard\\qc\\tx2000\\tx1000 uno\\tab a\\line b\\par"
        "\\pard{\\pntext\\f1 \\'b7\\tab}{\\*\\pn\\pnlvlblt\\pnf1{\\pntxtb\\'b7}}"
        "\\li660\\fi-300\\ri100\\sb120\\sa60 due\\par\\par\\pard\\qr tre\\par"
        "\\pard{\\pntext 1.\\tab}{\\*\\pn\\pnlvlbody\\pndec}quattro}");
    ASSERT_EQ(text.size(), 5U);
    EXPECT_EQ(text[0].alignment, HorizontalAlignment::kCenter);
    EXPECT_EQ(text[0].tabs_twips, (std::vector<int>{1000, 2000}));
    EXPECT_FALSE(text[0].has_bullet);
    EXPECT_TRUE(text[1].has_bullet);
    EXPECT_EQ(text[1].left_twips, 660);
    EXPECT_EQ(text[1].first_line_twips, -300);
    EXPECT_EQ(text[1].right_twips, 100);
    EXPECT_EQ(text[1].space_before_twips, 120);
    EXPECT_EQ(text[1].space_after_twips, 60);
    EXPECT_EQ(text[3].alignment, HorizontalAlignment::kRight);
    EXPECT_EQ(PlainTextOf(text), "uno\ta\nb\ndue\n\ntre\n1.\tquattro\n");
}

TEST(RtfReaderTest, ReadsEveryKindOfCharacter) {
    EXPECT_EQ(PlainTextOf(ReadRichText(
                  "{\\rtf1{\\*\\generator X;}{\\info{\\title no}}{\\header no}"
                  "\\'80\\u945 a\\u-3893?{\\uc2\\u946??}\\u947?\\u55357?\\u56832?\\~\\endash"
                  "{\\field{\\*\\fldinst HYPERLINK}{\\fldrslt rete}}\\{\\}\\\\}")),
              "€α\uF0CBβγ😀\u00A0–rete{}\\\n");
}

TEST(RtfReaderTest, BytesAreThoseOfTheFontsCodePage) {
    std::string pages;
    const auto decode = [&pages](std::string_view bytes, int page) {
        pages += std::string(bytes) + std::to_string(page) + ' ';
        return std::string(bytes);
    };
    const RichText text = ReadRichText(
        "{\\rtf1\\ansicpg1250\\deff7{\\fonttbl{\\f7 Arial;}{\\f1\\fcharset204 Cyr;}"
        "{\\f2\\fcharset2 Symbol;}{\\f3\\fcharset0 West;}}a{\\f1 b}\\f3 "
        "c\\f2\\'b7\\plain\\u7?d\te}",
        {.decode = decode});
    EXPECT_EQ(PlainTextOf(text), "abc\uF0B7d\te\n");
    EXPECT_EQ(pages, "a1250 b1251 c1252 d\te1250 ");
    EXPECT_EQ(text.at(0).runs.back().style.face, "Arial");
}

TEST(RtfReaderTest, TableRowIsOneParagraphWithTabs) {
    const RichText text = ReadRichText(
        "{\\rtf1\\trowd\\cellx2000\\cellx4000\\intbl a\\cell b\\cell\\row\\pard dopo\\par"
        "\\trowd\\cellx1000\\pard\\intbl\\cell\\cell c\\cell\\row}");
    EXPECT_EQ(PlainTextOf(text), "a\tb\ndopo\n\t\tc\n");
    EXPECT_EQ(text[0].tabs_twips, (std::vector<int>{2000, 4000}));
    EXPECT_TRUE(text[1].tabs_twips.empty());
}

TEST(RtfReaderTest, AnyEndGivesWhatStandsBefore) {
    const std::string_view whole = "{\\rtf1 a{\\b b\\u945?}{\\pict\\pngblip 8950}c\\par d}";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        ReadRichText(whole.substr(0, length));
    }
    EXPECT_EQ(PlainTextOf(ReadRichText("{\\rtf1 uno\\par {\\b due")), "uno\ndue\n");
    EXPECT_TRUE(ReadRichText("").empty());
    EXPECT_TRUE(ReadRichText("}}}").empty());
    EXPECT_EQ(PlainTextOf(ReadRichText(std::string(100000, '{') + "x")), "x\n");
}

TEST(RtfReaderTest, StopsBehindTheMostThatIsWanted) {
    EXPECT_EQ(PlainTextOf(ReadRichText("{\\rtf1 ab\\par\\par c\\par d}", {.max_characters = 4})),
              "ab\n\nc\n");
}

TEST(RtfReaderTest, ReadsPicturesInTheirSize) {
    const RichText text = ReadRichText(
        "{\\rtf1{\\pict\\pngblip\\picw10\\pich20\\picscalex200 8950}"
        "{\\*\\shppict{\\pict{\\*\\picprop 77}\\wmetafile8\\picw2540\\pich1270\\pichgoal900\\bin2 "
        "}{}}"
        "{\\nonshppict{\\pict\\dibitmap0 00}}{\\pict\\macpict 00}}");
    ASSERT_EQ(text.at(0).runs.size(), 3U);
    const auto picture = [&text](std::size_t run) { return *text[0].runs[run].picture; };
    EXPECT_EQ(picture(0), (RichPicture{RichPicture::Format::kPng, "\x89P", 300, 300}));
    EXPECT_EQ(picture(1), (RichPicture{RichPicture::Format::kWindowsMetafile, "}{", 1440, 900}));
    EXPECT_EQ(picture(2).format, RichPicture::Format::kUnknown);
}

}  // namespace
}  // namespace tonvale
