// Text files in the profile (INI) format: sections in brackets, one `key=value` a line.
//
// A file is read once into memory and written once. Names compare without regard to letter case,
// the first of two equal names counts, and what the program does not know (sections, keys,
// comments, blank lines) survives a save. A value comes back exactly as it was written, blanks and
// quotes included.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "common/file_system.h"

namespace tonvale {

class ProfileFile {
  public:
    ProfileFile() = default;

    // Any bytes are a profile file, if need be one without keys. UTF-16LE and UTF-8 are known by
    // their byte-order marks, anything else is Windows-1252. A value ends at its first NUL.
    static ProfileFile Parse(std::string_view bytes);

    // Puts the file at `path` into `file`, which stays as it was on failure.
    static FileError Read(FileSystem& files, const std::string& path, ProfileFile& file);

    // The whole value, UTF-8; nullopt when the key is missing.
    std::optional<std::string_view> Find(std::string_view section, std::string_view key) const;

    // The value cut to `max_characters`; nullopt when the key is missing.
    std::optional<std::string> Text(std::string_view section, std::string_view key,
                                    std::size_t max_characters) const;

    // The digits that the value begins with after blanks (ParseInteger); 0 when the key is missing.
    int Integer(std::string_view section, std::string_view key) const;

    // The numbers n in 1..`limit` for which `section` has the key "n" (no sign, no leading zero),
    // ascending. Costs what the section holds, whatever the limit.
    std::vector<int> NumberedKeys(std::string_view section, int limit) const;

    // The same for the keys `prefix` and n, with n in 0..`limit`.
    std::vector<int> NumberedKeys(std::string_view section, std::string_view prefix,
                                  int limit) const;

    // Replaces the value in place, else appends the key to its section, else appends the section.
    // A line end inside `value` (there is no way to write one) becomes a blank.
    void Set(std::string_view section, std::string_view key, std::string_view value);

    // Removes the keys "n" with n > `count`: the surplus of a list that has shrunk.
    void RemoveNumberedKeysAbove(std::string_view section, int count);

    // The same for the keys `prefix` and n.
    void RemoveNumberedKeysAbove(std::string_view section, std::string_view prefix, int limit);

    // Removes all keys of a section, and its header.
    void RemoveSection(std::string_view section);

    // Windows-1252, or UTF-16LE with a byte-order mark when a character needs it.
    std::string Serialize() const;

    // Writes the whole file (WriteFileSafely).
    FileError Save(FileSystem& files, const std::string& path) const;

  private:
    // A key line; or a run of other lines (comments, blank lines), joined by line ends.
    struct Line {
        std::string text;              // as in the file, without the line end
        std::size_t key_length = 0;    // up to the "=", trailing blanks excluded; 0: no key line
        std::size_t value_offset = 0;  // in `text`
        bool removed = false;
    };
    struct Section {
        std::string header;  // as in the file; empty for the lines before the first header
        std::size_t first;   // index of the first section of the same name
        std::vector<Line> lines;
    };
    struct Place {
        std::size_t section;
        std::size_t line;
    };

    static Line ReadLine(std::string_view text);
    static std::string_view KeyOf(const Line& line);
    static std::string KeyIndexName(std::size_t first_section, std::string_view key);

    void AddSection(std::string_view name, std::string_view header);
    void AddLine(Line line);
    std::optional<std::size_t> FindSection(std::string_view name) const;
    const Line* FindLine(std::string_view section, std::string_view key) const;

    std::vector<Section> sections_;
    std::unordered_map<std::string, std::size_t> section_index_;  // lower-case name -> first
    std::unordered_map<std::string, Place> key_index_;            // KeyIndexName -> first
};

// Changes the profile file at `path`, or a new one where there is none, and saves it. A file that
// is there but cannot be read stays as it is: what it holds beside the change would be lost.
FileError UpdateProfileFile(FileSystem& files, const std::string& path,
                            const std::function<void(ProfileFile&)>& change);

}  // namespace tonvale
