#pragma once

#include <string>

class Converters {
public:
    /// Plain decimal text, whatever the host's locale.
    template <class Number>
    static std::string NumberToString(Number value);

    /// Upper-case hexadecimal digits, padded on the left with "0" up to `width`. Zero has no
    /// digits of its own, only padding.
    static std::string LongToHex(unsigned long long value, unsigned width);
};

extern template std::string Converters::NumberToString<int>(int);
extern template std::string Converters::NumberToString<unsigned int>(unsigned int);
extern template std::string Converters::NumberToString<long>(long);
