#include "Platform/DefaultHandlers.h"
#include "Platform/Machine.h"
#include "Utility/src/Converters.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/CommonMacUtils.h"
#include "Utility/src/Mac/DefaultBrowser.h"
#include "Utility/src/StringUtils.h"

namespace {

constexpr char kUnknownBrowser[] = "com.apple.safari";
constexpr char kWebScheme[] = "http";
constexpr std::size_t kMaximumModelBytes = 63;

} // namespace

std::string FindDefaultApp(const Platform::PropertyList& element, const char* schemeKey,
                           const char* scheme, const char* roleKey) {
    std::string found, program;
    if (CommonMacUtils::Convert(element.Find(schemeKey), found) && found == scheme)
        CommonMacUtils::Convert(element.Find(roleKey), program);
    return program;
}

std::string LogSessionUtils::GetProcessorName() {
    const std::string name = Platform::ProcessorName();
    return name.empty() ? kNoValue : name;
}

std::string LogSessionUtils::GetProcessorModel() {
    return Platform::MachineModel().substr(0, kMaximumModelBytes);
}

std::string LogSessionUtils::GetProcessorSpeed() {
    return Converters::NumberToString(Platform::ProcessorMegahertz());
}

bool LogSessionUtils::GetDefaultBrowser(std::string& browser, std::string& version) {
    browser = kUnknownBrowser;
    version.clear();
    const auto handlers = Platform::DefaultHandlers();
    const auto* list = handlers ? handlers->AsArray() : nullptr;
    if (!list)
        return false;
    for (const Platform::PropertyList& element : *list) {
        std::string program = FindDefaultApp(element, Platform::kHandlerScheme, kWebScheme,
                                             Platform::kHandlerProgram);
        if (program.empty())
            continue;
        browser = std::move(program);
        return true;
    }
    return false;
}

std::string LogSessionUtils::GetOSName() {
    return std::string();
}
