#pragma once

#include "Platform/PropertyList.h"

#include <string>
#include <utility>
#include <vector>

/// Type tests on property-list objects, and what follows from them.
class CommonMacUtils {
public:
    enum MACTYPE { kDictionary = 0, kString = 1, kNumber = 2, kArray = 3, kOther = 4 };

    /// kOther also for null.
    static MACTYPE GetType(const Platform::PropertyList* object);

    /// True only for an object of exactly that kind; kOther and above are never matched.
    static bool CheckTypeMatch(const Platform::PropertyList* object, int kind);

    /// The text or the number of an object. False, with `out` unchanged, for null and for an object
    /// of another kind.
    static bool Convert(const Platform::PropertyList* object, std::string& out);
    static bool Convert(const Platform::PropertyList* object, int& out);

    /// Appends the pairs of a dictionary whose values are strings, by key. False, with nothing
    /// appended, for null and for anything but a dictionary.
    static bool AppendStringPairs(const Platform::PropertyList* object,
                                  std::vector<std::pair<std::string, std::string>>& out);
};
