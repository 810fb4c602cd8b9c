#include "common/calendar.h"

#include "common/numbers.h"

namespace tonvale {

namespace {

std::string TwoDigits(int number) {
    return (number < 10 ? "0" : "") + FormatInteger(number);
}

}  // namespace

std::string LocalDate(std::int64_t unix_s) {
    std::tm day = {};
    if (!ToLocalDay(static_cast<std::time_t>(unix_s), day)) return {};
    return FormatInteger(1900 + day.tm_year) + "-" + TwoDigits(day.tm_mon + 1) + "-" +
           TwoDigits(day.tm_mday);
}

std::string ItalianDate(const std::string& date) {
    const std::size_t month = date.find('-', 1);
    const std::size_t day = date.rfind('-');
    if (month == std::string::npos || day == month) return date;
    return date.substr(day + 1) + "/" + date.substr(month + 1, day - month - 1) + "/" +
           date.substr(0, month);
}

}  // namespace tonvale
