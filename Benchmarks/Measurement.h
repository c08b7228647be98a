#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// What one round measured, by name, in microseconds.
using Figures = std::map<std::string, double>;

/// What many rounds measured.
class Samples {
public:
    void Add(const Figures& round) { m_rounds.push_back(round); }
    double Median(const std::string& name) const;
    /// The median of the rounds' ratios: what slows down a whole round does not touch it.
    double Ratio(const std::string& name, const std::string& reference) const;

private:
    std::vector<Figures> m_rounds;
};

/// One of several ways to do the same work; measures it once.
struct Way {
    std::string name;
    std::function<double()> measure;
};

namespace Measurement {

/// Has Google Benchmark repeat a round. The first few are for warming up and do not count.
Samples Repeat(const std::string& name, int rounds, const std::function<Figures()>& round);

/// Every way once in a round, forwards and backwards alternately: none always has the better place.
Samples InTurn(const std::string& name, int rounds, const std::vector<Way>& ways);

double MedianOf(std::vector<double> values);

/// What one unit of work takes, when it is done `count` times.
template <class Work>
double MicrosecondsEach(std::size_t count, Work work) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point begin = Clock::now();
    for (std::size_t i = 0; i < count; ++i)
        work(i);
    const std::chrono::duration<double, std::micro> taken = Clock::now() - begin;
    return taken.count() / static_cast<double>(count);
}

} // namespace Measurement
