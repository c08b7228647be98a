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

/// The clear text of a document. Throws when marker and name, if it is a finished one, disagree.
std::string ClearText(const std::string& path);

/// Reads one finished file. Throws std::runtime_error where it is not, to the byte, what a document
/// has to be: well-formed XML with its fixed frame and the records' templates.
std::vector<DocumentRecord> ReadDocument(const std::string& path);

/// Reads the files of one session, in order. Throws, too, where they do not make up one session:
/// one id, `seq` without a gap, groups numbered on from `firstGroup`.
std::vector<DocumentRecord> ReadSession(const std::vector<std::string>& paths, int firstGroup = 1);
