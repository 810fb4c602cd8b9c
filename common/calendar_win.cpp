#include "common/calendar.h"

namespace tonvale {

bool ToLocalDay(std::time_t moment, std::tm& day) {
    return localtime_s(&day, &moment) == 0;
}

}  // namespace tonvale
