#pragma once

#include "Platform/PropertyList.h"

/// Scopes of a preference access: whose preferences, and on which machine.
extern const CFStringRef kCFPreferencesCurrentUser;
extern const CFStringRef kCFPreferencesAnyUser;
extern const CFStringRef kCFPreferencesCurrentHost;
extern const CFStringRef kCFPreferencesAnyHost;

namespace Platform {

// The store shows the state of the moment to every reader, whole, and never loses a top-level key
// to a writer of another one. None of these operations logs. Any null argument but `value`, an
// unknown scope, and a domain that is empty or holds a path delimiter are refused.

/// Sets `value` to the one under a top-level key, null when there is none. Returns false, with
/// `value` unchanged, when the stored state cannot be read: what is changed and written back must
/// not start from nothing then.
bool CopyPreferenceValue(CFStringRef key, CFStringRef domain, CFStringRef user, CFStringRef host,
                         CFPropertyListRef& value);

/// Sets the value under a top-level key, or removes the key when `value` is null. Returns false,
/// with the stored state unchanged, when it cannot be stored or holds text that is not UTF-8.
bool SetPreferenceValue(CFStringRef key, const PropertyList* value, CFStringRef domain,
                        CFStringRef user, CFStringRef host);

/// Sets the value under a top-level key that has none; `value` becomes the one that is there. Of
/// several programs that add at once, one prevails. Returns false, with `value` unchanged, when the
/// stored state cannot be read or changed.
bool AddPreferenceValue(CFStringRef key, PropertyList& value, CFStringRef domain, CFStringRef user,
                        CFStringRef host);

/// Makes the domain agree with persistent storage. Returns false when the domain or the scope can
/// name none.
bool SynchronizePreferences(CFStringRef domain, CFStringRef user, CFStringRef host);

} // namespace Platform
