#pragma once

#include "Tools/vistra/DocumentHead.h"

#include <string>

/// A document that stands for itself, outside any session of a host.
struct SmallDocument {
    enum class Kind { None, Decision, Crash };
    Kind kind = Kind::None;
    SessionIdentity product; ///< the host's; family, name and, for a decision, version
    std::string change;      ///< of a decision, in words: "agreed", "refused", "withdrawn"
};

/// Kind::None for the document of a session.
SmallDocument::Kind SmallDocumentKind(const SessionIdentity& identity);

/// Reads the whole of a small document; of a document that is longer than any of them, its start.
SmallDocument ReadSmallDocument(const std::string& path, SmallDocument::Kind kind);
