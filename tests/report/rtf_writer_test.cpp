#include "report/rtf/rtf_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "report/rtf/rtf_reader.h"

namespace tonvale {
namespace {

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
