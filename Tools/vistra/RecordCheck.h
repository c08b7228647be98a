#pragma once

#include "Tools/vistra/Record.h"
#include "Utility/src/RecordBuffer.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Judges single records by composing each anew from what was understood of it: the text has to be
/// the same to the byte.
class RecordCheck {
public:
    /// What departs from the form of the record; empty where nothing does.
    std::string Departure(const Record& record);

private:
    bool Compose(const Record& record);
    void ComposeResumption(const Record& record, std::uint32_t seq);
    void ComposeContent(const Record& record, std::string_view time, int group, std::uint32_t seq);

    RecordBuffer m_composed;
    std::string m_rooms[4]; ///< resolved texts, their memory used again
};
