// What a record costs the host, beside the system call that stores it.
//
// One measurement records with the library, its partner writes the same bytes to a file of the
// same folder with a bare write(2). Both run in turn, many times; medians are compared. A session
// of the first kind stays within one file. The sustained kind goes through many: its partner
// creates and renames the same files.

#include "Benchmarks/HostCalls.h"
#include "Benchmarks/RatioReporter.h"

#include <fcntl.h>
#include <unistd.h>

#include <functional>

namespace {

constexpr std::size_t kFileBytes = 102'400;
constexpr std::size_t kStartBytes = 8'192; ///< more than what a session writes at its start
constexpr int kRepetitions = 201;
constexpr benchmark::IterationCount kSustainedRecords = 50'000;
constexpr int kSustainedRepetitions = 9;

using Call = std::function<void(LogSession*)>;

void MeasureCall(benchmark::State& state, const BenchmarkAccount& account, const Call& call) {
    LogSession* session = HostCalls::StartSession();
    for (auto _ : state)
        call(session);
    UTCloseSession(&session);
    account.RemoveDocuments();
}

/// A file that is renamed and followed by another one when it is full.
class BareFile {
public:
    explicit BareFile(const std::string& folder) : m_path(folder + "/bare-write") { Open(); }
    ~BareFile() { Close(); }

    bool Write(const std::string& record) {
        if (m_bytes + record.size() > kFileBytes) {
            Close();
            Open();
        }
        m_bytes += record.size();
        return ::write(m_file, record.data(), record.size()) == static_cast<ssize_t>(record.size());
    }

private:
    void Open() {
        m_file = ::open(m_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        m_bytes = 0;
    }
    void Close() {
        ::close(m_file);
        ::rename(m_path.c_str(), (m_path + std::to_string(m_index++) + ".xml").c_str());
    }

    std::string m_path;
    std::size_t m_bytes = 0;
    int m_file = -1;
    int m_index = 0;
};

void MeasureWrite(benchmark::State& state, const BenchmarkAccount& account,
                  const std::string& record) {
    {
        BareFile file(account.LogFolder());
        for (auto _ : state)
            if (!file.Write(record))
                throw std::runtime_error("bare write");
    }
    account.RemoveDocuments();
}

void Register(const std::string& name, const BenchmarkAccount& account, const std::string& record,
              const Call& call, benchmark::IterationCount records, int repetitions) {
    benchmark::RegisterBenchmark(
        (name + "/call").c_str(),
        [&account, call](benchmark::State& state) { MeasureCall(state, account, call); })
        ->Iterations(records)
        ->Repetitions(repetitions)
        ->ReportAggregatesOnly();
    benchmark::RegisterBenchmark(
        (name + "/floor").c_str(),
        [&account, record](benchmark::State& state) { MeasureWrite(state, account, record); })
        ->Iterations(records)
        ->Repetitions(repetitions)
        ->ReportAggregatesOnly();
}

void RegisterWithinFile(const std::string& name, const BenchmarkAccount& account,
                        const std::string& record, const Call& call) {
    const std::size_t records = (kFileBytes - kStartBytes) / record.size();
    Register(name, account, record, call, static_cast<benchmark::IterationCount>(records),
             kRepetitions);
}

std::string EventRecord() {
    return "<EventRec doc=\"0\" category=\"File\" subcategory=\"Open\" name=\"Image\" "
           "time=\"2026-01-01T00:00:00Z\" seq=\"50000\" />\n";
}

std::string ValueRecord(const std::string& data) {
    return "<DataRec time=\"2026-01-01T00:00:00Z\" group=\"1\" name=\"Theme\" data=\"" + data +
           "\" seq=\"50000\" />\n";
}

} // namespace

int main(int argc, char** argv) {
    const bool plain = HostCalls::IsPlain(argc, argv);
    const BenchmarkAccount account(!plain);
    benchmark::Initialize(&argc, argv);
    HostCalls::Initialize(account);
    // A value whose every character is escaped, and the same as it is recorded.
    static const std::string markup(512, '<');
    std::string references;
    for (std::size_t i = 0; i < markup.size(); ++i)
        references += "&#60;";

    const Call logEvent = [](LogSession* session) {
        UTLogEvent(session, "File", "Open", "Image", nullptr, 0);
    };
    const std::string suffix = plain ? " in clear" : " obfuscated";
    RegisterWithinFile("UTLogEvent" + suffix, account, EventRecord(), logEvent);
    RegisterWithinFile("UTAddToSession" + suffix, account, ValueRecord("dark"),
                       [](LogSession* session) { UTAddToSession(session, "Theme", "dark"); });
    RegisterWithinFile(
        "UTAddToSession, 512 of '<'" + suffix, account, ValueRecord(references),
        [](LogSession* session) { UTAddToSession(session, "Theme", markup.c_str()); });
    Register("UTLogEvent sustained" + suffix, account, EventRecord(), logEvent, kSustainedRecords,
             kSustainedRepetitions);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
