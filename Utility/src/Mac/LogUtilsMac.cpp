#include "Utility/src/Mac/LogUtilsMac.h"

#include "Platform/Displays.h"
#include "Platform/Machine.h"
#include "Platform/Process.h"
#include "Platform/UserDefaults.h"
#include "Utility/src/Converters.h"
#include "Utility/src/Mac/CFBundleUtil.h"
#include "Utility/src/Mac/CommonMacUtils.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/NSBundleUtil.h"

namespace {

constexpr char kWideHardware[] = "x86_64";
constexpr std::size_t kMaximumNameBytes = 63;
constexpr std::uint64_t kBytesInMiB = 1'048'576;

constexpr char kDisplayNameKey[] = "CFDisplayNameKey";
constexpr char kNameKey[] = "CFBundleName";
constexpr char kExecutableKey[] = "CFBundleExecutable";
constexpr char kVersionKey[] = "CFBundleVersion";
constexpr char kBuildKey[] = "NorvaleBuildNumber";
constexpr char kShortVersionKey[] = "CFBundleShortVersionString";

/// The first of the main bundle's properties that is a text and not empty.
std::string FirstProperty(std::initializer_list<const char*> keys) {
    const CFBundleRef bundle = NSBundleUtil::GetMainBundle();
    std::string value;
    for (const char* key : keys)
        if (NSBundleUtil::GetPropertyFromBundle(bundle, key, value) && !value.empty())
            break;
    return value;
}

/// A setting of the user's; nothing for a program without an identity of its own.
std::optional<Platform::PropertyList> UserSetting(const char* key) {
    return NSBundleUtil::ValidateMainBundle() ? Platform::UserDefault(key) : std::nullopt;
}

} // namespace

std::string LogUtils::GetOSVersion() {
    const Platform::SystemVersion version = Platform::GetSystemVersion();
    std::string text = "OS " + Converters::NumberToString(version.major);
    for (const int number : {version.minor, version.fix})
        text.append(".").append(Converters::NumberToString(number));
    return text;
}

std::string LogUtils::GetOSType() {
    return Is64BitOS() ? "64bit" : "32bit";
}

bool LogUtils::Is64BitOS() {
    return Platform::HardwareName() == kWideHardware;
}

std::string LogUtils::GetOSLanguage() {
    std::string locale;
    if (const auto setting = UserSetting(Platform::kLocaleDefault))
        CommonMacUtils::Convert(&*setting, locale);
    return locale;
}

std::string LogUtils::GetUserLanguage() {
    std::string language;
    const auto setting = UserSetting(Platform::kLanguagesDefault);
    const auto* languages = setting ? setting->AsArray() : nullptr;
    if (languages && !languages->empty())
        CommonMacUtils::Convert(&languages->front(), language);
    return language;
}

std::string LogUtils::GetProcessorType() {
    return Platform::HardwareName().substr(0, kMaximumNameBytes);
}

std::string LogUtils::GetNumProcessors() {
    return Converters::NumberToString(Platform::ProcessorCount());
}

std::string LogUtils::GetSystemMemory() {
    return Converters::NumberToString(
        static_cast<unsigned int>(Platform::MemoryBytes() / kBytesInMiB));
}

int LogUtils::GetMonitorCount() {
    return static_cast<int>(Platform::ActiveDisplays().size());
}

std::string LogUtils::GetProcessName() {
    return FileSystemUtils::GetPathLastComponent(Platform::CurrentProgramPath());
}

std::string LogUtils::GetApplicationName() {
    return FirstProperty({kDisplayNameKey, kNameKey, kExecutableKey});
}

std::string LogUtils::GetApplicationVersion() {
    return FirstProperty({kVersionKey});
}

std::string LogUtils::GetApplicationBuild() {
    return FirstProperty({kBuildKey, kShortVersionKey});
}

std::string LogUtils::GetApplicationLanguage() {
    return std::string();
}

std::string LogUtils::GetVersion(const std::string& bundleId) {
    std::string version;
    NSBundleUtil::GetPropertyFromBundle(bundleId, kVersionKey, version);
    return version;
}

std::string LogUtils::GetLogTransportAppVersion(const std::string& agentPath) {
    std::string version;
    CFBundleUtil::GetPropertyFromBundle(Platform::BundleAtPath(agentPath), kVersionKey, version);
    return version;
}
