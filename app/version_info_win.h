// The texts of the program file's version record.
#pragma once

#include <string>
#include <string_view>

namespace tonvale {

// The text `name` ("FileDescription", "CompanyName", "LegalCopyright", "FileVersion") of the
// version record's Italian string block; without it, a sentence that says so.
std::string VersionText(std::string_view name);

// What the about box says of the program, its makers and its version.
std::string AboutText();

}  // namespace tonvale
