#include "Platform/RegularExpression.h"

#include <regex.h>

namespace Platform {

struct RegularExpression::Compiled {
    regex_t expression;
    ~Compiled() { ::regfree(&expression); }
};

RegularExpression::RegularExpression(const std::string& pattern) {
    regex_t expression = {};
    if (::regcomp(&expression, pattern.c_str(), REG_EXTENDED | REG_NOSUB) == 0)
        m_compiled.reset(new Compiled{expression});
}

RegularExpression::~RegularExpression() = default;

bool RegularExpression::IsValid() const {
    return m_compiled != nullptr;
}

bool RegularExpression::Matches(const std::string& text) const {
    return m_compiled && ::regexec(&m_compiled->expression, text.c_str(), 0, nullptr, 0) == 0;
}

} // namespace Platform
