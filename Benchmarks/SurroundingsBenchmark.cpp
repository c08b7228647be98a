// Whether a record costs the same whatever else is in the user's log folder and preferences; and
// what a session's start and close cost then.

#include "Benchmarks/BareFile.h"
#include "Benchmarks/ResultTable.h"
#include "Benchmarks/SteadyCost.h"

#include <memory>

namespace {

constexpr int kRounds = 101;
constexpr char kSessionSection[] = "Session start and close as the work grows | in the base case";
constexpr int kOtherFiles[] = {0, 1'000, 10'000, 100'000};
constexpr int kStoredKeys[] = {10, 50, 1'000, 10'000};
constexpr int kBaseFiles = 0, kBaseKeys = 50;

/// An account with so many files or keys, a session that is open in it, and the bare floor.
struct Case {
    Case(int size, const AccountSettings& settings)
        : name(std::to_string(size)), account(settings), x(size) {}

    void Open(const StoredSession& stored) {
        host.emplace(account);
        file.emplace(account, stored);
    }

    const std::string name;
    const BenchmarkAccount account;
    const double x;
    std::optional<HostSession> host;
    std::optional<BareFile> file;
};

using Cases = std::vector<std::unique_ptr<Case>>;

std::vector<Way> RecordWays(const Cases& cases) {
    std::vector<Way> ways;
    for (const auto& each : cases) {
        ways.push_back({"library " + each->name, [&each] {
                            each->account.Enter();
                            return SteadyCost(
                                [&each](std::size_t) { RecordCalls::LogEvent(*each->host); });
                        }});
        ways.push_back({"floor " + each->name, [&each] {
                            return SteadyCost([&each](std::size_t) { each->file->WriteNext(); });
                        }});
    }
    return ways;
}

std::vector<Way> SessionWays(const Cases& cases) {
    std::vector<Way> ways;
    for (const auto& each : cases)
        ways.push_back({"library " + each->name, [&each] {
                            each->account.Enter();
                            return Measurement::MicrosecondsEach(1, [](std::size_t) {
                                LogSession* session = HostCalls::StartSession();
                                UTCloseSession(&session);
                            });
                        }});
    return ways;
}

void MeasureCases(const std::string& curve, const std::string& what, int base, Cases& cases,
                  const StoredSession& stored) {
    for (const auto& each : cases)
        each->Open(stored);
    const std::string reference = "library " + std::to_string(base);
    const Samples records = Measurement::InTurn(curve, kRounds, RecordWays(cases));
    const Samples sessions =
        Measurement::InTurn(curve + " and sessions", kRounds, SessionWays(cases));
    const std::string library = "library " + cases.back()->name;
    ResultTable::Compare(kFlatSection, what, records, library, reference, kFlatTarget);
    ResultTable::Compare(kSessionSection, what, sessions, library, reference);
    for (const auto& each : cases)
        ResultTable::AddPoint(curve, each->x, records.Median("library " + each->name),
                              records.Median("floor " + each->name));
}

} // namespace

int main() {
    Cases files, keys;
    for (const int count : kOtherFiles)
        files.push_back(std::make_unique<Case>(count, AccountSettings{.otherFiles = count}));
    for (const int count : kStoredKeys)
        keys.push_back(std::make_unique<Case>(count, AccountSettings{.storedKeys = count}));
    HostCalls::Initialize(files.front()->account);
    const BenchmarkAccount& account = files.front()->account;
    account.Enter();
    const StoredSession stored = StoreSession(account, RecordCalls::LogEvent);
    MeasureCases("files", "a log folder of 100,000 files (0)", kBaseFiles, files, stored);
    MeasureCases("keys", "preferences of 10,000 keys (50)", kBaseKeys, keys, stored);
    return 0;
}
