/**
 * @file
 * UTLogData.h for C++17 and later: sessions that close themselves, and texts as views.
 *
 * Every function does what its C function does, under the same conditions and limits. Besides:
 *
 *  1. A text ends at its first NUL byte. A view without data ({}) is passed as NULL, with which an
 *     optional text, or a document id, is left out.
 *  2. No text within the limits makes this header allocate memory. For one beyond every limit it
 *     does; where memory is missing, the record is the same, and only the report in the session's
 *     "ValidationErrors" group holds less of the text.
 *  3. Nothing throws, but for std::bad_alloc, which may leave Initialize and GetDemographic.
 */
#ifndef VISTRA_UTSESSION_HPP
#define VISTRA_UTSESSION_HPP

#include "UTLogData.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace UT {

/// What the user has answered.
enum class OptIn { Unknown = -1, Out = 0, In = 1 };
/// What the product is; see UTSetSerializationState.
enum class SerializationState { PreRelease = 0, Trial = 1, Serialized = 2, SharedComponent = 3 };

namespace Detail {
/// A text as the C functions take it, for the length of one call.
class Text {
public:
    explicit Text(std::string_view text) noexcept {
        if (!text.data())
            return;
        char* target = m_buffer;
        std::size_t size = text.size();
        if (size >= sizeof m_buffer) {
            m_long.reset(new (std::nothrow) char[size + 1]);
            size = m_long ? size : sizeof m_buffer - 1;
            target = m_long ? m_long.get() : target;
        }
        std::memcpy(target, text.data(), size);
        target[size] = '\0';
        m_text = target;
    }
    Text(Text&&) = delete;

    operator const char*() const noexcept { return m_text; }

private:
    // The longest limit, one byte to be beyond it, and the NUL: what does not fit in is cut anyway.
    char m_buffer[512 + 1 + 1];
    std::unique_ptr<char[]> m_long;
    const char* m_text = nullptr;
};

/// A document id as the C functions take it: they do not write to it.
inline unsigned char* IdBytes(std::string_view id) noexcept {
    return reinterpret_cast<unsigned char*>(const_cast<char*>(id.data()));
}
inline int IdLength(std::string_view id) noexcept {
    return static_cast<int>(std::min<std::size_t>(id.size(), INT_MAX));
}

} // namespace Detail

/// A view of bytes, for a document id that is not a text. It, too, ends at its first NUL byte.
inline std::string_view Bytes(const void* bytes, std::size_t size) noexcept {
    return {static_cast<const char*>(bytes), size};
}

/// UTInitialize. When it throws nothing has changed.
inline void Initialize(std::string_view usageKey, bool detectCrashes = false,
                       std::string_view agentFolder = {}) {
    const std::string folder(agentFolder); // of any length, and of no use when cut
    UTInitialize(Detail::Text(usageKey), detectCrashes ? 1 : 0,
                 agentFolder.data() ? folder.c_str() : nullptr);
}

/// UTGetOptIn: the answer for the key given to Initialize.
inline OptIn GetOptIn() noexcept {
    return static_cast<OptIn>(UTGetOptIn());
}
/// UTOptInGet: the answer for another key.
inline OptIn GetOptIn(std::string_view usageKey) noexcept {
    return static_cast<OptIn>(UTOptInGet(Detail::Text(usageKey)));
}
/// UTSetOptIn.
inline void SetOptIn(OptIn answer) noexcept {
    UTSetOptIn(static_cast<int>(answer));
}
/// UTOptInSet.
inline void SetOptIn(OptIn answer, std::string_view usageKey) noexcept {
    UTOptInSet(Detail::Text(usageKey), static_cast<int>(answer));
}

/// UTSetSerializationState.
inline void SetSerializationState(SerializationState state) noexcept {
    UTSetSerializationState(static_cast<int>(state));
}

