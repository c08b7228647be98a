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

    /// Whether the expression matches anywhere in the text. One that did not compile never does.
    bool Matches(const std::string& text) const;

private:
    struct Compiled;
    std::unique_ptr<Compiled> m_compiled;
};

} // namespace Platform
