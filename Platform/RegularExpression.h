#pragma once

#include <memory>
#include <string>

namespace Platform {

/// A compiled POSIX extended regular expression, case-sensitive.
class RegularExpression {
public:
    explicit RegularExpression(const std::string& pattern);
    ~RegularExpression();
    RegularExpression(const RegularExpression&) = delete;
    RegularExpression& operator=(const RegularExpression&) = delete;

    /// False when the pattern did not compile; it then matches nothing.
    bool IsValid() const;

    /// Whether the expression matches anywhere in the text.
    bool Matches(const std::string& text) const;

private:
    struct Compiled;
    std::unique_ptr<Compiled> m_compiled;
};

} // namespace Platform
