#include "uTime.h"

#include <atomic>
#include <cstdio>
#include <ctime>
#include <mutex>
#include <string>

#include "Platform.h"

namespace KW_MBR {

namespace {

struct SharedTimeFields {
    std::mutex lock;  // loggers of different files may take time stamps at once
    Platform::LocalTime time{};
    int dayOfYear = 0;
};

SharedTimeFields& Shared() {
    static SharedTimeFields* fields = new SharedTimeFields;  // outlives every static destructor
    return *fields;
}

std::atomic<int>& SharedState() {
    static std::atomic<int> state{uTime::TimeNotTaken};
    return state;
}

Platform::LocalTime Snapshot(int* dayOfYear = nullptr) {
    SharedTimeFields& fields = Shared();
    std::lock_guard<std::mutex> guard(fields.lock);
    if (dayOfYear != nullptr) *dayOfYear = fields.dayOfYear;
    return fields.time;
}

const int kLeapYearStarts[12] = {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335};
const int kCommonYearStarts[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

// Expands the two millisecond directives and leaves every other directive (including "%%")
// for strftime.
std::string ExpandMilliseconds(const char* pattern, int milliseconds) {
    char padded[16];
    char plain[16];
    std::snprintf(padded, sizeof padded, "%03d", milliseconds);
    std::snprintf(plain, sizeof plain, "%d", milliseconds);

    std::string expanded;
    for (const char* p = pattern; *p != '\0'; ++p) {
        if (p[0] != '%') {
            expanded += *p;
        } else if (p[1] == 's') {
            expanded += padded;
            ++p;
        } else if (p[1] == '#' && p[2] == 's') {
            expanded += plain;
            p += 2;
        } else if (p[1] == '%') {
            expanded += "%%";
            ++p;
        } else {
            expanded += '%';
        }
    }
    return expanded;
}

}  // namespace

uTime::uTime() {
    const Platform::LocalTime now = Platform::CurrentLocalTime();
    {
        SharedTimeFields& fields = Shared();
        std::lock_guard<std::mutex> guard(fields.lock);
        fields.time = now;
        fields.dayOfYear = ComputeDayOfYear(now.year, now.month, now.day);
    }
    SharedState().store(TimeValid);
}

int uTime::Year() const { return Snapshot().year; }
int uTime::Month() const { return Snapshot().month; }
int uTime::Day() const { return Snapshot().day; }
int uTime::Hour() const { return Snapshot().hour; }
int uTime::Minute() const { return Snapshot().minute; }
int uTime::Second() const { return Snapshot().second; }
int uTime::Milliseconds() const { return Snapshot().milliseconds; }
int uTime::DayOfWeek() const { return Snapshot().dayOfWeek; }

int uTime::DayOfYear() const {
    int dayOfYear = 0;
    Snapshot(&dayOfYear);
    return dayOfYear;
}

int uTime::ComputeDayOfYear(int year, int month, int day) {
    if (month < 1 || month > 12) return day;
    const int* starts = (year % 4 != 0) ? kLeapYearStarts : kCommonYearStarts;
    return starts[month - 1] + day;
}

uTime::TimeState uTime::State() { return static_cast<TimeState>(SharedState().load()); }

void uTime::SetState(TimeState state) { SharedState().store(state); }

int uTime::Format(char* buffer, int size, const char* pattern) const {
    if (buffer == nullptr || size <= 0) return 0;
    const TimeState state = State();
    if (state == FormattingDisabled) return 0;
    if (state == TimeNotTaken) {
        const int written = std::snprintf(buffer, static_cast<std::size_t>(size), "%s", "Invalid time");
        return written < size ? written : size - 1;
    }
    if (pattern == nullptr) {
        buffer[0] = '\0';
        return 0;
    }

    int dayOfYear = 0;
    const Platform::LocalTime time = Snapshot(&dayOfYear);
    std::tm parts{};
    parts.tm_year = time.year - 1900;
    parts.tm_mon = time.month - 1;
    parts.tm_mday = time.day;
    parts.tm_hour = time.hour;
    parts.tm_min = time.minute;
    parts.tm_sec = time.second;
    parts.tm_wday = time.dayOfWeek;
    parts.tm_yday = dayOfYear - 1;
    parts.tm_isdst = -1;

    const std::string expanded = ExpandMilliseconds(pattern, time.milliseconds);
    const std::size_t written = std::strftime(buffer, static_cast<std::size_t>(size), expanded.c_str(), &parts);
    if (written == 0) buffer[0] = '\0';  // strftime leaves the buffer undefined when it does not fit
    return static_cast<int>(written);
}

}  // namespace KW_MBR
