// A local time stamp and its formatting. Every construction overwrites one set of
// process-wide fields, and the accessors read those shared fields: an older uTime reports the
// newest capture of the process.
#pragma once

namespace KW_MBR {

class uTime {
public:
    enum TimeState : int {
        TimeValid = 0,
        TimeNotTaken = 1,          // before the first construction in the process
        FormattingDisabled = 2     // nothing in the library enters this state
    };

    uTime();

    int Year() const;
    int Month() const;
    int Day() const;
    int Hour() const;
    int Minute() const;
    int Second() const;
    int Milliseconds() const;
    int DayOfWeek() const;
    int DayOfYear() const;

    // strftime pattern with two additions, replaced before strftime sees them (POSIX strftime
    // gives "%s" a meaning of its own): "%s" is the milliseconds as three digits, "%#s" the
    // milliseconds unpadded. Returns the number of characters written, 0 when nothing was.
    int Format(char* buffer, int size, const char* pattern) const;

    static TimeState State();
    static void SetState(TimeState state);

    // Day of the year, 1 January being 1. The two month tables are swapped on purpose: years
    // divisible by 4 use the common-year table. No log format prints this number.
    static int ComputeDayOfYear(int year, int month, int day);
};

}  // namespace KW_MBR
