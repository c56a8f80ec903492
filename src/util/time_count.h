// TimeCount: an unsigned 64-bit count of 100-nanosecond units in FILETIME layout. As an instant it counts
// from 1 January 1601, 00:00, in local wall-clock time; as a duration it counts from zero. Additions wrap at
// 64 bits.
#pragma once

#include <windows.h>

#include <compare>
#include <cstdint>

class TimeCount {
  public:
    static constexpr uint64_t kUnitsPerSecond = 10'000'000;
    static constexpr uint64_t kUnitsPerMinute = 600'000'000;

    constexpr TimeCount() = default;
    explicit constexpr TimeCount(uint64_t units) : m_units(units) {}
    constexpr TimeCount(DWORD low, DWORD high) { Set(low, high); }
    explicit constexpr TimeCount(const FILETIME& time) : TimeCount(time.dwLowDateTime, time.dwHighDateTime) {}

    constexpr void Set(DWORD low, DWORD high) { m_units = (uint64_t{high} << 32) | low; }
    constexpr void Zero() { m_units = 0; }

    // n may be negative; the product is formed in 64 bits and added with wrap-around.
    constexpr void AddDays(int32_t n) { Add(n, kUnitsPerMinute * 60 * 24); }
    constexpr void AddHours(int32_t n) { Add(n, kUnitsPerMinute * 60); }
    constexpr void AddMinutes(int32_t n) { Add(n, kUnitsPerMinute); }
    constexpr void AddSeconds(int32_t n) { Add(n, kUnitsPerSecond); }

    constexpr uint64_t Units() const { return m_units; }
    constexpr DWORD Low() const { return static_cast<DWORD>(m_units); }
    constexpr DWORD High() const { return static_cast<DWORD>(m_units >> 32); }
    constexpr FILETIME ToFileTime() const { return {Low(), High()}; }

    // The value taken as an instant. False, with out untouched, for a value that FileTimeToSystemTime refuses
    // (2^63 and above, or past the year 30827).
    [[nodiscard]] bool ToSystemTime(SYSTEMTIME* out) const;
    // False, with the value untouched, for a time that is no date.
    [[nodiscard]] bool FromSystemTime(const SYSTEMTIME& time);

    friend constexpr bool operator==(TimeCount, TimeCount) = default;
    friend constexpr auto operator<=>(TimeCount, TimeCount) = default;
    friend constexpr TimeCount operator+(TimeCount a, TimeCount b)
    {
        return TimeCount(a.m_units + b.m_units);
    }
    friend constexpr TimeCount operator-(TimeCount a, TimeCount b)
    {
        return TimeCount(a.m_units - b.m_units);
    }

  private:
    constexpr void Add(int32_t n, uint64_t units) { m_units += static_cast<uint64_t>(int64_t{n}) * units; }

    uint64_t m_units = 0;
};
