#include "measure.h"

#include <windows.h>

#include <algorithm>

namespace bench {

double NowMicroseconds()
{
    LARGE_INTEGER now{}, frequency{};
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart) * 1e6 / static_cast<double>(frequency.QuadPart);
}

double Median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::vector<double> MediansByTurns(const std::vector<Timed>& pieces, int repetitions)
{
    std::vector<std::vector<double>> times(pieces.size());
    for (int turn = 0; turn <= repetitions; ++turn) {
        for (size_t i = 0; i < pieces.size(); ++i) {
            const double time = pieces[i]();
            if (turn)
                times[i].push_back(time);
        }
    }
    std::vector<double> medians;
    medians.reserve(times.size());
    for (auto& all : times)
        medians.push_back(Median(std::move(all)));
    return medians;
}

} // namespace bench
