#include "common/profile_file.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {
namespace {

constexpr std::string_view kUtf16LeMark = "\xFF\xFE";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

std::string Decode(std::string_view bytes) {
    if (StartsWith(bytes, kUtf16LeMark)) return Utf16LeToUtf8(bytes.substr(kUtf16LeMark.size()));
    if (StartsWith(bytes, kUtf8Mark)) return ValidUtf8(bytes.substr(kUtf8Mark.size()));
    return Windows1252ToUtf8(bytes);
}

// The name in a section header.
std::optional<std::string_view> SectionName(std::string_view line) {
    line = TrimBlanks(line);
    const std::size_t end = line.find(']');
    if (line.empty() || line[0] != '[' || end == std::string_view::npos) return std::nullopt;
    return TrimBlanks(line.substr(1, end - 1));
}

std::string_view UpToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

// `value` as it can stand in a file: line ends become blanks.
std::string OneLine(std::string_view value) {
    const std::string text = ValidUtf8(UpToNul(value));
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, kLineEnd.size(), kLineEnd) == 0) ++i;
        line += text[i] == '\r' || text[i] == '\n' ? ' ' : text[i];
    }
    return line;
}

// n for the key `prefix` and n (no sign, no leading zero); one beyond int counts as very large.
std::optional<long long> ListNumber(std::string_view key, std::string_view prefix) {
    if (!EqualsIgnoringCase(key.substr(0, prefix.size()), prefix)) return std::nullopt;
    key.remove_prefix(prefix.size());
    if (key.empty() || (key.size() > 1 && key[0] == '0')) return std::nullopt;
    if (key.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
    const int number = ParseInteger(key);
    if (FormatInteger(number) != key) return std::numeric_limits<long long>::max();
    return number;
}

}  // namespace

ProfileFile ProfileFile::Parse(std::string_view bytes) {
    ProfileFile file;
    const std::string text = Decode(bytes);
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view line = TakeLine(rest);
        if (const auto name = SectionName(line)) {
            file.AddSection(*name, line);
        } else {
            if (file.sections_.empty()) file.AddSection("", "");
            file.AddLine(ReadLine(line));
        }
    }
    return file;
}

FileError ProfileFile::Read(FileSystem& files, const std::string& path, ProfileFile& file) {
    std::string bytes;
    const FileError error = files.Read(path, bytes);
    if (error == FileError::kNone) file = Parse(bytes);
    return error;
}

ProfileFile::Line ProfileFile::ReadLine(std::string_view text) {
    Line line;
    line.text = text;
    const std::size_t equals = text.find('=');
    const std::size_t start = text.find_first_not_of(" \t");
    if (equals == std::string_view::npos || text[start] == ';') return line;
    const std::size_t last = text.substr(0, equals).find_last_not_of(" \t");
    line.key_length = last + 1;  // npos + 1 is 0: no key before the "="
    line.value_offset = equals + 1;
    return line;
}

std::string_view ProfileFile::KeyOf(const Line& line) {
    const std::string_view text = line.text;
    return TrimBlanks(text.substr(0, line.key_length));
}

// By number, not by name: a long section name must not be copied for each of its keys.
std::string ProfileFile::KeyIndexName(std::size_t first_section, std::string_view key) {
    std::string name = LowerCase(key);
    for (name += '\n'; first_section > 0; first_section >>= 8) {
        name += static_cast<char>(first_section & 0xFF);
    }
    return name;
}

void ProfileFile::AddSection(std::string_view name, std::string_view header) {
    const std::size_t index = sections_.size();
    const std::size_t first = section_index_.try_emplace(LowerCase(name), index).first->second;
    sections_.push_back({std::string(header), first, {}});
}

// To the end of the last section. Lines that are no key lines form one run.
void ProfileFile::AddLine(Line line) {
    Section& section = sections_.back();
    if (line.key_length > 0) {
        key_index_.try_emplace(KeyIndexName(section.first, KeyOf(line)),
                               Place{sections_.size() - 1, section.lines.size()});
    } else if (!section.lines.empty() && section.lines.back().key_length == 0) {
        section.lines.back().text.append(kLineEnd).append(line.text);
        return;
    }
    section.lines.push_back(std::move(line));
}

std::optional<std::size_t> ProfileFile::FindSection(std::string_view name) const {
    const auto found = section_index_.find(LowerCase(name));
    if (found == section_index_.end()) return std::nullopt;
    return found->second;
}

const ProfileFile::Line* ProfileFile::FindLine(std::string_view section,
                                               std::string_view key) const {
    const std::optional<std::size_t> first = FindSection(section);
    if (!first) return nullptr;
    const auto found = key_index_.find(KeyIndexName(*first, key));
    if (found == key_index_.end()) return nullptr;
    return &sections_[found->second.section].lines[found->second.line];
}

std::optional<std::string_view> ProfileFile::Find(std::string_view section,
                                                  std::string_view key) const {
    const Line* line = FindLine(section, key);
    if (line == nullptr) return std::nullopt;
    const std::string_view text = line->text;
    return UpToNul(text.substr(line->value_offset));
}

