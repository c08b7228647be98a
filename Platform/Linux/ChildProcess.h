#pragma once

#include <optional>

// A child shares nothing with the host but a copy of its memory, of which another thread may have
// held any lock. So a child's code makes system calls only, and none of them through the C
// library's or a sanitizer's wrappers.

#define VISTRA_CHILD_CODE __attribute__((no_sanitize("address", "thread", "undefined")))

namespace Platform {

/// What a child runs; its result is the child's exit status.
using ChildBody = int (*)(const void* argument);

/// Runs `body` in a child and waits for its end. The child is none that the host's wait calls
/// find or a signal announces, whatever the host does with SIGCHLD. All its signals have their
/// default dispositions and are blocked. Returns its wait status, or nothing, without logging,
/// when there was no child.
std::optional<int> RunInChild(ChildBody body, const void* argument);

// For the child's code:

/// A child of the child, of the usual kind. Returns as fork does.
int ForkChild();

/// Runs a program with no signal blocked. Returns only on failure.
void Execute(const char* path, const char* const* arguments, const char* const* environment);

/// Closes every descriptor from `first` on.
void CloseDescriptorsFrom(int first);

/// Waits for that child. Returns its wait status, or -1.
int WaitForChild(int child);

/// Ends the child in a way that no exit status does.
void EndBySignal();

} // namespace Platform
