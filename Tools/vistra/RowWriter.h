#pragma once

#include "Tools/vistra/DocumentHead.h"
#include "Tools/vistra/Record.h"

#include <memory>
#include <string>

/// Writes records as rows, each with the identity of its session.
class RowWriter {
public:
    virtual ~RowWriter() = default;

    /// Appends what comes before all rows.
    virtual void AppendStart(std::string& out) const = 0;
    /// The rows that follow belong to this session.
    virtual void SetSession(const SessionIdentity& session) = 0;
    virtual void AppendRow(std::string& out, const Record& record) = 0;
};

/// One JSON object on each line (JSON Lines). Attributes that a record does not bear are left out.
/// `asciiOnly` writes all other characters as escapes, which a terminal cannot misread.
std::unique_ptr<RowWriter> MakeJsonLinesWriter(bool asciiOnly);

/// Comma-separated values with a line of names first, as in RFC 4180 but for its line ends, which
/// are plain line feeds. `printable` makes every value fit for a terminal.
std::unique_ptr<RowWriter> MakeCsvWriter(bool printable);
