#include "Platform/Linux/FileCache.h"

#include "Platform/Linux/Descriptor.h"
#include "Platform/Linux/PropertyListFile.h"
#include "Platform/ThreadAnnotations.h"

#include <ctime>
#include <fcntl.h>
#include <map>
#include <sys/stat.h>

namespace Platform {

namespace {

using Condition = FileState::Condition;

constexpr std::size_t kMaximumFiles = 16;
constexpr std::size_t kMaximumKeptBytes = 262'144;
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

FileState StateWithoutValues(Condition condition, int reason = 0) {
    return FileState{condition, std::make_shared<const PropertyList>(), reason};
}

FileState StateOfFailure(int reason) {
    if (reason == ENOENT || reason == ENOTDIR)
        return StateWithoutValues(Condition::Missing);
    return StateWithoutValues(Condition::Unreadable, reason);
}

FileState StateOf(const std::string& bytes, FileReader reader) {
    std::optional<PropertyList> values = reader(bytes);
    if (!values)
        return StateWithoutValues(Condition::Unparsable);
    return FileState{Condition::Readable, std::make_shared<const PropertyList>(std::move(*values))};
}

std::optional<PropertyList> ReadDictionary(const std::string& bytes) {
    std::optional<PropertyList> values = ParsePropertyList(bytes);
    return values && values->AsDictionary() ? std::move(values) : std::nullopt;
}

class FileCache {
public:
    FileState Read(const std::string& path, FileReader reader) VISTRA_EXCLUDES(m_mutex) {
        const ScopedLock lock(m_mutex);
        struct stat status = {};
        if (::stat(path.c_str(), &status) != 0)
            return StateOfFailure(errno);
        const auto known = m_files.find(path);
        if (known == m_files.end())
            return ReadAnew(path, reader, nullptr);
        if (known->second.isSettled && known->second.stamp == Stamp(status))
            return known->second.state;
        return ReadAnew(path, reader, &known->second);
    }

private:
    struct KnownFile {
        Descriptor file; ///< keeps the file's inode number from being given to another file
        Stamp stamp;
        bool isSettled;    ///< the stamp alone tells whether the file is unchanged
        std::string bytes; ///< they tell it until then; none when there are too many
        FileState state;
    };

    FileState ReadAnew(const std::string& path, FileReader reader, const KnownFile* old)
        VISTRA_REQUIRES(m_mutex) {
        struct stat status = {};
        Descriptor file = OpenRegularFile(path, O_RDONLY, &status);
        if (!file.IsOpen())
            return StateOfFailure(errno);
        const Stamp stamp(status);
        KnownFile read{std::move(file), stamp, stamp.IsSettled(), {}, {}};
        std::string bytes;
        if (!ReadToEnd(read.file.Get(), kMaximumPropertyListBytes, bytes)) {
            if (errno != EFBIG)
                return StateWithoutValues(Condition::Unreadable, errno);
            read.state = StateWithoutValues(Condition::Unparsable);
        } else if (old && !old->bytes.empty() && old->bytes == bytes) {
            read.state = old->state;
        } else {
            read.state = StateOf(bytes, reader);
        }
        if (!read.isSettled && bytes.size() <= kMaximumKeptBytes)
            read.bytes = std::move(bytes);
        return Remember(path, std::move(read));
    }

    FileState Remember(const std::string& path, KnownFile known) VISTRA_REQUIRES(m_mutex) {
        if (m_files.size() >= kMaximumFiles)
            m_files.clear();
        return m_files.insert_or_assign(path, std::move(known)).first->second.state;
    }

    AnnotatedMutex m_mutex;
    std::map<std::string, KnownFile> m_files VISTRA_GUARDED_BY(m_mutex);
};

} // namespace

FileState ReadFileState(const std::string& path, FileReader reader) {
    // Never destroyed: the host's exit handlers may still read preferences.
    static FileCache& cache = *new FileCache;
    return cache.Read(path, reader);
}

FileState ReadDictionaryFile(const std::string& path) {
    return ReadFileState(path, ReadDictionary);
}

} // namespace Platform
