#include "Utility/src/Mac/PropertyListTreeOpt.h"

#include <algorithm>

using Platform::PropertyList;

namespace {

bool HasNullKey(const PropertyListTreeOpt::Keys& keys) {
    return std::find(keys.begin(), keys.end(), nullptr) != keys.end();
}

} // namespace

const PropertyList* PropertyListTreeOpt::GetNode(const PropertyList* root, const Keys& keys) {
    const PropertyList* node = root;
    for (CFStringRef key : keys) {
        if (!node || !key)
            return nullptr;
        node = node->Find(key->utf8);
    }
    return node;
}

bool PropertyListTreeOpt::SetNode(CFPropertyListRef& root, const Keys& keys,
                                  const PropertyList* value) {
    if (!value || keys.empty() || HasNullKey(keys) || !root || !root->AsDictionary())
        return false;
    auto copy = std::make_shared<PropertyList>(*root);
    PropertyList* node = copy.get();
    for (CFStringRef key : keys) {
        if (!node->AsDictionary())
            *node = PropertyList();
        node = &(*node->AsDictionary())[key->utf8];
    }
    *node = *value;
    root = std::move(copy);
    return true;
}

bool PropertyListTreeOpt::RemoveNode(CFPropertyListRef& root, Keys& keys) {
    if (!root)
        return false;
    auto copy = std::make_shared<PropertyList>(*root);
    root = copy;
    if (keys.empty())
        return true;
    const CFStringRef last = keys.back();
    keys.pop_back();
    // The copy is ours to change, although the walk promises not to.
    auto* parent = const_cast<PropertyList*>(GetNode(copy.get(), keys));
    if (parent && parent->AsDictionary() && last)
        parent->AsDictionary()->erase(last->utf8);
    return true;
}
