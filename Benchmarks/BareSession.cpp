#include "Benchmarks/BareSession.h"

#include "Benchmarks/HostSession.h"
#include "Benchmarks/WriteSizes.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/file.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

void Require(bool success, const char* what) {
    if (!success)
        throw std::runtime_error(what);
}

/// The only document of the account.
std::string ReadDocument(const BenchmarkAccount& account) {
    const fs::directory_iterator first(account.LogFolder());
    Require(first != fs::directory_iterator(), "no document");
    std::ifstream file(first->path());
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void Write(int file, const std::vector<std::string>& pieces) {
    for (const std::string& piece : pieces)
        Require(::write(file, piece.data(), piece.size()) == static_cast<ssize_t>(piece.size()),
                "bare write");
}

} // namespace

SessionContent RecordSession(const BenchmarkAccount& account) {
    account.RemoveDocuments();
    const WriteSizes writes;
    LogSession* session = HostCalls::StartSession();
    const std::size_t writesAtStart = writes.Get().size();
    UTCloseSession(&session);
    const std::vector<std::size_t> sizes = writes.Get();
    const std::string document = ReadDocument(account);
    SessionContent content;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < sizes.size(); begin += sizes[i++])
        (i < writesAtStart ? content.atStart : content.atClose)
            .push_back(document.substr(begin, sizes[i]));
    Require(begin == document.size(), "the document is not what write(2) was given");
    return content;
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
