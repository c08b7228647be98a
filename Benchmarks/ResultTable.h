#pragma once

#include <optional>
#include <string>

/// The results of a whole run of benchmarks: a file of the current folder to which each of them
/// adds its lines, tab-separated: what was measured, the unit, the library's figure and the
/// floor's, which may be empty.
namespace ResultTable {

void Add(const std::string& what, const std::string& unit, double library,
         std::optional<double> floor = std::nullopt);

} // namespace ResultTable
