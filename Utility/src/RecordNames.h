#pragma once

/// Every fixed text that names something in a usage document.
namespace RecordNames {

inline constexpr char kVistraCategory[] = "Vistra";
inline constexpr char kNoDocument[] = "0";

// Standard groups of a session.
inline constexpr char kSessionGroup[] = "Session";
inline constexpr char kSystemInfoGroup[] = "SystemInfo";
inline constexpr char kScreenGroup[] = "VistraScreenResolution";
inline constexpr char kDemographicsGroup[] = "Demographics";
inline constexpr char kExecutableInfoGroup[] = "ExecutableInfo";
inline constexpr char kUsageVersionInfoGroup[] = "UsageVersionInfo";
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

// SystemInfo group.
inline constexpr char kOS[] = "OS";
inline constexpr char kOSType[] = "OSType";
inline constexpr char kOSLanguage[] = "OSLanguage";
inline constexpr char kUserLanguage[] = "UserLanguage";
inline constexpr char kProcessor[] = "Processor";
inline constexpr char kProcessorName[] = "ProcessorName";
inline constexpr char kProcessorModel[] = "ProcessorModel";
inline constexpr char kNumProcessors[] = "NumProcessors";
inline constexpr char kSpeed[] = "Speed";
inline constexpr char kMemory[] = "Memory";
inline constexpr char kMonitorCount[] = "MonitorCount";
inline constexpr char kDefaultBrowser[] = "DefaultBrowser";

// VistraScreenResolution groups.
inline constexpr char kScreenWidth[] = "width";
inline constexpr char kScreenHeight[] = "height";

// ExecutableInfo group.
inline constexpr char kExecutableName[] = "ExecutableName";
inline constexpr char kExecutableVersion[] = "ExecutableVersion";
inline constexpr char kExecutableBuild[] = "ExecutableBuild";
inline constexpr char kExecutableLanguage[] = "ExecutableLanguage";

// UsageVersionInfo group: the agent and this library.
inline constexpr char kAgentVersion[] = "LogTransport2.exe";
inline constexpr char kLibraryVersion[] = "LogSession.dll";

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
