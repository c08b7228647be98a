#pragma once

#include "Platform/PropertyList.h"

#include <string>

/// The program that one element of a handler list names for a scheme: the text under `roleKey` of
/// a dictionary that holds both keys and `scheme` under `schemeKey`. Empty for any other element.
std::string FindDefaultApp(const Platform::PropertyList& element, const char* schemeKey,
                           const char* scheme, const char* roleKey);
