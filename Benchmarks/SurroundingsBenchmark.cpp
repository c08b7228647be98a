// Whether a record costs the same whatever else is in the user's log folder and preferences; and
// what a session's start and close cost then.

#include "Benchmarks/BareFile.h"
#include "Benchmarks/ResultTable.h"
#include "Benchmarks/SteadyCost.h"

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

std::vector<Way> SessionWays(const Cases& cases) {
    std::vector<Way> ways;
    for (const auto& each : cases)
        ways.push_back({each->Library(), [&each] {
                            each->account.Enter();
                            return Measurement::MicrosecondsEach(1, [](std::size_t) {
                                LogSession* session = HostCalls::StartSession();
                                UTCloseSession(&session);
                            });
                        }});
    return ways;
}

void Compare(const std::string& section, const Samples& samples, const std::string& target) {
    ResultTable::Compare(section, "a log folder of 100,000 files (0)", samples,
                         "library, 100000 files", "library, 0 files", target);
    ResultTable::Compare(section, "preferences of 10,000 keys (50)", samples, "library, 10000 keys",
                         "library, 50 keys", target);
}

void MeasureCases(const Cases& cases) {
    const Samples records = Measurement::InTurn("records", kRounds, RecordWays(cases));
    Compare(kFlatSection, records, kFlatTarget);
    for (const auto& each : cases)
        ResultTable::AddPoint(each->curve, each->x, records.Median(each->Library()),
                              records.Median(each->Floor()));
    Compare(kSessionSection, Measurement::InTurn("sessions", kRounds, SessionWays(cases)), "");
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
