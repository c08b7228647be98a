#pragma once

#include <cstdint>
#include <string>

/// How a document ends.
struct DocumentEnd {
    enum class Kind {
        Session,  ///< with the end of its session
        Part,     ///< the session goes on in another file
        Leftover, ///< with none, for the session ended in the file before and filled it
        Open,     ///< with none: it is still being written, or was cut short
    };
    Kind kind = Kind::Open;
    std::string time;        ///< of the last whole record, where one could be read
    std::uint64_t bytes = 0; ///< of the whole file
};

/// Looks at the last few thousand bytes, however long the document is. One that cannot be read is
/// Open.
DocumentEnd ReadDocumentEnd(const std::string& path, bool isObfuscated);
