#pragma once

#include "Platform/Files.h"

#include <cstddef>

// Looking at files that others are at work on. Nothing here logs, waits for a lock, or takes one.

namespace Platform {

/// Reads up to `size` bytes from the file's current position; 0 at its end. Nothing on failure.
std::optional<std::size_t> ReadFromFile(FileHandle file, char* bytes, std::size_t size);

/// Reads up to `size` bytes that stand `offset` bytes behind the file's start; 0 beyond its end.
/// The current position stays. Nothing on failure.
std::optional<std::size_t> ReadFromFileAt(FileHandle file, std::uint64_t offset, char* bytes,
                                          std::size_t size);

/// Whether some process holds the file under an exclusive advisory lock. The lock itself is not
/// touched: a program that is just about to take it must not find it taken. False also when the
/// system does not tell.
bool IsHeldLocked(const std::string& path);

/// Whether this program may write the file, or make and delete items in the folder. False for what
/// is not there.
bool MayBeWritten(const std::string& path);

} // namespace Platform
