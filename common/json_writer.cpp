#include "common/json_writer.h"

#include <algorithm>
#include <cmath>

#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

void JsonWriter::Key(std::string_view name) {
    BeforeValue();
    AppendQuoted(name);
    text_ += ':';
    needs_comma_ = false;
}

void JsonWriter::String(std::string_view utf8) {
    BeforeValue();
    AppendQuoted(ValidUtf8(utf8));
}

void JsonWriter::Number(double value) {
    BeforeValue();
    text_ += std::isfinite(value) ? FormatShortest(value) : "null";
}

void JsonWriter::Boolean(bool value) {
    BeforeValue();
    text_ += value ? "true" : "false";
}

void JsonWriter::Null() {
    BeforeValue();
    text_ += "null";
}

void JsonWriter::Open(char bracket) {
    BeforeValue();
    text_ += bracket;
    needs_comma_ = false;
}

void JsonWriter::Close(char bracket) {
    text_ += bracket;
    needs_comma_ = true;
}

void JsonWriter::BeforeValue() {
    if (needs_comma_) text_ += ',';
    needs_comma_ = true;
}

void JsonWriter::AppendQuoted(std::string_view utf8) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    const auto needs_escape = [](char character) {
        return character == '"' || character == '\\' ||
               static_cast<unsigned char>(character) < 0x20;
    };
    text_ += '"';
    for (auto rest = utf8.begin(); rest != utf8.end();) {
        const auto escaped = std::find_if(rest, utf8.end(), needs_escape);
        text_.append(rest, escaped);
        if (escaped == utf8.end()) break;
        const auto code = static_cast<unsigned char>(*escaped);
        if (code < 0x20) {
            text_ += "\\u00";
            text_ += kHexDigits[code >> 4];
            text_ += kHexDigits[code & 0xF];
        } else {
            text_ += '\\';
            text_ += *escaped;
        }
        rest = escaped + 1;
    }
    text_ += '"';
}

}  // namespace tonvale
