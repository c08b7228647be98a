#pragma once

#include <string>
#include <string_view>

/// A user's answers, by the same operations as a host's.
namespace Consent {

/// Why the library would take no such key, or take another one for it; empty for one that it takes.
std::string WhyNoKey(const std::string& key);

/// Stores the answer as a host's call would, and reads it back. Returns why it is not stored, or
/// not forgotten with all that belongs to it; empty when all is as asked.
std::string Store(const std::string& key, int optIn);

const char* Name(int optIn);

/// The key as one word of a shell's command line.
std::string ShellWord(std::string_view key);

} // namespace Consent
