#pragma once

#include "Platform/PropertyList.h"

#include <memory>
#include <optional>
#include <plist/plist.h>

namespace Platform {

struct FreeNode {
    void operator()(plist_t node) const { plist_free(node); }
};
/// Owner of a libplist node that has no parent, and of all below it.
using NodePointer = std::unique_ptr<void, FreeNode>;

/// A value without a form of its own here keeps libplist's.
struct OpaqueValue {
    NodePointer node;
};

/// The value of a node. Nothing when it holds text that is not UTF-8, or is nested too deep.
std::optional<PropertyList> FromNode(plist_t node);

/// A node for the value. Null when it is nested too deep, or holds text that no file can keep.
NodePointer ToNode(const PropertyList& value);

} // namespace Platform
