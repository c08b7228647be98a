#pragma once

#include <cstdint>
#include <string>

/// Whose records a document holds, as far as it tells.
struct SessionIdentity {
    std::string id;
    std::string start; ///< UTC time text
    std::string family, name, version, build, language;
    std::string user;
};

/// What the first records of a document tell about all of it.
struct DocumentHead {
    std::string problem; ///< why it is no document that can be read; empty for one that can
    SessionIdentity session;
    std::uint32_t firstSeq = 0;
    bool isResumed = false; ///< goes on with a session that began in another file
    /// Its head could not be written, for the file could be opened only later. What is known of
    /// the session is from the file's name.
    bool isHeadless = false;
    bool isObfuscated = false;
};

/// Reads the start of a document. Complains of nothing: `problem` tells what is wrong.
DocumentHead ReadDocumentHead(const std::string& path);
