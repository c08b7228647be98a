#pragma once

/// Where the library keeps what it remembers of a user. Hosts, the agent and other copies of the
/// library read the same keys.
namespace PreferenceKeys {

inline constexpr char kDomain[] = "com.norvale.vistra";                // current user, current host
inline constexpr char kEnablementDomain[] = "com.norvale.vistra.apip"; // any user, current host

inline constexpr char kEnabled[] = "Enabled";
inline constexpr char kObfuscate[] = "obfuscate";
inline constexpr char kSend[] = "send";
inline constexpr char kUserGuid[] = "GUID";
inline constexpr char kUserType[] = "UserType";
inline constexpr char kCrashProcessor[] = "CRProcessor"; ///< process names to agent executables

// Below a product's key.
inline constexpr char kOptIn[] = "OptIn";
inline constexpr char kDate[] = "Date";
inline constexpr char kDemographic[] = "Demographic";
inline constexpr char kSerialStateSuffix[] = "SerialState"; ///< follows the application name

} // namespace PreferenceKeys
