#include "Benchmarks/BareFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

std::string NewPath(const BenchmarkAccount& account) {
    static int number = 0;
    return account.LogFolder() + "/bare-" + std::to_string(number++);
}

void Require(bool success) {
    if (!success)
        throw std::runtime_error("bare file");
}

} // namespace

BareFile::BareFile(const BenchmarkAccount& account, const StoredSession& content)
    : m_content(content), m_path(NewPath(account)) {
    Open();
    Store(m_content.start);
}

BareFile::~BareFile() {
    ::close(m_file);
    ::unlink(m_path.c_str());
    for (int i = 0; i < m_finished; ++i)
        ::unlink(FinishedPath(i).c_str());
}

void BareFile::Open() {
    m_file = ::open(m_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    Require(m_file >= 0 && ::flock(m_file, LOCK_EX | LOCK_NB) == 0);
    m_bytes = 0;
}

void BareFile::BeginNext() {
    Store(m_content.end);
    Require(::flock(m_file, LOCK_UN) == 0 && ::close(m_file) == 0);
    Require(::rename(m_path.c_str(), FinishedPath(m_finished++).c_str()) == 0);
    Open();
    Store(m_content.nextStart);
}

std::string BareFile::FinishedPath(int number) const {
    return m_path + "_" + std::to_string(number);
}
