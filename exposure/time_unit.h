// The units in which exposure times are typed and shown ("Formato tempo").
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tonvale {

struct TimeUnit {
    std::string_view name;         // "minuti", as in the list of units
    std::string_view suffix;       // "(m):", appended to a label
    std::string_view report_text;  // "(minuti)"
    double seconds;                // one unit in seconds
    double per_second;             // one second in units
    int decimals;                  // of a total time
    int width;                     // of a total time
};

// In the order of the list: index 0 seconds, 1 minutes, 2 hours.
const std::array<TimeUnit, 3>& TimeUnits();

// Their names, in the same order.
const std::vector<std::string>& TimeUnitNames();

// The unit of an index as files store it. Any other index computes and shows as seconds, without
// suffix and report text.
const TimeUnit& TimeUnitAt(int index);

// A total time in seconds, shown in the unit: "%6.0f" for seconds and minutes, "%4.2f" for hours.
std::string FormatTotalTime(double seconds, const TimeUnit& unit);

}  // namespace tonvale
