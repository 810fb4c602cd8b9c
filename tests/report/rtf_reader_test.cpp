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

}  // namespace

}  // namespace tonvale
