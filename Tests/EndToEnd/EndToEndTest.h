#pragma once

#include "Tests/Support/HostBundle.h"
#include "Tests/Support/UsageDocument.h"
#include "Utility/src/Mac/PreferenceUtil.h"
#include "Utility/src/PreferenceKeys.h"

#include <gmock/gmock.h>

#include <algorithm>

inline const std::string kInitialize = "UTInitialize key 0 NULL\n";
inline const std::string kStart = "UTStartSession s Suite Editor 1.0 100 en_US\n";
inline const std::string kOpen = kInitialize + "UTSetOptIn 1\n" + kStart;
inline const std::string kClose = "UTCloseSession s\n";

/// Records of a session without displays and demographic answers, before and after the host's own.
inline constexpr std::size_t kStartRecords = 30, kEndRecords = 5;

/// A host in a user account of its own, and what its calls leave there.
struct EndToEndTest : testing::Test {
    static void Prefer(const std::string& key, int value) {
        PreferenceUtil::SetPreferenceValue(key, PreferenceKeys::kDomain, value,
                                           kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
    }

    /// The documents whose names begin so, in the order of their indices.
    std::vector<std::string> Files(const std::string& prefix = "ulog_Suite_Editor_") const {
        std::vector<std::string> paths;
        for (const std::string& name : NamesIn(m_account.LogFolder()))
            if (name.starts_with(prefix))
                paths.push_back(m_account.LogFolder() + "/" + name);
        std::ranges::stable_sort(paths, {}, &std::string::size);
        return paths;
    }

    void ClearFolder() const { std::filesystem::remove_all(m_account.LogFolder()); }

    /// Records in brief, one a line, without the first and the last ones if told so.
    static std::string Briefs(const std::vector<DocumentRecord>& records, std::size_t first = 0,
                              std::size_t last = 0) {
        std::string briefs;
        for (std::size_t i = first; i + last < records.size(); ++i)
            briefs += records[i].brief + "\n";
        return briefs;
    }

    Sandbox m_account;
    HostBundle m_host{m_account};
};
