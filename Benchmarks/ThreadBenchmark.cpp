// What a record costs when several threads record into one session, beside the same threads taking
// one mutex around a bare write of the same bytes.

#include "Benchmarks/BareFile.h"
#include "Benchmarks/ResultTable.h"

#include <algorithm>
#include <latch>
#include <mutex>
#include <thread>

namespace {

constexpr char kSection[] = "A record, several threads in one session | one mutex around write(2)";
constexpr char kTarget[] = "<= 1.3";
constexpr int kRounds = 201;
/// Of all threads together; so few that other programs rarely cut in.
constexpr std::size_t kRecords = 4'800;
constexpr std::size_t kThreads[] = {1, 2, 4, 8, 16};

using Clock = std::chrono::steady_clock;

struct Stretch {
    Clock::time_point begin, end;
};

/// Begins when the first thread does, and ends when the last one does.
double MicrosecondsOf(const std::vector<Stretch>& stretches) {
    const auto begin = std::ranges::min(stretches, {}, &Stretch::begin).begin;
    const auto end = std::ranges::max(stretches, {}, &Stretch::end).end;
    const std::chrono::duration<double, std::micro> taken = end - begin;
    return taken.count() / static_cast<double>(kRecords);
}

template <class Record>
double MeasureThreads(std::size_t count, Record record) {
    std::vector<Stretch> stretches(count);
    std::latch ready(static_cast<std::ptrdiff_t>(count));
    std::vector<std::jthread> threads;
    for (Stretch& stretch : stretches)
        threads.emplace_back([&, count] {
            ready.arrive_and_wait();
            stretch.begin = Clock::now();
            for (std::size_t i = 0; i < kRecords / count; ++i)
                record();
            stretch.end = Clock::now();
        });
    threads.clear();
    return MicrosecondsOf(stretches);
}

double MeasureLibrary(std::size_t threads, const BenchmarkAccount& account) {
    double result = 0;
    {
        const HostSession host(account);
        result = MeasureThreads(threads, [&host] { RecordCalls::LogEvent(host); });
    }
    account.RemoveDocuments();
    return result;
}

double MeasureFloor(std::size_t threads, const BenchmarkAccount& account,
                    const StoredSession& stored) {
    BareFile file(account, stored);
    std::mutex mutex;
    return MeasureThreads(threads, [&] {
        const std::lock_guard lock(mutex);
        file.WriteNext();
    });
}

std::string Library(std::size_t threads) {
    return "library " + std::to_string(threads);
}

std::string Floor(std::size_t threads) {
    return "floor " + std::to_string(threads);
}

Samples Measure(const BenchmarkAccount& account, const StoredSession& stored) {
    std::vector<Way> ways;
    for (const std::size_t threads : kThreads) {
        ways.push_back(
            {Library(threads), [=, &account] { return MeasureLibrary(threads, account); }});
        ways.push_back({Floor(threads),
                        [=, &account, &stored] { return MeasureFloor(threads, account, stored); }});
    }
    return Measurement::InTurn("threads", kRounds, ways);
}

} // namespace

int main() {
    const BenchmarkAccount account;
    HostCalls::Initialize(account);
    const StoredSession stored = StoreSession(account, RecordCalls::LogEvent);
    const Samples samples = Measure(account, stored);
    for (const std::size_t threads : kThreads) {
        const std::string what = std::to_string(threads) + (threads == 1 ? " thread" : " threads");
        ResultTable::Compare(kSection, what, samples, Library(threads), Floor(threads), kTarget);
        ResultTable::AddPoint("threads", static_cast<double>(threads),
                              samples.Median(Library(threads)), samples.Median(Floor(threads)));
    }
    return 0;
}
