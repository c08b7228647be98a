#pragma once

#include "Benchmarks/Measurement.h"

#include <optional>
#include <string>

/// A row of the table of results.
struct Result {
    std::string section;
    std::string what;
    std::string unit;
    std::optional<double> library;
    std::optional<double> floor;
    std::optional<double> ratio;
    /// As "<= 1.25" or "= 0", of the ratio where there is one, else of the library's figure. Empty
    /// where there is none.
    std::string target;
};

/// The results of a whole run of benchmarks: files of the current folder to which each of them
/// adds its lines, tab-separated.
namespace ResultTable {

void Add(const Result& result);

/// Adds how two ways of the samples compare.
void Compare(const std::string& section, const std::string& what, const Samples& samples,
             const std::string& library, const std::string& floor, const std::string& target = "");

/// Adds a point to a curve of the plot: what a record costs at `x`, and what the floor does.
void AddPoint(const std::string& curve, double x, double library, double floor);

} // namespace ResultTable
