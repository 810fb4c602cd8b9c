#include "common/markup.h"

#include <algorithm>

#include "common/text.h"

namespace tonvale {

namespace {

// Most texts have nothing to escape.
bool IsPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char character) {
        return character >= ' ' && character <= '~' && character != '&' && character != '<' &&
               character != '>' && character != '"';
    });
}

}  // namespace

std::string EscapeMarkup(std::string_view text) {
    if (IsPlain(text)) return std::string(text);
    std::string escaped;
    for (const char character : SingleLine(ValidUtf8(text))) {
        switch (character) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += character;
        }
    }
    return escaped;
}

}  // namespace tonvale
