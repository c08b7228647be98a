#pragma once

/// Section and key names of the agent's configuration.
namespace ConfigVocabulary {

inline constexpr char kSettingsSection[] = "settings";
inline constexpr char kMaxDiskSpaceKey[] = "maxdiskspace";
inline constexpr char kRetryIntervalKey[] = "retryinterval";
inline constexpr char kMaxRetriesKey[] = "maxretries";
inline constexpr char kUrlKey[] = "url";

inline constexpr char kUlogSection[] = "ulog";
inline constexpr char kStatusKey[] = "status";
inline constexpr char kWakeUpDateKey[] = "wakeupdate";

/// Its keys are "<family>_<name>" of hibernating products.
inline constexpr char kHibernateSection[] = "hibernate";

/// In any section of an update: how that section is merged.
inline constexpr char kOperationKey[] = "operation";

} // namespace ConfigVocabulary
