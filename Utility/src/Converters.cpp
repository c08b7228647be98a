#include "Utility/src/Converters.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

/// Of a type that holds every number of the others, so that the code for it is there once.
std::string DecimalText(long long value) {
    char digits[std::numeric_limits<long long>::digits10 + 3];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return std::string(digits, end);
}

} // namespace

template <class Number>
std::string Converters::NumberToString(Number value) {
    return DecimalText(value);
}

template std::string Converters::NumberToString<int>(int);
template std::string Converters::NumberToString<unsigned int>(unsigned int);
template std::string Converters::NumberToString<long>(long);

std::string Converters::LongToHex(unsigned long long value, unsigned width) {
    std::string digits;
    for (; value != 0; value /= 16)
        digits.push_back("0123456789ABCDEF"[value % 16]);
    if (digits.size() < width)
        digits.append(width - digits.size(), '0');
    std::reverse(digits.begin(), digits.end());
    return digits;
}
