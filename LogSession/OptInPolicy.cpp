#include "LogSession/OptInPolicy.h"

#include "Utility/src/LogSessionUtils.h"

namespace {

// The serialization states that matter here; the host gives them their meaning.
constexpr int kPreRelease = 0;
constexpr int kSerialized = 2;

} // namespace

OptInPolicy::OptInPolicy()
    : m_serializationState(kSerialized), m_optIn(kOptInUnknown),
      m_usageKey(std::make_unique<std::string>()) {}

OptInPolicy* OptInPolicy::GetInstance() {
    static OptInPolicy* gpOptInPolicy = nullptr;
    if (!gpOptInPolicy)
        gpOptInPolicy = GarbageCollection::CreateGlobalObj<OptInPolicy>();
    return gpOptInPolicy;
}

bool OptInPolicy::AllowsRecording() const {
    return m_optIn == kOptedIn || (m_optIn == kOptInUnknown && m_serializationState == kPreRelease);
}