/// Returns the whole answer, of a product if one is named, or nothing where none can be read.
inline std::optional<std::string> GetDemographic(std::string_view key,
                                                 std::string_view productKey = {}) {
    const Detail::Text product(productKey), name(key);
    for (;;) {
        unsigned long size = 0;
        UTGetNonDefaultDemographic(product, name, nullptr, &size);
        if (size == 0)
            return std::nullopt;
        std::string answer(size, '\0');
        unsigned long written = size + 1; // a string has room for one NUL more
        UTGetNonDefaultDemographic(product, name, answer.data(), &written);
        answer.resize(written - 1);
        if (written <= size) // else it has been made longer, or removed, meanwhile
            return answer;
    }
}

/// UTSetDemographic, or UTSetNonDefaultDemographic where a product is named.
inline void SetDemographic(std::string_view key, std::string_view answer,
                           std::string_view productKey = {}) noexcept {
    UTSetNonDefaultDemographic(Detail::Text(productKey), Detail::Text(key), Detail::Text(answer));
}

/// A group of values that a session has declared. Copies name the same group. Use it while its
/// session is open, whichever object holds that: a later session may be given the same handle.
class Group {
public:
    Group() noexcept = default;
    /// Whether the group was declared. Adding to one that was refused is reported in the document.
    explicit operator bool() const noexcept { return m_id != -1; }

    /// UTAddToGroup.
    void Add(std::string_view key, std::string_view value) const noexcept {
        UTAddToGroup(m_session, m_id, Detail::Text(key), Detail::Text(value));
    }

private:
    friend class Session;
    Group(LogSession* session, int id) noexcept : m_session(session), m_id(id) {}

    LogSession* m_session = nullptr;
    int m_id = -1;
};

/// A session, closed by the destructor; or an inactive object, whose calls do nothing. Threads may
/// record in one session at once, but not while another thread closes or moves it.
class [[nodiscard]] Session {
    using Text = Detail::Text;

public:
    Session() noexcept = default;
    /// Opens a session. The object is inactive when none is recorded.
    Session(std::string_view family, std::string_view name, std::string_view version,
            std::string_view build = {}, std::string_view language = {}) noexcept {
        UTStartSession(&m_handle, Text(family), Text(name), Text(version), Text(build),
                       Text(language));
    }
    /// Takes the other one's session, which is inactive then.
    Session(Session&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    /// Closes the own session, and takes the other one's.
    Session& operator=(Session&& other) noexcept {
        Session taken(std::move(other)); // then closes the old one, or nothing on a self-move
        std::swap(m_handle, taken.m_handle);
        return *this;
    }
    ~Session() {
        if (m_handle)
            UTCloseSession(&m_handle);
    }

    /// Whether a session is recorded.
    explicit operator bool() const noexcept { return m_handle != nullptr; }
    /// For the C functions. It stays this object's to close.
    LogSession* Handle() const noexcept { return m_handle; }
    /// Closes the session before the object ends. The object is inactive then.
    void Close() noexcept { *this = Session(); }

    /// UTAddToSession.
    void Add(std::string_view key, std::string_view value) noexcept {
        UTAddToSession(m_handle, Text(key), Text(value));
    }
    /// UTLogEvent.
    void LogEvent(std::string_view category, std::string_view subCategory, std::string_view name,
                  std::string_view documentId = {}) noexcept {
        UTLogEvent(m_handle, Text(category), Text(subCategory), Text(name),
                   Detail::IdBytes(documentId), Detail::IdLength(documentId));
    }
    /// UTNewDataGroup.
    Group NewGroup(std::string_view category, std::string_view subCategory, std::string_view name,
                   std::string_view documentId = {}) noexcept {
        int id = -1;
        UTNewDataGroup(m_handle, Text(category), Text(subCategory), Text(name), &id,
                       Detail::IdBytes(documentId), Detail::IdLength(documentId));
        return {m_handle, id};
    }

private:
    LogSession* m_handle = nullptr;
};

} // namespace UT

#endif
