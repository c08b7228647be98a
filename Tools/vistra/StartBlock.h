#pragma once

#include "Tools/vistra/Record.h"

#include <cstddef>
#include <string>

/// The standard groups that every session's document begins with, in their order.
class StartBlock {
public:
    /// Takes the next record behind the StartSession. Returns what departs, empty where nothing
    /// does; behind the block, and behind its first departure, nothing does any more.
    std::string Take(const Record& record);

private:
    std::size_t m_step = 0;
};
