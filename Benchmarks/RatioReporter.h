#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

/// Prints, after the usual table, the median of every measurement "<what>/call" as a multiple of
/// the median of "<what>/write".
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    std::map<std::string, double> m_medians;
};
