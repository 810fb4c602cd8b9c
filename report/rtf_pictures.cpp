#include "report/rtf_pictures.h"

#include "common/numbers.h"
#include "report/rtf_reader.h"
#include "report/rtf_tokens.h"

namespace tonvale {

namespace {

using Kind = RtfToken::Kind;

constexpr std::size_t kHexLine = 64;  // bytes a line

std::string_view FormatWord(RichPicture::Format format) {
    switch (format) {
        case RichPicture::Format::kEnhancedMetafile:
            return "\\emfblip";
        case RichPicture::Format::kWindowsMetafile:
            return "\\wmetafile8";
        case RichPicture::Format::kPng:
            return "\\pngblip";
        case RichPicture::Format::kJpeg:
            return "\\jpegblip";
    }
    return {};
}

void AppendHex(std::string& text, std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    text.reserve(text.size() + bytes.size() * 2 + bytes.size() / kHexLine + 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % kHexLine == 0) text += '\n';
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
}

// The group that opens at `start`; empty when it is never closed.
std::string_view GroupAt(std::string_view rtf, std::size_t start) {
    RtfTokenizer tokens(rtf.substr(start));
    int depth = 0;
    std::size_t length = 0;
    do {
        const RtfToken token = tokens.Next();
        if (token.kind == Kind::kEnd) return {};
        if (token.kind == Kind::kOpen) ++depth;
        if (token.kind == Kind::kClose) --depth;
        length += token.source.size();
    } while (depth > 0);
    return rtf.substr(start, length);
}

// The picture of a group; nullopt when it is neither PNG nor JPEG.
std::optional<RichPicture> ReadCompressedPicture(std::string_view group) {
    const RichText text = ReadRichText(group);
    if (text.empty() || text.front().runs.empty()) return std::nullopt;
    const std::optional<RichPicture>& picture = text.front().runs.front().picture;
    const bool is_compressed = picture && (picture->format == RichPicture::Format::kPng ||
                                           picture->format == RichPicture::Format::kJpeg);
    return is_compressed ? picture : std::nullopt;
}

}  // namespace

std::string PictureGroup(const RichPicture& picture) {
    std::string group = "{\\pict";
    group += FormatWord(picture.format);
    group += "\\picwgoal" + FormatInteger(picture.width_twips);
    group += "\\pichgoal" + FormatInteger(picture.height_twips);
    AppendHex(group, picture.bytes);
    group += '}';
    return group;
}

std::string ReplacePictures(
    std::string_view rtf,
    const std::function<std::optional<std::string>(const RichPicture& picture)>& replace) {
    constexpr std::string_view kStart = "{\\pict";
    std::string result;
    std::size_t copied = 0;
    std::size_t start = rtf.find(kStart);
    while (start != std::string_view::npos) {
        const std::string_view group = GroupAt(rtf, start);
        if (group.empty()) break;
        const std::optional<RichPicture> picture = ReadCompressedPicture(group);
        const std::optional<std::string> replacement = picture ? replace(*picture) : std::nullopt;
        if (replacement) {
            result += rtf.substr(copied, start - copied);
            result += *replacement;
            copied = start + group.size();
        }
        start = rtf.find(kStart, start + group.size());
    }
    result += rtf.substr(copied);
    return result;
}

}  // namespace tonvale
