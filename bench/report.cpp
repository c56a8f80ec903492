#include "report.h"

#include <cstdio>

namespace bench {

namespace {

const char* Verdict(bool held)
{
    return held ? "ok" : "MISSED";
}

} // namespace

void PrintHeading(const char* text)
{
    printf("\n%-58s %10s %10s %7s %6s\n", text, "measured", "against", "ratio", "limit");
    fflush(stdout);
}

void PrintRatio(const char* what, double measured, double against, double limit)
{
    const double ratio = against > 0 ? measured / against : 0;
    printf("  %-56s %7.3f ms %7.3f ms %7.2f ", what, measured / 1000, against / 1000, ratio);
    if (limit > 0)
        printf("%6.2f  %s\n", limit, Verdict(against > 0 && ratio <= limit));
    else
        printf("%6s\n", "-");
    fflush(stdout);
}

void PrintCount(const char* what, uint64_t count, int wanted)
{
    printf("  %-56s %10llu %10s %7s ", what, count, "", "");
    if (wanted >= 0)
        printf("%6d  %s\n", wanted, Verdict(count == static_cast<uint64_t>(wanted)));
    else
        printf("%6s\n", "-");
    fflush(stdout);
}

void PrintNote(const char* text)
{
    printf("  %s\n", text);
    fflush(stdout);
}

} // namespace bench
