#pragma once

#include "Utility/src/Mac/CommonMacUtils.h"

/// Kinds of objects that GetNSObject tells apart.
struct NSString {
    static constexpr int kKind = CommonMacUtils::kString;
};
struct NSArray {
    static constexpr int kKind = CommonMacUtils::kArray;
};

class NSCommonUtilsMac {
public:
    /// The object itself when it is of the kind, else null.
    template <class Kind>
    static const Platform::PropertyList* GetNSObject(const Platform::PropertyList* object) {
        return CommonMacUtils::CheckTypeMatch(object, Kind::kKind) ? object : nullptr;
    }
};
