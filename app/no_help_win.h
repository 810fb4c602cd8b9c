// The help viewer of a program without help texts.
#pragma once

#include "common/help_viewer_win.h"

namespace tonvale {

class NoHelp final : public HelpViewer {
  public:
    void ShowTopic(HWND /*owner*/, unsigned long /*context*/) override {}
    void Close(std::string_view /*help_file*/) override {}
};

}  // namespace tonvale
