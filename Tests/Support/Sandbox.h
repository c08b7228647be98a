#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

/// A user account of its own: an empty home in a temporary folder, with the environment variables
/// that name the user's folders pointing into it, for as long as the object lives.
class Sandbox {
public:
    Sandbox();
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    const std::string& Root() const { return m_root; }
    std::string Home() const { return m_root + "/home"; }

    /// Where the library keeps things of this account.
    std::string LogFolder() const;       ///< usage documents
    std::string UserPreferences() const; ///< file of the domain com.norvale.vistra, this host
    std::string UserConfigFile() const;  ///< the agent's configuration
    std::string DiagnosticLog() const;

    /// Sets or unsets an environment variable until the sandbox ends.
    void SetVariable(const std::string& name, const std::optional<std::string>& value);

private:
    std::string m_root;
    std::map<std::string, std::optional<std::string>> m_saved;
};

/// Whole content of a file; fails the test and gives "" when it cannot be read.
std::string ReadText(const std::string& path);

/// Writes a file, creating its folder.
void WriteText(const std::string& path, const std::string& text);

/// Names of all entries of a folder, sorted; empty for a missing folder.
std::vector<std::string> NamesIn(const std::string& folder);
