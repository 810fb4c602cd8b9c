#include "report/rtf_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "report/rtf_pictures.h"
#include "report/rtf_tokens.h"

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
    EXPECT_EQ(runs[5].style.offset_twips, 100);
    EXPECT_EQ(runs[6].style.offset_twips, 0);
    EXPECT_EQ(runs[7].style.size_twips, 240);
}

TEST(RtfReaderTest, ReadsParagraphs) {
    const RichText text = ReadRichText(
        "{\\rtf1\\pard\\qc\\tx2000\\tx1000 uno\\tab a\\line b\\par"
        "\\pard{\\pntext\\f1 \\'b7\\tab}{\\*\\pn\\pnlvlblt\\pnf1{\\pntxtb\\'b7}}"
        "\\li660\\fi-300\\ri100 due\\par\\par\\pard\\qr tre}");
    ASSERT_EQ(text.size(), 4U);
    EXPECT_EQ(text[0].alignment, HorizontalAlignment::kCenter);
    EXPECT_EQ(text[0].tabs_twips, (std::vector<int>{1000, 2000}));
    EXPECT_FALSE(text[0].has_bullet);
    EXPECT_TRUE(text[1].has_bullet);
    EXPECT_EQ(text[1].left_twips, 660);
    EXPECT_EQ(text[1].first_line_twips, -300);
    EXPECT_EQ(text[1].right_twips, 100);
    EXPECT_EQ(text[3].alignment, HorizontalAlignment::kRight);
    EXPECT_EQ(PlainTextOf(text), "uno\ta\nb\ndue\n\ntre\n");
}

TEST(RtfReaderTest, ReadsEveryKindOfCharacter) {
    EXPECT_EQ(PlainTextOf(ReadRichText(
                  "{\\rtf1{\\*\\generator X;}{\\info{\\title no}}{\\header no}"
                  "\\'80\\u945 a\\u-3893?{\\uc2\\u946??}\\u947?\\u55357?\\u56832?\\~\\endash"
                  "{\\field{\\*\\fldinst HYPERLINK}{\\fldrslt rete}}\\{\\}\\\\}")),
              "€α\uF0CBβγ😀\u00A0–rete{}\\\n");
}

TEST(RtfReaderTest, TableRowIsOneParagraphWithTabs) {
    const RichText text = ReadRichText(
        "{\\rtf1\\trowd\\cellx2000\\cellx4000\\intbl a\\cell b\\cell\\row\\pard dopo\\par}");
    EXPECT_EQ(PlainTextOf(text), "a\tb\t\ndopo\n");
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

TEST(RtfPicturesTest, PictureComesBack) {
    const std::string bytes{"\x89PNG\0\xff", 6};
    const RichPicture picture{RichPicture::Format::kPng, bytes, 1500, 300};
    const RichText text = ReadRichText("{\\rtf1 a" + PictureGroup(picture) + "b}");
    ASSERT_EQ(text.at(0).runs.size(), 3U);
    ASSERT_TRUE(text[0].runs[1].picture);
    EXPECT_EQ(text[0].runs[1].picture->format, RichPicture::Format::kPng);
    EXPECT_EQ(text[0].runs[1].picture->bytes, picture.bytes);
    EXPECT_EQ(text[0].runs[1].picture->width_twips, 1500);
    EXPECT_EQ(text[0].runs[1].picture->height_twips, 300);
    EXPECT_EQ(PlainTextOf(text), "ab\n");
}

TEST(RtfPicturesTest, ReplacesOnlyWhatNeedsIt) {
    std::string seen;
    const auto replace = [&seen](const RichPicture& picture) -> std::optional<std::string> {
        seen += picture.bytes;
        if (picture.bytes == "C") return std::nullopt;
        return "[" + picture.bytes + "]";
    };
    EXPECT_EQ(ReplacePictures("{a{\\pict\\pngblip 41}b{\\pict\\emfblip 42}{\\pict\\jpegblip 43}"
                              "{\\*\\shppict{\\pict{\\*\\picprop x}\\jpegblip\\bin1 }}}{\\pict 44",
                              replace),
              "{a[A]b{\\pict\\emfblip 42}{\\pict\\jpegblip 43}{\\*\\shppict[}]}{\\pict 44");
    EXPECT_EQ(seen, "AC}");
}

}  // namespace
}  // namespace tonvale
