#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

/// Adds the median of every measurement "<what>/call" to the results, beside the median of
/// "<what>/floor".
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    std::map<std::string, double> m_medians; ///< in microseconds
};
