// How dialogs ask for help; the program's help window implements it.
#pragma once

#include <windows.h>

#include <string_view>

namespace tonvale {

class HelpViewer {
  public:
    virtual ~HelpViewer() = default;
    // Shows the topic with this context number; 0 shows the index.
    virtual void ShowTopic(HWND owner, unsigned long context) = 0;
    // Closes the help that a dialog has opened, by the name of its help file ("LEPD.HLP").
    virtual void Close(std::string_view help_file) = 0;
};

}  // namespace tonvale
