// What a record costs the host, beside the system call that stores it.
//
// A block of calls, which stays within one file of a session, alternates with a block of bare
// writes of the very bytes that the library has stored for such calls. The sustained kind goes
// through many files.

#include "Benchmarks/BareFile.h"
#include "Benchmarks/ResultTable.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <numeric>

namespace {

using RecordCalls::Call;

constexpr char kShort[] = "A record of short strings | write(2) of the same bytes";
constexpr char kLong[] = "A record of long values | write(2) of the same bytes";
constexpr char kSustained[] = "File after file | the same files by bare system calls";
constexpr char kClearTarget[] = "<= 1.25", kObfuscatedTarget[] = "<= 1.35",
               kLongTarget[] = "<= 1.5";
constexpr int kRounds = 401;
constexpr int kSustainedRounds = 101;
constexpr std::size_t kSustainedRecords = 5'000;
/// Sessions start alike but for a few bytes, which may shift the end of a file by a record.
constexpr std::size_t kSpareRecords = 2;
constexpr std::size_t kRecordsAroundSplit = 2 * kSpareRecords + 1;

struct Mode {
    const char* name;
    const BenchmarkAccount& account;
    const char* target;
};

/// Calls before those that are measured: the first ones after a start find cold caches.
std::size_t WarmingRecords(std::size_t count) {
    return std::min<std::size_t>(32, count / 8);
}

template <Call call>
double MeasureCalls(const BenchmarkAccount& account, std::size_t count) {
    double result = 0;
    {
        const HostSession host(account);
        const auto record = [&host](std::size_t) { call(host); };
        Measurement::MicrosecondsEach(WarmingRecords(count), record);
        result = Measurement::MicrosecondsEach(count - WarmingRecords(count), record);
    }
    account.RemoveDocuments();
    return result;
}

/// The library writes what it has just composed. What the floor writes is not to come from farther
/// away than that.
void BringNear(const StoredSession& stored) {
    std::size_t sum = 0;
    for (const std::string& record : stored.records)
        sum = std::accumulate(record.begin(), record.end(), sum);
    benchmark::DoNotOptimize(sum);
}

double MeasureWrites(const BenchmarkAccount& account, const StoredSession& stored,
                     std::size_t count) {
    const BareFile file(account, stored);
    BringNear(stored);
    const int descriptor = file.Descriptor();
    const std::string* next = stored.records.data();
    const auto write = [&next, descriptor](std::size_t) {
        if (::write(descriptor, next->data(), next->size()) < 0)
            throw std::runtime_error("bare write");
        ++next;
    };
    Measurement::MicrosecondsEach(WarmingRecords(count), write);
    return Measurement::MicrosecondsEach(count - WarmingRecords(count), write);
}

/// All kinds of records, measured in turn: what slows the machine down for a while meets all.
class Comparisons {
public:
    template <Call call>
    void Add(const std::string& section, const std::string& name, const Mode& mode,
             const std::string& target) {
        const BenchmarkAccount& account = mode.account;
        const auto stored = std::make_shared<const StoredSession>(StoreSession(account, call));
        const std::size_t count = stored->records.size() - kSpareRecords;
        const Row row{section, name + ", " + mode.name, target};
        m_ways.push_back(
            {row.Library(), [&account, count] { return MeasureCalls<call>(account, count); }});
        m_ways.push_back({row.Floor(), [&account, stored, count] {
                              return MeasureWrites(account, *stored, count);
                          }});
        m_rows.push_back(row);
    }
    void AddShort(const Mode& mode) {
        using namespace RecordCalls;
        Add<LogEvent>(kShort, "UTLogEvent", mode, mode.target);
        Add<AddToSession>(kShort, "UTAddToSession", mode, mode.target);
        Add<AddToGroup>(kShort, "UTAddToGroup", mode, mode.target);
    }
    void AddLong(const Mode& mode) {
        using namespace RecordCalls;
        Add<LogEventOfMarkup>(kLong, "UTLogEvent, 3 x 128 of '<'", mode, kLongTarget);
        Add<AddToSession<kMarkup>>(kLong, "UTAddToSession, 512 of '<'", mode, kLongTarget);
        Add<AddToGroup<kMarkup>>(kLong, "UTAddToGroup, 512 of '<'", mode, kLongTarget);
        Add<AddToSession<kMixture>>(kLong, "UTAddToSession, 512 of mark-up and text", mode, "");
        Add<AddToSession<kWorld>>(kLong, "UTAddToSession, 512 of non-ASCII", mode, "");
    }

    void Measure() const {
        const Samples samples = Measurement::InTurn("records", kRounds, m_ways);
        for (const Row& row : m_rows)
            ResultTable::Compare(row.section, row.what, samples, row.Library(), row.Floor(),
                                 row.target);
    }

private:
    struct Row {
        std::string section, what, target;

        std::string Library() const { return what + ": library"; }
        std::string Floor() const { return what + ": floor"; }
    };

    std::vector<Way> m_ways;
    std::vector<Row> m_rows;
};

/// `prelude` records that do not count, then `count` that do.
double MeasureSession(const BenchmarkAccount& account, std::size_t prelude, std::size_t count) {
    double result = 0;
    {
        const HostSession host(account);
        const auto record = [&host](std::size_t) { RecordCalls::LogEvent(host); };
        Measurement::MicrosecondsEach(prelude, record);
        result = Measurement::MicrosecondsEach(count, record);
    }
    account.RemoveDocuments();
    return result;
}

double MeasureFiles(const BenchmarkAccount& account, const StoredSession& stored,
                    std::size_t prelude, std::size_t count) {
    BareFile file(account, stored);
    const auto write = [&file](std::size_t) { file.WriteNext(); };
    Measurement::MicrosecondsEach(prelude, write);
    return Measurement::MicrosecondsEach(count, write);
}

void CompareFiles(const std::string& name, const Mode& mode, const StoredSession& stored,
                  std::size_t prelude, std::size_t count, int rounds) {
    const std::string what = name + ", " + mode.name;
    const Samples samples = Measurement::InTurn(
        what, rounds,
        {{"library", [&] { return MeasureSession(mode.account, prelude, count); }},
         {"floor", [&] { return MeasureFiles(mode.account, stored, prelude, count); }}});
    ResultTable::Compare(kSustained, what, samples, "library", "floor");
}

void CompareSustained(const Mode& mode) {
    const StoredSession stored = StoreSession(mode.account, RecordCalls::LogEvent);
    CompareFiles("UTLogEvent, each of 5,000", mode, stored, 0, kSustainedRecords, kSustainedRounds);
    CompareFiles("UTLogEvent, each of 5, one of them splits", mode, stored,
                 stored.records.size() - kSpareRecords - 1, kRecordsAroundSplit, kRounds);
}

} // namespace

int main() {
    const BenchmarkAccount clear({.obfuscate = false}), obfuscated;
    const Mode modes[] = {{"in clear", clear, kClearTarget},
                          {"obfuscated", obfuscated, kObfuscatedTarget}};
    HostCalls::Initialize(obfuscated);
    Comparisons comparisons;
    for (const Mode& mode : modes)
        comparisons.AddShort(mode);
    for (const Mode& mode : modes)
        comparisons.AddLong(mode);
    comparisons.Measure();
    std::ranges::for_each(modes, CompareSustained);
    return 0;
}
