#include "Benchmarks/Peers.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/log/attributes/clock.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sinks/text_file_backend.hpp>
#include <boost/log/sources/logger.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/support/date_time.hpp>

namespace {

namespace logging = boost::log;
using Sink = logging::sinks::synchronous_sink<logging::sinks::text_file_backend>;

/// Writes the record that the library does, in clear and with nothing checked; flushes each line.
class BoostLogPeer : public Peer {
public:
    explicit BoostLogPeer(const std::string& path)
        : m_sink(boost::make_shared<Sink>(logging::keywords::file_name = path,
                                          logging::keywords::auto_flush = true)) {
        namespace expressions = logging::expressions;
        m_sink->set_formatter(expressions::stream
                              << "<EventRec doc=\"0\" " << expressions::smessage << " time=\""
                              << expressions::format_date_time<boost::posix_time::ptime>(
                                     "TimeStamp", "%Y-%m-%dT%H:%M:%SZ")
                              << "\" />");
        logging::core::get()->add_global_attribute("TimeStamp", logging::attributes::utc_clock());
        logging::core::get()->add_sink(m_sink);
    }
    ~BoostLogPeer() override { logging::core::get()->remove_sink(m_sink); }

    void LogEvent(const Event& event) override {
        BOOST_LOG(m_logger) << "category=\"" << event.category << "\" subcategory=\""
                            << event.subcategory << "\" name=\"" << event.name << "\" seq=\""
                            << m_sequence++ << '"';
    }

private:
    boost::shared_ptr<Sink> m_sink;
    logging::sources::logger m_logger;
    unsigned m_sequence = 0;
};

} // namespace

std::unique_ptr<Peer> MakeBoostLogPeer(const std::string& folder) {
    return std::make_unique<BoostLogPeer>(folder + "/boost.log");
}
