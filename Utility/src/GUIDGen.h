#pragma once

#include <string>

class GUIDGen {
public:
    /// A new random GUID in upper-case 8-4-4-4-12 form; empty if none can be made.
    static std::string GuidGen();

    /// The GUID that stands for this user in every document. When there is none yet, it is made
    /// and stored, or with `readOnly` the result is empty.
    static std::string GetUsageUserGUID(bool readOnly);
};
