#include "Benchmarks/Measurement.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

constexpr int kWarmingRounds = 2;
constexpr double kMicroseconds = 1e6;

/// Lines without a description of the machine before them.
class LineReporter : public benchmark::ConsoleReporter {
public:
    LineReporter() : ConsoleReporter(OO_None) {}
    bool ReportContext(const Context& context) override {
        name_field_width_ = context.name_field_width;
        return true;
    }
};

} // namespace

double Samples::Median(const std::string& name) const {
    std::vector<double> values;
    for (const Figures& round : m_rounds)
        values.push_back(round.at(name));
    return Measurement::MedianOf(std::move(values));
}

double Samples::Ratio(const std::string& name, const std::string& reference) const {
    std::vector<double> ratios;
    for (const Figures& round : m_rounds)
        ratios.push_back(round.at(name) / round.at(reference));
    return Measurement::MedianOf(std::move(ratios));
}

double Measurement::MedianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

Samples Measurement::Repeat(const std::string& name, int rounds,
                            const std::function<Figures()>& round) {
    Samples samples;
    const auto measure = [&](benchmark::State& state) {
        for (auto _ : state) {
            const Figures figures = round();
            samples.Add(figures);
            state.SetIterationTime(figures.begin()->second / kMicroseconds);
            for (const auto& [way, microseconds] : figures)
                state.counters[way] = microseconds;
        }
    };
    for (int i = 0; i < kWarmingRounds; ++i)
        round();
    benchmark::RegisterBenchmark(name.c_str(), measure)
        ->Iterations(1)
        ->Repetitions(rounds)
        ->ReportAggregatesOnly()
        ->UseManualTime();
    LineReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::ClearRegisteredBenchmarks();
    return samples;
}

Samples Measurement::InTurn(const std::string& name, int rounds, const std::vector<Way>& ways) {
    std::vector<const Way*> order;
    for (const Way& way : ways)
        order.push_back(&way);
    return Repeat(name, rounds, [&order] {
        Figures figures;
        for (const Way* way : order)
            figures[way->name] = way->measure();
        std::ranges::reverse(order);
        return figures;
    });
}
