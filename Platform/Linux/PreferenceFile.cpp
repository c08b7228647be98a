#include "Platform/Linux/PreferenceFile.h"

#include "Platform/Files.h"
#include "Platform/Linux/PropertyListFile.h"
#include "Platform/Linux/TemporaryFile.h"

#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace Platform {

namespace {

constexpr std::chrono::seconds kLongestWait{2};
constexpr std::chrono::milliseconds kPause{2};

/// A second name for a file, or a copy where the file system has no second names.
bool KeepBeside(const std::string& path, const std::string& kept) {
    ::unlink(kept.c_str());
    return ::link(path.c_str(), kept.c_str()) == 0 || CopyFile(path, kept);
}

bool LockWithin(int descriptor, std::chrono::steady_clock::duration longestWait) {
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) ||
            std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(kPause);
    }
    return true;
}

} // namespace

bool WritePreferenceFile(const std::string& path, const PropertyList& values, bool keepOld,
                         mode_t permissions) {
    const std::optional<std::string> xml = SerializePropertyList(values);
    if (!xml)
        return false;
    TemporaryFile next = TemporaryFile::Named(path + ".new", permissions);
    return next.Store(*xml) && (!keepOld || KeepBeside(path, path + kKeptCopyExtension)) &&
           next.Replace(path);
}

PreferenceLock::PreferenceLock(const std::string& preferenceFile)
    : m_file(OpenRegularFile(preferenceFile + ".lock", O_RDWR | O_CREAT | O_NOFOLLOW)),
      m_held(m_file.IsOpen() && LockWithin(m_file.Get(), kLongestWait)) {}

PreferenceLock::~PreferenceLock() {
    // A child forked meanwhile shares the lock, which closing alone would leave to it.
    if (m_held)
        ::flock(m_file.Get(), LOCK_UN);
}

} // namespace Platform
