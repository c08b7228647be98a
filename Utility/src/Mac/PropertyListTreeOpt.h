#pragma once

#include "Platform/PropertyList.h"

#include <vector>

/// Walks trees of nested dictionaries along a list of keys. Nothing here logs.
class PropertyListTreeOpt {
public:
    using Keys = std::vector<CFStringRef>;

    /// The node reached, not a copy; the root itself for no keys. Null when a key is missing or a
    /// node on the way is not a dictionary.
    static const Platform::PropertyList* GetNode(const Platform::PropertyList* root,
                                                 const Keys& keys);

    /// Replaces the root by a copy with the value set at the keys; what is not a dictionary on the
    /// way becomes one. False, with the root unchanged, for a null value, no keys, or a root that
    /// is not a dictionary.
    static bool SetNode(CFPropertyListRef& root, const Keys& keys,
                        const Platform::PropertyList* value);

    /// Replaces the root by a copy without the value at the keys, and takes the last key off the
    /// list. False only for a null root; true also when nothing was there.
    static bool RemoveNode(CFPropertyListRef& root, Keys& keys);
};
