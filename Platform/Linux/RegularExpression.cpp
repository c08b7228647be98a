#include "Platform/RegularExpression.h"

#include <regex.h>

namespace Platform {

struct RegularExpression::Compiled {
    explicit Compiled(const std::string& pattern)
        : isValid(::regcomp(&expression, pattern.c_str(), REG_EXTENDED | REG_NOSUB) == 0) {}
    ~Compiled() {
        if (isValid)
            ::regfree(&expression);
    }
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;

    regex_t expression = {};
    bool isValid;
};

RegularExpression::RegularExpression(const std::string& pattern)
    : m_compiled(std::make_unique<Compiled>(pattern)) {}

RegularExpression::~RegularExpression() = default;

bool RegularExpression::Matches(const std::string& text) const {
    return m_compiled->isValid &&
           ::regexec(&m_compiled->expression, text.c_str(), 0, nullptr, 0) == 0;
}

} // namespace Platform
