#include "app/command_table_win.h"

#include <algorithm>
#include <iterator>

#include "app/main_window.h"
#include "exposure/daily_exposure_dialog.h"
#include "resources/resource.h"

namespace tonvale {
namespace {

struct CommandEntry {
    int id;
    CommandFunction function;
};

void OpenAnyFile(MainWindow& window, const std::string&) {
    window.OpenAnyFile();
}

void Exit(MainWindow& window, const std::string&) {
    window.Close();
}

void DailyExposure(MainWindow& window, const std::string& path) {
    OpenDailyExposure(window.context(), window.state().daily_exposure, window.window(), path);
}

constexpr CommandEntry kCommands[] = {
    {CMD_NEW_DOCUMENT, nullptr},
    {CMD_OPEN, OpenAnyFile},
    {CMD_SAVE, nullptr},
    {CMD_SAVE_AS, nullptr},
    {CMD_PAGE_SETUP, nullptr},
    {CMD_PRINT, nullptr},
    {CMD_EXIT, Exit},
    {CMD_CUT, nullptr},
    {CMD_COPY, nullptr},
    {CMD_PASTE, nullptr},
    {CMD_VIEW_AUDIOGRAM, nullptr},
    {CMD_VIEW_CHART, nullptr},
    {CMD_VIEW_TABLE, nullptr},
    {CMD_VIEW_DOCUMENT, nullptr},
    {CMD_DAILY_EXPOSURE, DailyExposure},
    {CMD_WEEKLY_EXPOSURE, nullptr},
    {CMD_GROUP_STATISTICS, nullptr},
    {CMD_UNCERTAINTY, nullptr},
    {CMD_NOISE_SPECTRUM, nullptr},
    {CMD_ATTENUATION_SPECTRUM, nullptr},
    {CMD_PROTECTOR_SELECTION, nullptr},
    {CMD_NIPTS, nullptr},
    {CMD_HTLA, nullptr},
    {CMD_HTLAN, nullptr},
    {CMD_PREDICTIONS, nullptr},
    {CMD_DAMAGE_EVOLUTION, nullptr},
    {CMD_RISK, nullptr},
    {CMD_AUDIOGRAM_DAMAGE, nullptr},
    {CMD_HELP_INDEX, nullptr},
    {CMD_ABOUT, nullptr},
};

}  // namespace

CommandFunction FindCommand(int id) {
    const auto* entry = std::find_if(std::begin(kCommands), std::end(kCommands),
                                     [id](const CommandEntry& row) { return row.id == id; });
    return entry == std::end(kCommands) ? nullptr : entry->function;
}

}  // namespace tonvale
