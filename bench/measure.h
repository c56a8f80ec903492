// Measuring: what is compared is run by turns (A B A B ...), so that whatever else the machine does meets
// both, and the medians are compared.
#pragma once

#include <functional>
#include <vector>

namespace bench {

double NowMicroseconds();

class Stopwatch {
  public:
    Stopwatch() : m_start(NowMicroseconds()) {}
    double Microseconds() const { return NowMicroseconds() - m_start; }

  private:
    double m_start;
};

double Median(std::vector<double> values); // 0 for none

// Each runs once and answers how long it took, in microseconds; work that is not to be counted is done
// outside its own stopwatch.
using Timed = std::function<double()>;

constexpr int kRepetitions = 15;

// The medians of several pieces of work, run by turns after one round that does not count.
std::vector<double> MediansByTurns(const std::vector<Timed>& pieces, int repetitions = kRepetitions);

} // namespace bench
