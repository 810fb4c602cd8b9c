// Writes one JSON value piece by piece, on a single line.
#pragma once

#include <string>
#include <string_view>

namespace tonvale {

class JsonWriter {
  public:
    // Between Begin and End come Key and a value in turn (objects), or values (arrays).
    void BeginObject() { Open('{'); }
    void EndObject() { Close('}'); }
    void BeginArray() { Open('['); }
    void EndArray() { Close(']'); }
    void Key(std::string_view name);
    void String(std::string_view utf8);
    void Number(double value);  // the shortest text that reads back the same; null if not finite
    void Boolean(bool value);
    void Null();

    const std::string& text() const { return text_; }

  private:
    void Open(char bracket);
    void Close(char bracket);
    void BeforeValue();
    void AppendQuoted(std::string_view utf8);

    std::string text_;
    bool needs_comma_ = false;
};

}  // namespace tonvale
