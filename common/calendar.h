// Days of the calendar.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>

namespace tonvale {

// The day, "2026-10-14", on which a moment fell where this machine is; `unix_s` seconds after the
// start of 1970 (UTC). Empty when the calendar does not reach so far. May be called by any thread.
std::string LocalDate(std::int64_t unix_s);

// What stands behind it, in the system's own way; false when the calendar does not reach so far.
bool ToLocalDay(std::time_t moment, std::tm& day);

// "14/10/2026" for "2026-10-14".
std::string ItalianDate(const std::string& date);

}  // namespace tonvale
