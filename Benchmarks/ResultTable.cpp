#include "Benchmarks/ResultTable.h"

#include <fstream>

void ResultTable::Add(const std::string& what, const std::string& unit, double library,
                      std::optional<double> floor) {
    std::ofstream file("benchmark-results", std::ios::app);
    file << what << '\t' << unit << '\t' << library << '\t';
    if (floor)
        file << *floor;
    file << '\n';
}
