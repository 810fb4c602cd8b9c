#include "report/rtf/rtf_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "report/rtf/rtf_reader.h"
#include "report/rtf/rtf_repair.h"

namespace tonvale {
namespace {

RichText EveryFormat() {
    const CharacterStyle plain{.face = "Arial", .size_twips = 200};
    const CharacterStyle marked{.face = "Symbol",
                                .charset = kSymbolCharset,
                                .size_twips = 150,
                                .bold = true,
                                .italic = true,
                                .underline = true,
                                .strikeout = true,
                                .hidden = true,
                                .script = Script::kSub,
                                .color = Color{0, 255, 128},
                                .background = Color{255, 255, 0},
                                .offset_twips = -50,
                                .language = 1033};
    CharacterStyle raised = plain;
    raised.offset_twips = 60;
    RichParagraph first;
    first.alignment = HorizontalAlignment::kRight;
    first.left_twips = 720;
    first.first_line_twips = -360;
    first.right_twips = 100;
    first.space_before_twips = 120;
    first.space_after_twips = 60;
    first.tabs_twips = {0, 1000, 7000};
    first.runs = {{"a\tb\n\\{x} 1", plain, {}},
                  {"\uF0B7a\t", marked, {}},
                  {"è€Ш😀", raised, {}},
                  {{}, plain, RichPicture{RichPicture::Format::kPng, {"\x89P\0}", 4}, 1500, 300}}};
    RichParagraph empty;
    empty.has_bullet = true;
    empty.runs = {{"", plain, {}}};
    RichParagraph last;
    last.runs = {{"fine", plain, {}}};
    last.is_open = true;
    return {first, empty, last};
}

TEST(RtfWriterTest, WhatIsWrittenReadsTheSame) {
    RichText text = EveryFormat();
    const std::string rtf = WriteRichText(text);
    EXPECT_TRUE(IsWholeRtf(rtf));
    EXPECT_NE(rtf.find("\\deflang1040"), std::string::npos);
    EXPECT_TRUE(ReadRichText(rtf) == text) << rtf;
    text.back().is_open = false;
    EXPECT_TRUE(ReadRichText(WriteRichText(text)) == text);
    EXPECT_TRUE(ReadRichText(WriteRichText({})).empty());
}

TEST(RtfWriterTest, KeepsWithinWhatControlsTake) {
    RichParagraph paragraph;
    for (int i = 0; i < 60; ++i) paragraph.tabs_twips.push_back(i * 100);
    paragraph.runs = {{"x", {.face = "{F;\\}" + std::string(60, 'o'), .size_twips = 1}, {}}};
    const RichText text = ReadRichText(WriteRichText({paragraph}));
    EXPECT_EQ(text.at(0).tabs_twips.size(), 32U);
    EXPECT_EQ(text[0].runs.at(0).style.face, "F" + std::string(26, 'o'));
    EXPECT_EQ(text[0].runs[0].style.size_twips, 10);
}

}  // namespace
}  // namespace tonvale
