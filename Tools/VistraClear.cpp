// vistra-clear: prints usage documents in clear text, obfuscated and plain ones.

#include "Platform/Files.h"
#include "Utility/src/Encryption.h"

#include <iostream>
#include <optional>
#include <string>

namespace {

/// Turns a document into its clear text. False for anything that is no usage document.
bool MakeClear(std::string& document) {
    if (document.starts_with(kObfuscationMarker)) {
        document.erase(0, std::string(kObfuscationMarker).size());
        Encryption::Rot47(document);
    }
    return document.starts_with("<?xml");
}

bool Print(const std::string& path) {
    std::optional<std::string> document = Platform::ReadFile(path);
    if (!document) {
        std::cerr << "vistra-clear: " << path << ": cannot be read\n";
        return false;
    }
    if (!MakeClear(*document)) {
        std::cerr << "vistra-clear: " << path << ": not a usage document\n";
        return false;
    }
    return static_cast<bool>(std::cout << *document << std::flush);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "Usage: vistra-clear DOCUMENT...\n";
        return 1;
    }
    bool allPrinted = true;
    for (int i = 1; i < argc; ++i)
        allPrinted = Print(argv[i]) && allPrinted;
    return allPrinted ? 0 : 1;
}
