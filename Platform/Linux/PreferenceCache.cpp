#include "Platform/Linux/PreferenceFile.h"
#include "Platform/Linux/PropertyListFile.h"
#include "Platform/ThreadAnnotations.h"

#include <ctime>
#include <fcntl.h>
#include <map>
#include <sys/stat.h>

namespace Platform {

namespace {

using Condition = PreferenceState::Condition;

constexpr std::size_t kMaximumFiles = 16;
/// Two changes so close together may bear the same time stamp.
constexpr std::int64_t kStampGranularity = 50'000'000;

std::int64_t Nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/// Everything about a file that changes with its content.
struct Stamp {
    explicit Stamp(const struct stat& status)
        : device(status.st_dev), inode(status.st_ino), size(status.st_size),
          modified(Nanoseconds(status.st_mtim)), changed(Nanoseconds(status.st_ctim)) {}
    bool operator==(const Stamp&) const = default;

    /// Whether a later change is sure to give another stamp.
    bool IsSettled() const {
        timespec now = {};
        ::clock_gettime(CLOCK_REALTIME, &now);
        return changed < Nanoseconds(now) - kStampGranularity;
    }

    dev_t device;
    ino_t inode;
    off_t size;
    std::int64_t modified;
    std::int64_t changed;
};

PreferenceState StateWithoutValues(Condition condition) {
    return PreferenceState{condition, std::make_shared<const PropertyList>()};
}

PreferenceState StateOfFailure() {
    const bool missing = errno == ENOENT || errno == ENOTDIR;
    return StateWithoutValues(missing ? Condition::Missing : Condition::Unreadable);
}

PreferenceState ReadState(int descriptor) {
    std::string bytes;
    if (!ReadToEnd(descriptor, kMaximumPropertyListBytes, bytes))
        return StateWithoutValues(errno == EFBIG ? Condition::Unparsable : Condition::Unreadable);
    std::optional<PropertyList> values = ParsePropertyList(bytes);
    if (!values || !values->AsDictionary())
        return StateWithoutValues(Condition::Unparsable);
    return PreferenceState{Condition::Readable,
                           std::make_shared<const PropertyList>(std::move(*values))};
}

class PreferenceCache {
public:
    PreferenceState Read(const std::string& path) VISTRA_EXCLUDES(m_mutex) {
        const ScopedLock lock(m_mutex);
        struct stat status = {};
        if (::stat(path.c_str(), &status) != 0)
            return StateOfFailure();
        const auto known = m_files.find(path);
        if (known != m_files.end() && known->second.stamp == Stamp(status))
            return known->second.state;
        return ReadAnew(path);
    }

private:
    struct KnownFile {
        Descriptor file; ///< keeps the file's inode number from being given to another file
        Stamp stamp;
        PreferenceState state;
    };

    PreferenceState ReadAnew(const std::string& path) VISTRA_REQUIRES(m_mutex) {
        m_files.erase(path);
        Descriptor file = OpenRegularFile(path, O_RDONLY);
        struct stat status = {};
        if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0)
            return StateOfFailure();
        const Stamp stamp(status);
        const bool settled = stamp.IsSettled();
        PreferenceState state = ReadState(file.Get());
        if (settled && state.condition != Condition::Unreadable)
            Remember(path, KnownFile{std::move(file), stamp, state});
        return state;
    }

    void Remember(const std::string& path, KnownFile known) VISTRA_REQUIRES(m_mutex) {
        if (m_files.size() >= kMaximumFiles)
            m_files.clear();
        m_files.emplace(path, std::move(known));
    }

    AnnotatedMutex m_mutex;
    std::map<std::string, KnownFile> m_files VISTRA_GUARDED_BY(m_mutex);
};

} // namespace

PreferenceState ReadPreferenceFile(const std::string& path) {
    // Never destroyed: the host's exit handlers may still read preferences.
    static PreferenceCache& cache = *new PreferenceCache;
    return cache.Read(path);
}

} // namespace Platform
