#pragma once

#include <memory>
#include <string>

/// An event as a host names it.
struct Event {
    const char *category, *subcategory, *name;
};

/// What a host developer might take instead of the library. When a call has returned, its event has
/// left the process. Throws on failure.
class Peer {
public:
    virtual ~Peer() = default;
    virtual void LogEvent(const Event& event) = 0;
};

// Each makes its files in the folder.

std::unique_ptr<Peer> MakeSpdlogPeer(const std::string& folder);
std::unique_ptr<Peer> MakeBoostLogPeer(const std::string& folder);
/// One insertion for each event, with a write-ahead log; `synchronous` is "OFF" or "NORMAL".
std::unique_ptr<Peer> MakeSqlitePeer(const std::string& folder, const std::string& synchronous);
