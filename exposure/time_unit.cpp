#include "exposure/time_unit.h"

#include <cstddef>

#include "common/numbers.h"

namespace tonvale {

namespace {

constexpr std::array<TimeUnit, 3> kTimeUnits{{
    {"secondi", "(s):", "(secondi)", 1, 1, 0, 6},
    {"minuti", "(m):", "(minuti)", 60, 0.016666666666666666, 0, 6},
    {"ore", "(h):", "(ore)", 3600, 0.0002777777777777778, 2, 4},
}};

constexpr TimeUnit kUnknownUnit{"", "", "", 1, 1, 0, 6};

}  // namespace

const std::array<TimeUnit, 3>& TimeUnits() {
    return kTimeUnits;
}

const std::vector<std::string>& TimeUnitNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        all.reserve(kTimeUnits.size());
        for (const TimeUnit& unit : kTimeUnits) all.emplace_back(unit.name);
        return all;
    }();
    return names;
}

const TimeUnit& TimeUnitAt(int index) {
    const bool known = index >= 0 && index < static_cast<int>(kTimeUnits.size());
    return known ? kTimeUnits[static_cast<std::size_t>(index)] : kUnknownUnit;
}

std::string FormatTotalTime(double seconds, const TimeUnit& unit) {
    return FormatFixed(seconds * unit.per_second, unit.width, unit.decimals);
}

}  // namespace tonvale
