#include "shell/TraceEntry.hpp"

#include <gtest/gtest.h>

namespace {

std::tm moment(int year, int month, int day, int weekday, int hour, int minute) {
    std::tm when{};
    when.tm_year = year - 1900;
    when.tm_mon = month - 1;
    when.tm_mday = day;
    when.tm_wday = weekday;
    when.tm_hour = hour;
    when.tm_min = minute;
    return when;
}

struct EntryCase {
    std::tm when;
    std::string_view date;
};

TEST(TraceEntry, DateIsTheTwelveHourCalendarToTheMinute) {
    const EntryCase cases[] = {
        {moment(2026, 11, 15, 0, 2, 16), "Sun Nov 15 2026 02:16 AM"},
        {moment(2026, 1, 5, 1, 0, 0), "Mon Jan 05 2026 12:00 AM"},
        {moment(2026, 2, 3, 2, 12, 5), "Tue Feb 03 2026 12:05 PM"},
        {moment(2026, 3, 4, 3, 11, 59), "Wed Mar 04 2026 11:59 AM"},
        {moment(2026, 4, 30, 4, 13, 1), "Thu Apr 30 2026 01:01 PM"},
        {moment(2026, 5, 1, 5, 23, 59), "Fri May 01 2026 11:59 PM"},
        {moment(2026, 6, 6, 6, 10, 10), "Sat Jun 06 2026 10:10 AM"},
        {moment(2027, 7, 1, 4, 9, 9), "Thu Jul 01 2027 09:09 AM"},
        {moment(2027, 8, 1, 0, 9, 9), "Sun Aug 01 2027 09:09 AM"},
        {moment(2027, 9, 1, 3, 9, 9), "Wed Sep 01 2027 09:09 AM"},
        {moment(2027, 10, 1, 5, 9, 9), "Fri Oct 01 2027 09:09 AM"},
        {moment(2028, 12, 31, 0, 9, 9), "Sun Dec 31 2028 09:09 AM"},
    };
    for (const EntryCase &row : cases)
        EXPECT_EQ(vant::traceEntry("m", row.when),
                  "Information : " + std::string(row.date) + " : [Installation Plugin] : m \n");
}

TEST(TraceEntry, MessageStandsAsItComes) {
    const std::tm when = moment(2026, 11, 15, 0, 2, 16);
    const std::string head = "Information : Sun Nov 15 2026 02:16 AM : [Installation Plugin] : ";
    EXPECT_EQ(vant::traceEntry("", when), head + " \n");
    EXPECT_EQ(vant::traceEntry("50 %d %s %@\n\xC3\xA9", when), head + "50 %d %s %@\n\xC3\xA9 \n");
    EXPECT_EQ(vant::traceEntry(std::string(100000, 'x'), when), head + std::string(100000, 'x') + " \n");
}

} // namespace
