#include "Benchmarks/BareSession.h"

#include "Benchmarks/HostCalls.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <sys/file.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kHead = "<?xml";
constexpr std::string_view kRecordEnd = "\" />\n";
constexpr std::string_view kRootEnd = "</UsageDoc>\n";

void Require(bool success, const char* what) {
    if (!success)
        throw std::runtime_error(what);
}

/// The only document of the account.
fs::path Document(const BenchmarkAccount& account) {
    const fs::directory_iterator first(account.LogFolder());
    Require(first != fs::directory_iterator(), "no document");
    return first->path();
}

std::string ReadText(const fs::path& path) {
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// The document in clear, which is as long as it is stored.
std::string InClear(std::string text) {
    constexpr int kFirst = '!', kCount = '~' - '!' + 1;
    if (text.starts_with(kHead))
        return text;
    for (char& c : text)
        if (c >= '!' && c <= '~')
            c = static_cast<char>(kFirst + (c - kFirst + kCount / 2) % kCount);
    return text;
}

/// Where the write ends that begins at `begin`: what precedes the head is one, every record is
/// one, and so is the last record with the end of the root.
std::size_t EndOfWrite(std::string_view text, std::size_t begin) {
    if (begin == 0 && !text.starts_with(kHead))
        return text.find(kHead);
    const std::size_t end = text.find(kRecordEnd, begin) + kRecordEnd.size();
    return text.substr(end) == kRootEnd ? text.size() : end;
}

SessionContent TakeApart(const std::string& stored, std::size_t bytesAtStart) {
    const std::string text = InClear(stored);
    SessionContent content;
    for (std::size_t begin = 0, end = 0; begin < text.size(); begin = end) {
        end = EndOfWrite(text, begin);
        Require(end > begin && end <= text.size(), "unknown document");
        (begin < bytesAtStart ? content.atStart : content.atClose)
            .push_back(stored.substr(begin, end - begin));
    }
    return content;
}

void Write(int file, const std::vector<std::string>& pieces) {
    for (const std::string& piece : pieces)
        Require(::write(file, piece.data(), piece.size()) == static_cast<ssize_t>(piece.size()),
                "bare write");
}

} // namespace

SessionContent RecordSession(const BenchmarkAccount& account) {
    account.RemoveDocuments();
    LogSession* session = HostCalls::StartSession();
    const std::size_t bytesAtStart = fs::file_size(Document(account));
    UTCloseSession(&session);
    return TakeApart(ReadText(Document(account)), bytesAtStart);
}

BareSession::BareSession(const BenchmarkAccount& account, SessionContent content)
    : m_content(std::move(content)), m_document(account.LogFolder() + "/bare_"),
      m_marker(account.MarkerFolder() + "/bare.sif") {}

void BareSession::Start() {
    m_inProgress = m_document + std::to_string(m_number) + ".tmp";
    m_file = ::open(m_inProgress.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    Require(m_file >= 0 && ::flock(m_file, LOCK_EX | LOCK_NB) == 0, "bare open and lock");
    Write(m_file, m_content.atStart);
    const int marker = ::open(m_marker.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    Require(marker >= 0 && ::close(marker) == 0, "bare marker");
}

void BareSession::Close() {
    Write(m_file, m_content.atClose);
    Require(::close(m_file) == 0, "bare close");
    const std::string finished = m_document + std::to_string(m_number++) + ".rdy";
    Require(::rename(m_inProgress.c_str(), finished.c_str()) == 0, "bare rename");
    Require(::unlink(m_marker.c_str()) == 0, "bare unlink");
}
