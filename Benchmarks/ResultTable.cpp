#include "Benchmarks/ResultTable.h"

#include <fstream>

namespace {

std::string Text(const std::optional<double>& number) {
    return number ? std::to_string(*number) : "";
}

} // namespace

void ResultTable::Add(const Result& result) {
    std::ofstream("results.tsv", std::ios::app)
        << result.section << '\t' << result.what << '\t' << result.unit << '\t'
        << Text(result.library) << '\t' << Text(result.floor) << '\t' << Text(result.ratio) << '\t'
        << result.target << '\n';
}

void ResultTable::Compare(const std::string& section, const std::string& what,
                          const Samples& samples, const std::string& library,
                          const std::string& floor, const std::string& target) {
    Add({section, what, "us", samples.Median(library), samples.Median(floor),
         samples.Ratio(library, floor), target});
}

void ResultTable::AddPoint(const std::string& curve, double x, double library, double floor) {
    std::ofstream("curve-" + curve + ".tsv", std::ios::app)
        << x << '\t' << library << '\t' << floor << '\n';
}
