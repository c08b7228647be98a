#pragma once

#include "Benchmarks/Measurement.h"

/// What a record costs in a long session: the median of small groups of records, so that a file
/// which fills up once in a while does not show. Each group begins a page of its file.
template <class Record>
double SteadyCost(Record record) {
    constexpr std::size_t kGroups = 16, kRecordsOfGroup = 64;
    std::vector<double> groups;
    for (std::size_t i = 0; i < kGroups; ++i)
        groups.push_back(Measurement::MicrosecondsEach(kRecordsOfGroup, record));
    return Measurement::MedianOf(std::move(groups));
}

inline constexpr std::size_t kRecordsOfSteadyCost = 1024;
inline constexpr char kFlatSection[] = "A record as the work grows | the same in the base case";
inline constexpr char kFlatTarget[] = "<= 1.1";
