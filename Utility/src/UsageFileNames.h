#pragma once

#include <string>
#include <string_view>

/// Names of usage documents: what the agent goes by.
namespace UsageFileNames {

inline constexpr char kPrefix[] = "ulog_";
inline constexpr char kInProgressExtension[] = ".tmp";
inline constexpr char kPlainExtension[] = ".xml";
inline constexpr char kObfuscatedExtension[] = ".rdy";

/// Extension of a finished document.
inline const char* FinishedExtension(bool obfuscated) {
    return obfuscated ? kObfuscatedExtension : kPlainExtension;
}

/// Whether a name ends as that of a document, finished or not.
inline bool HasDocumentExtension(std::string_view name) {
    return name.ends_with(kInProgressExtension) || name.ends_with(kPlainExtension) ||
           name.ends_with(kObfuscatedExtension);
}

/// Whether a file is named as the library names documents.
inline bool IsDocumentName(std::string_view name) {
    return name.starts_with(kPrefix) && HasDocumentExtension(name);
}

/// Name without extension: the prefix and the four texts as they are, joined by "_".
inline std::string CommonName(const std::string& family, const std::string& name,
                              const std::string& user, const std::string& session) {
    return kPrefix + family + "_" + name + "_" + user + "_" + session;
}

} // namespace UsageFileNames
