// What this process holds of the system: windows, menus, icons, drawing objects, handles.
#pragma once

#include <map>
#include <string>

namespace tonvale {

// Where the system itself counts.
inline constexpr char kSystemsCount[] = "GDI and USER objects by the system's count";

// How many there are of each kind. Where the system does not count its objects (Wine does not: 0),
// they are counted one by one: a handle without its upper half names its place in the table.
std::map<std::string, int> CountHeldObjects();

}  // namespace tonvale
