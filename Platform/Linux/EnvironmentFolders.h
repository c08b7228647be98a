#pragma once

#include <string>
#include <vector>

// The folders that the XDG base directory variables name, read anew at each look-up. A variable
// that is empty or not an absolute path counts as unset. Paths have no trailing delimiter. Without
// a home folder, those of the user are empty. Nothing here logs.

namespace Platform {

std::string HomeFolder(); ///< $HOME, else that of the password database
std::string ConfigHome(); ///< $XDG_CONFIG_HOME, else ~/.config
std::string DataHome();   ///< $XDG_DATA_HOME, else ~/.local/share
std::string StateHome();  ///< $XDG_STATE_HOME, else ~/.local/state

/// $XDG_CONFIG_DIRS in its order, then /etc/xdg.
std::vector<std::string> SharedConfigFolders();

/// Creates a folder and its missing parents. Each takes its parent's permissions, so what the
/// user chose for the home folder holds below it as well. False when it cannot be made.
bool CreateFolderWithParents(const std::string& path);

} // namespace Platform
