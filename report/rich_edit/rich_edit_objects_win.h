// Objects of other programs within the report document.
#pragma once

#include <windows.h>

#include <functional>

namespace tonvale {

// Serves the editor's requests about embedded objects: storages for new ones, the frame for those
// that are edited in place, and the menu of the right mouse button.
//
// Every object has a storage of its own, "BREOBJ" and a running number, within one compound file
// that the system deletes along with the editor. `make_menu` gives a menu that the editor shows
// and destroys.
// Files that are dropped on the editor go to `frame`, as by ForwardDrop.
bool ServeObjects(HWND editor, HWND frame, std::function<HMENU()> make_menu);

// Posts dropped files (a DROPFILES block, which stays the caller's) to `frame` as if they had been
// dropped there.
void ForwardDrop(HWND frame, HGLOBAL drop);

}  // namespace tonvale
