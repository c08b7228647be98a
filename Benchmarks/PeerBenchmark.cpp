// What an event costs with the library, and with what a host developer might take instead: the
// same strings, to files of the same file system, and each event has left the process when its
// call returns. All of them go on with their files from block to block.

#include "Benchmarks/BareFile.h"
#include "Benchmarks/Peers.h"
#include "Benchmarks/ResultTable.h"

namespace {

constexpr char kSection[] = "An event with the library, and with others | write(2) of its bytes";
constexpr int kRounds = 201;
constexpr std::size_t kEventsOfBlock = 500;
constexpr Event kEvent{"File", "Open", "Image"};

template <class Record>
Way BlockOf(const std::string& name, Record record) {
    return {name, [record] { return Measurement::MicrosecondsEach(kEventsOfBlock, record); }};
}

Way BlockOf(const std::string& name, const HostSession& host, const BenchmarkAccount& account) {
    return {name, [&] {
                account.Enter(); // a block may go on to the next file
                return Measurement::MicrosecondsEach(
                    kEventsOfBlock, [&host](std::size_t) { RecordCalls::LogEvent(host); });
            }};
}

Way BlockOf(const std::string& name, Peer& peer) {
    return BlockOf(name, [&peer](std::size_t) { peer.LogEvent(kEvent); });
}

} // namespace

int main() {
    const BenchmarkAccount clear({.obfuscate = false}), obfuscated;
    HostCalls::Initialize(obfuscated);
    const StoredSession stored = StoreSession(clear, RecordCalls::LogEvent);
    const HostSession inClear(clear), inObfuscation(obfuscated);
    BareFile bare(clear, stored);
    const auto spdlog = MakeSpdlogPeer(clear.Root()), boost = MakeBoostLogPeer(clear.Root()),
               lazy = MakeSqlitePeer(clear.Root(), "OFF"),
               normal = MakeSqlitePeer(clear.Root(), "NORMAL");
    const std::vector<Way> ways = {
        BlockOf("UTLogEvent, in clear", inClear, clear),
        BlockOf("UTLogEvent, obfuscated", inObfuscation, obfuscated),
        BlockOf("spdlog, flushed each line", *spdlog),
        BlockOf("Boost.Log, flushed each line", *boost),
        BlockOf("SQLite, WAL, synchronous=OFF", *lazy),
        BlockOf("SQLite, WAL, synchronous=NORMAL", *normal),
        BlockOf("floor", [&bare](std::size_t) { bare.WriteNext(); }),
    };
    const Samples samples = Measurement::InTurn("peers", kRounds, ways);
    for (std::size_t i = 0; i + 1 < ways.size(); ++i)
        ResultTable::Compare(kSection, ways[i].name, samples, ways[i].name, "floor");
    return 0;
}
