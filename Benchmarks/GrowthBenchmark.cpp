// Whether a record costs the same as a session grows long, and as sessions grow many. Bare writes
// to as many files of the same length show what the system contributes.

#include "Benchmarks/BareFile.h"
#include "Benchmarks/ResultTable.h"
#include "Benchmarks/SteadyCost.h"

#include <memory>

namespace {

constexpr int kRounds = 51;
/// Which records of a session are looked at, those before and after them included.
constexpr std::size_t kPositions[] = {1'000, 2'000, 5'000, 10'000, 20'000, 50'000, 100'000};
constexpr std::size_t kSessions[] = {1, 2, 4, 8, 16, 32};

std::string LibraryAt(std::size_t x) {
    return "library " + std::to_string(x);
}

std::string FloorAt(std::size_t x) {
    return "floor " + std::to_string(x);
}

template <class Record>
void MeasurePositions(Figures& figures, std::string (*name)(std::size_t), Record record) {
    std::size_t done = 0;
    for (const std::size_t position : kPositions) {
        const std::size_t begin = position - kRecordsOfSteadyCost / 2;
        for (; done < begin; ++done)
            record(done);
        figures[name(position)] = SteadyCost(record);
        done += kRecordsOfSteadyCost;
    }
}

Figures MeasureLongSession(const BenchmarkAccount& account, const StoredSession& stored) {
    Figures figures;
    {
        const HostSession host(account);
        MeasurePositions(figures, LibraryAt, [&host](std::size_t) { RecordCalls::LogEvent(host); });
    }
    account.RemoveDocuments();
    BareFile file(account, stored);
    MeasurePositions(figures, FloorAt, [&file](std::size_t) { file.WriteNext(); });
    return figures;
}

/// Records into each in turn.
template <class Target, class Record, class... Arguments>
double MeasureMany(std::size_t count, Record record, const Arguments&... arguments) {
    std::vector<std::unique_ptr<Target>> targets;
    for (std::size_t i = 0; i < count; ++i)
        targets.push_back(std::make_unique<Target>(arguments...));
    std::size_t next = 0;
    const auto recordNext = [&](std::size_t) {
        record(*targets[next]);
        next = (next + 1) % count;
    };
    Measurement::MicrosecondsEach(kRecordsOfSteadyCost / 4, recordNext);
    return SteadyCost(recordNext);
}

std::vector<Way> SessionWays(const BenchmarkAccount& account, const StoredSession& stored) {
    std::vector<Way> ways;
    for (const std::size_t count : kSessions) {
        ways.push_back({LibraryAt(count), [count, &account] {
                            const double cost =
                                MeasureMany<HostSession>(count, RecordCalls::LogEvent, account);
                            account.RemoveDocuments();
                            return cost;
                        }});
        ways.push_back({FloorAt(count), [count, &account, &stored] {
                            return MeasureMany<BareFile>(
                                count, [](BareFile& file) { file.WriteNext(); }, account, stored);
                        }});
    }
    return ways;
}

template <class Range>
void AddCurve(const std::string& name, const Samples& samples, const Range& range) {
    for (const std::size_t x : range)
        ResultTable::AddPoint(name, static_cast<double>(x), samples.Median(LibraryAt(x)),
                              samples.Median(FloorAt(x)));
}

} // namespace

int main() {
    const BenchmarkAccount account;
    HostCalls::Initialize(account);
    const StoredSession stored = StoreSession(account, RecordCalls::LogEvent);
    const Samples ofLength = Measurement::Repeat(
        "records of a session", kRounds, [&] { return MeasureLongSession(account, stored); });
    ResultTable::Compare(kFlatSection, "the 100,000th record (the 1,000th)", ofLength,
                         LibraryAt(100'000), LibraryAt(1'000), kFlatTarget);
    AddCurve("records", ofLength, kPositions);
    const Samples ofSessions =
        Measurement::InTurn("open sessions", kRounds, SessionWays(account, stored));
    ResultTable::Compare(kFlatSection, "16 open sessions (1)", ofSessions, LibraryAt(16),
                         LibraryAt(1), kFlatTarget);
    AddCurve("sessions", ofSessions, kSessions);
    return 0;
}
