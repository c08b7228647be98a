#include "Fuzz/FuzzInput.h"
#include "Platform/DefaultHandlers.h"
#include "Platform/Linux/SystemText.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/LogSessionUtils.h"

using namespace Platform;

/// The user's list of default programs, and the browser that a document names by it.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const Sandbox account;
    WriteText(account.Home() + "/.config/mimeapps.list",
              std::string(reinterpret_cast<const char*>(bytes), size));
    const auto handlers = DefaultHandlers();
    Require(handlers && handlers->AsArray(), "no list");
    for (const PropertyList& handler : *handlers->AsArray()) {
        const PropertyList* scheme = handler.Find(kHandlerScheme);
        const PropertyList* program = handler.Find(kHandlerProgram);
        Require(scheme && scheme->AsString() && IsPlainText(*scheme->AsString()), "odd scheme");
        Require(program && program->AsString() && IsPlainText(*program->AsString()) &&
                    !program->AsString()->empty(),
                "odd program");
    }
    std::string browser, version;
    LogSessionUtils::GetDefaultBrowser(browser, version);
    Require(!browser.empty() && IsPlainText(browser), "odd browser: " + browser);
    return 0;
}
