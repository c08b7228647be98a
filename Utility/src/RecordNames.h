#pragma once

/// Every fixed text that names something in a usage document.
namespace RecordNames {

inline constexpr char kVistraCategory[] = "Vistra";
inline constexpr char kNoDocument[] = "0";

// Standard groups of a session.
inline constexpr char kSessionGroup[] = "Session";
inline constexpr char kDemographicsGroup[] = "Demographics";
inline constexpr char kValidationErrorsGroup[] = "ValidationErrors";
inline constexpr char kOptInInfoGroup[] = "OptInInfo";

// Session group.
inline constexpr char kProductFamily[] = "ProductFamily";
inline constexpr char kProductName[] = "ProductName";
inline constexpr char kProductVersion[] = "ProductVersion";
inline constexpr char kProductBuild[] = "ProductBuild";
inline constexpr char kProductLanguage[] = "ProductLanguage";
inline constexpr char kUser[] = "User";
inline constexpr char kUserType[] = "UserType";

// ValidationErrors group.
inline constexpr char kErrorType[] = "ErrorType";
inline constexpr char kErrorValue[] = "Value";

// OptInInfo group of a session.
inline constexpr char kOptInKey[] = "Key";
inline constexpr char kOptInAnswer[] = "OptedIn";
inline constexpr char kOptInDate[] = "Date";

// Opt-in rate document.
inline constexpr char kOptInRateFamily[] = "VistraOptinProductFamily";
inline constexpr char kOptInRateProduct[] = "VistraOptinProduct";
inline constexpr char kOptInRateSubcategory[] = "OptinRate";
inline constexpr char kOptInProductInfo[] = "OptinProductInfo";
inline constexpr char kOptInProductFamily[] = "OptinProductFamily";
inline constexpr char kOptInProductName[] = "OptinProductName";
inline constexpr char kOptInProductVersion[] = "OptinProductVersion";
inline constexpr char kOptInProductState[] = "OptinProductSerializationState";
inline constexpr char kOptInUsageKey[] = "OptinKey";
inline constexpr char kOptInInfo[] = "OptInInfo";
inline constexpr char kBaseCount[] = "BaseCount";
inline constexpr char kOptInCount[] = "OptInCount";

// Crash document.
inline constexpr char kCrash[] = "Crash";
inline constexpr char kAppCrash[] = "AppCrash";
inline constexpr char kAppExit[] = "AppExit";
inline constexpr char kExitInfo[] = "ExitInfo";
inline constexpr char kExitType[] = "ExitType";
inline constexpr char kCrashProductName[] = "CrashProductName";
inline constexpr char kCrashProductFamily[] = "CrashProductFamily";
inline constexpr char kCrashUser[] = "UserID";

} // namespace RecordNames
