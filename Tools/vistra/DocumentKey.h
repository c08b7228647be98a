#pragma once

#include <string>

/// What a document says about whose it is.
struct DocumentKey {
    std::string key;     ///< the usage key; empty when the document does not tell it
    std::string problem; ///< why the document could not be read, or not to its end; mostly empty
};

/// Reads a document for its usage key: a session's stands in its last group, a changed decision's
/// among its product's facts.
DocumentKey ReadDocumentKey(const std::string& path);
