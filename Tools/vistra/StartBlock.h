#pragma once

#include "Tools/vistra/Record.h"
#include "Tools/vistra/SmallDocument.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

/// The groups that the library writes of itself behind a StartSession, in their order: those that a
/// session begins with, or all that a small document holds.
class StartBlock {
public:
    struct Step;

    explicit StartBlock(SmallDocument::Kind kind);

    /// Takes the next record behind the StartSession. Returns what departs, empty where nothing
    /// does; behind the block, and behind its first departure, nothing does any more.
    std::string Take(const Record& record);

private:
    bool Fits(const Record& record, const Step& step) const;
    std::string Expected(const Step& step) const;
    std::string TakeBehind(const Record& record);

    std::span<const Step> m_steps;
    const char* m_document;    ///< that all its groups name
    bool m_isAll;              ///< whether only the end comes behind them
    std::size_t m_step = 0;    ///< the one that comes next
    std::uint32_t m_group = 0; ///< whose values come
};
