#pragma once

#include "Utility/src/GarbageCollection.h"

#include <memory>
#include <string>

/// What the host told the library, and the user's consent as last read or stored. One object
/// serves the process; it relies on the API lock.
class OptInPolicy : public GlobalItem {
public:
    OptInPolicy();

    static OptInPolicy* GetInstance();

    int GetSerializationState() const { return m_serializationState; }
    void SetSerializationState(int state) { m_serializationState = state; }

    int GetOptIn() const { return m_optIn; }
    void SetOptIn(int value) { m_optIn = value; }

    /// Empty until the host's initialisation was accepted.
    const std::string& GetUsageKey() const { return *m_usageKey; }
    void SetUsageKey(std::string key) { m_usageKey->swap(key); }

    bool GetCrashDetection() const { return m_crashDetection; }
    void SetCrashDetection(bool on) { m_crashDetection = on; }

    /// The consent rule: the user opted in, or has not been asked and the product is pre-release.
    bool AllowsRecording() const;

private:
    int m_serializationState;
    int m_optIn;
    std::unique_ptr<std::string> m_usageKey;
    bool m_crashDetection = false;
};
