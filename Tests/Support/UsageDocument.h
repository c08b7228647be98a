#pragma once

#include <map>
#include <string>
#include <vector>

/// One record of a usage document.
struct DocumentRecord {
    std::string kind;
    std::map<std::string, std::string> attributes; ///< with their references resolved
    std::string text;  ///< as written, with the head or the root end that comes with it
    std::string brief; ///< kind and values joined by "|", without identifiers, times and seq

    const std::string& operator[](const std::string& name) const { return attributes.at(name); }
};

/// The clear text of a finished document. Throws when name and marker disagree.
std::string ClearText(const std::string& path);

/// Reads the files of one session, in order. Throws std::runtime_error where they are not, to the
/// byte, what a document has to be: well-formed XML with its fixed frame, the records' templates,
/// one session id, `seq` without a gap, groups numbered on from `firstGroup`.
std::vector<DocumentRecord> ReadSession(const std::vector<std::string>& paths, int firstGroup = 1);
