#include "Benchmarks/StoredSession.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

std::string ReadText(const fs::path& path) {
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// A document of the log folder, either the one in progress or the finished one.
fs::path Document(const BenchmarkAccount& account, bool inProgress) {
    for (const auto& file : fs::directory_iterator(account.LogFolder()))
        if ((file.path().extension() == ".tmp") == inProgress)
            return file.path();
    throw std::runtime_error("no document");
}

/// Takes `size` bytes off the front.
std::string TakeOff(std::string& text, std::size_t size) {
    const std::string front = text.substr(0, size);
    text.erase(0, size);
    return front;
}

} // namespace

StoredSession StoreSession(const BenchmarkAccount& account, RecordCalls::Call call) {
    StoredSession stored;
    {
        const HostSession host(account);
        const fs::path document = Document(account, true);
        std::vector<std::size_t> sizes{fs::file_size(document)};
        for (call(host); fs::exists(document); call(host))
            sizes.push_back(fs::file_size(document));
        std::string text = ReadText(Document(account, false));
        stored.start = TakeOff(text, sizes.front());
        for (std::size_t i = 1; i < sizes.size(); ++i)
            stored.records.push_back(TakeOff(text, sizes[i] - sizes[i - 1]));
        // The end came with the last record, which is as long as the one before.
        stored.records.push_back(TakeOff(text, stored.records.back().size()));
        stored.end = text;
        stored.nextStart = ReadText(Document(account, true));
    }
    account.RemoveDocuments();
    return stored;
}
