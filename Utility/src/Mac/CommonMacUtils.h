#pragma once

#include "Platform/PropertyList.h"

/// Type tests on property-list objects.
class CommonMacUtils {
public:
    enum MACTYPE { kDictionary = 0, kString = 1, kNumber = 2, kArray = 3, kOther = 4 };

    /// kOther also for null.
    static MACTYPE GetType(const Platform::PropertyList* object);

    /// True only for an object of exactly that kind; kOther and above are never matched.
    static bool CheckTypeMatch(const Platform::PropertyList* object, int kind);
};
