#pragma once

#include "Tools/vistra/DocumentHead.h"
#include "Tools/vistra/ExitCode.h"
#include "Tools/vistra/Record.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// What a command does with a document.
struct DocumentHandler {
    std::function<void(const DocumentHead&)> begin; ///< before the first record; may be empty
    std::function<void(const Record&, std::uint64_t line)> record;
    std::function<void()> end; ///< behind the last record that could be read; may be empty
};

/// Reads the documents one after another. Of each that cannot be read, or not all of it, one line
/// on standard error names the first such place; what can be read is handled, and the other
/// documents are. Returns Done or InputMissed.
ExitCode ReadDocuments(const std::vector<std::string>& paths, const DocumentHandler& handler);
