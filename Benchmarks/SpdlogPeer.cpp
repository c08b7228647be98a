#include "Benchmarks/Peers.h"

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

namespace {

/// Writes the record that the library does, in clear and with nothing checked; flushes each line.
class SpdlogPeer : public Peer {
public:
    explicit SpdlogPeer(const std::string& path)
        : m_logger("peer", std::make_shared<spdlog::sinks::basic_file_sink_mt>(path)) {
        m_logger.set_pattern("<EventRec doc=\"0\" %v time=\"%Y-%m-%dT%H:%M:%SZ\" />",
                             spdlog::pattern_time_type::utc);
        m_logger.flush_on(spdlog::level::info);
        m_logger.set_error_handler([](const std::string& text) { throw std::runtime_error(text); });
    }

    void LogEvent(const Event& event) override {
        m_logger.info(R"(category="{}" subcategory="{}" name="{}" seq="{}")", event.category,
                      event.subcategory, event.name, m_sequence++);
    }

private:
    spdlog::logger m_logger;
    unsigned m_sequence = 0;
};

} // namespace

std::unique_ptr<Peer> MakeSpdlogPeer(const std::string& folder) {
    return std::make_unique<SpdlogPeer>(folder + "/spdlog.log");
}