std::optional<std::string> ProfileFile::Text(std::string_view section, std::string_view key,
                                             std::size_t max_characters) const {
    const std::optional<std::string_view> value = Find(section, key);
    if (!value) return std::nullopt;
    return std::string(CutToCharacters(*value, max_characters));
}

int ProfileFile::Integer(std::string_view section, std::string_view key) const {
    return ParseInteger(TrimBlanks(Find(section, key).value_or(std::string_view())));
}

std::vector<int> ProfileFile::NumberedKeys(std::string_view section, int limit) const {
    std::vector<int> numbers = NumberedKeys(section, "", limit);
    if (!numbers.empty() && numbers.front() == 0) numbers.erase(numbers.begin());
    return numbers;
}

std::vector<int> ProfileFile::NumberedKeys(std::string_view section, std::string_view prefix,
                                           int limit) const {
    std::vector<int> numbers;
    const std::optional<std::size_t> first = FindSection(section);
    if (!first) return numbers;
    for (std::size_t i = *first; i < sections_.size(); ++i) {
        if (sections_[i].first != *first) continue;
        for (const Line& line : sections_[i].lines) {
            const std::optional<long long> number = ListNumber(KeyOf(line), prefix);
            if (number && *number <= limit && !line.removed) {
                numbers.push_back(static_cast<int>(*number));
            }
        }
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

void ProfileFile::Set(std::string_view section, std::string_view key, std::string_view value) {
    const std::string text = OneLine(value);
    std::optional<std::size_t> first = FindSection(section);
    if (!first) {
        first = sections_.size();
        AddSection(section, std::string("[").append(section).append("]"));
    }
    std::string index_name = KeyIndexName(*first, key);
    const auto found = key_index_.find(index_name);
    if (found != key_index_.end()) {
        Line& line = sections_[found->second.section].lines[found->second.line];
        line.text.replace(line.value_offset, std::string::npos, text);
        return;
    }
    // After the last key: a comment or blank line behind it belongs to the section that follows.
    std::vector<Line>& lines = sections_[*first].lines;
    const bool ends_in_run = !lines.empty() && lines.back().key_length == 0;
    const std::size_t position = lines.size() - (ends_in_run ? 1 : 0);
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(position),
                 ReadLine(std::string(key).append("=").append(text)));
    key_index_[std::move(index_name)] = {*first, position};
}

void ProfileFile::RemoveNumberedKeysAbove(std::string_view section, int count) {
    RemoveNumberedKeysAbove(section, "", std::max(count, 0));
}

void ProfileFile::RemoveNumberedKeysAbove(std::string_view section, std::string_view prefix,
                                          int limit) {
    const std::optional<std::size_t> first = FindSection(section);
    if (!first) return;
    for (std::size_t i = *first; i < sections_.size(); ++i) {
        if (sections_[i].first != *first) continue;
        for (Line& line : sections_[i].lines) {
            const std::optional<long long> number = ListNumber(KeyOf(line), prefix);
            if (!number || *number <= limit) continue;
            key_index_.erase(KeyIndexName(*first, KeyOf(line)));
            line.removed = true;
        }
    }
}

void ProfileFile::RemoveSection(std::string_view section) {
    const std::optional<std::size_t> first = FindSection(section);
    if (!first) return;
    for (std::size_t i = *first; i < sections_.size(); ++i) {
        if (sections_[i].first != *first) continue;
        sections_[i].header.clear();
        for (Line& line : sections_[i].lines) {
            if (line.key_length == 0) continue;  // a comment may belong to what follows
            key_index_.erase(KeyIndexName(*first, KeyOf(line)));
            line.removed = true;
        }
    }
    section_index_.erase(LowerCase(section));
}

std::string ProfileFile::Serialize() const {
    std::string text;
    for (const Section& section : sections_) {
        if (!section.header.empty()) text.append(section.header).append(kLineEnd);
        for (const Line& line : section.lines) {
            if (!line.removed) text.append(line.text).append(kLineEnd);
        }
    }
    std::optional<std::string> bytes = Utf8ToWindows1252(text);
    // Letters that would be taken for a byte-order mark need one before them.
    if (bytes && !StartsWith(*bytes, kUtf16LeMark) && !StartsWith(*bytes, kUtf8Mark)) {
        return std::move(*bytes);
    }
    return std::string(kUtf16LeMark) + Utf8ToUtf16Le(text);
}

FileError ProfileFile::Save(FileSystem& files, const std::string& path) const {
    return WriteFileSafely(files, path, Serialize());
}

FileError UpdateProfileFile(FileSystem& files, const std::string& path,
                            const std::function<void(ProfileFile&)>& change) {
    ProfileFile file;
    const FileError error = ProfileFile::Read(files, path, file);
    if (error != FileError::kNone && error != FileError::kMissing) return error;
    change(file);
    return file.Save(files, path);
}

}  // namespace tonvale
