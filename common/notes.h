// The notes that every calculator keeps with its data: section `NOTE` of a data file.
#pragma once

#include <string>
#include <string_view>

#include "common/profile_file.h"

namespace tonvale {

inline constexpr std::size_t kMaxNotesCharacters = 512;      // what a notes field takes
inline constexpr std::size_t kMaxKeptNotesCharacters = 511;  // what is kept, saved and printed
inline constexpr std::size_t kMaxSummaryNotesCharacters = 255;

// Writes line k of `notes` as key k and the number of lines as `Num`; keys left over from longer
// notes are removed. A line end at the end of the notes adds no empty line.
void WriteNotes(ProfileFile& file, std::string_view notes);

// The lines joined by CR LF, at most 512 characters in all, each line at most 511; empty when
// there are none. Missing lines are empty. Costs what the file holds, whatever `Num` claims.
std::string ReadNotes(const ProfileFile& file);

// The same on the data file at `path`, for the notes panel of the file dialogs. Of a file that
// cannot be read, the notes are empty, and there is no writing them.
FileError ReadNotesOfFile(FileSystem& files, const std::string& path, std::string& notes);
FileError WriteNotesOfFile(FileSystem& files, const std::string& path, std::string_view notes);

}  // namespace tonvale
