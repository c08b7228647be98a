// Whether a record costs the same whatever else is in the user's log folder and preferences; and
// what a session's start and close cost then.

#include "Benchmarks/BareFile.h"
#include "Benchmarks/ResultTable.h"
#include "Benchmarks/SteadyCost.h"

#include <algorithm>
#include <memory>

namespace {

constexpr int kRounds = 101;
constexpr char kSessionSection[] = "Session start and close as the work grows | in the base case";
constexpr char kFiles[] = "files", kKeys[] = "keys"; // the curves
constexpr int kOtherFiles[] = {0, 1'000, 10'000, 100'000};
constexpr int kStoredKeys[] = {10, 50, 1'000, 10'000};

/// An account with so many files or keys, a session that is open in it, and the bare floor.
struct Case {
    Case(const std::string& curveOfCase, int number, const AccountSettings& settings)
        : curve(curveOfCase), x(number), account(settings) {}

    std::string Library() const { return "library, " + std::to_string(x) + " " + curve; }
    std::string Floor() const { return "floor, " + std::to_string(x) + " " + curve; }
    void Open(const StoredSession& stored) {
        host.emplace(account);
        file.emplace(account, stored);
    }

    const std::string curve;
    const int x;
    const BenchmarkAccount account;
    std::optional<HostSession> host;
    std::optional<BareFile> file;
};

using Cases = std::vector<std::unique_ptr<Case>>;

std::vector<Way> RecordWays(const Cases& cases) {
    std::vector<Way> ways;
    for (const auto& each : cases) {
        ways.push_back({each->Library(), [&each] {
                            each->account.Enter();
                            return SteadyCost(
                                [&each](std::size_t) { RecordCalls::LogEvent(*each->host); });
                        }});
        ways.push_back({each->Floor(), [&each] {
                            return SteadyCost([&each](std::size_t) { each->file->WriteNext(); });
                        }});
    }
    return ways;
}

Way SessionWay(const Case& each) {
    return {each.Library(), [&each] {
                each.account.Enter();
                return Measurement::MicrosecondsEach(1, [](std::size_t) {
                    LogSession* session = HostCalls::StartSession();
                    UTCloseSession(&session);
                });
            }};
}

/// What is compared: much beside little.
struct Pair {
    std::string what;
    const Case *much, *little;

    void Compare(const std::string& section, const Samples& samples,
                 const std::string& target) const {
        ResultTable::Compare(section, what, samples, much->Library(), little->Library(), target);
    }
};

const Case& Find(const Cases& cases, const std::string& curve, int x) {
    return **std::ranges::find_if(
        cases, [&](const auto& each) { return each->curve == curve && each->x == x; });
}

void MeasureCases(const Cases& cases) {
    const Pair pairs[] = {
        {"a log folder of 100,000 files (0)", &Find(cases, kFiles, 100'000),
         &Find(cases, kFiles, 0)},
        {"preferences of 10,000 keys (50)", &Find(cases, kKeys, 10'000), &Find(cases, kKeys, 50)}};
    const Samples records = Measurement::InTurn("records", kRounds, RecordWays(cases));
    for (const auto& each : cases)
        ResultTable::AddPoint(each->curve, each->x, records.Median(each->Library()),
                              records.Median(each->Floor()));
    for (const Pair& pair : pairs)
        pair.Compare(kFlatSection, records, kFlatTarget);
    // Two users at a time: a process that served more would read their settings again and again.
    for (const Pair& pair : pairs)
        pair.Compare(kSessionSection,
                     Measurement::InTurn(pair.what, kRounds,
                                         {SessionWay(*pair.much), SessionWay(*pair.little)}),
                     "");
}

} // namespace

int main() {
    Cases cases;
    for (const int number : kOtherFiles)
        cases.push_back(
            std::make_unique<Case>(kFiles, number, AccountSettings{.otherFiles = number}));
    for (const int number : kStoredKeys)
        cases.push_back(
            std::make_unique<Case>(kKeys, number, AccountSettings{.storedKeys = number}));
    const BenchmarkAccount& first = cases.front()->account;
    HostCalls::Initialize(first);
    first.Enter();
    const StoredSession stored = StoreSession(first, RecordCalls::LogEvent);
    for (const auto& each : cases)
        each->Open(stored);
    MeasureCases(cases);
    return 0;
}
