#include "Benchmarks/Peers.h"

#include <sqlite3.h>

#include <ctime>
#include <stdexcept>

namespace {

/// Every event is a row and a transaction of its own.
class SqlitePeer : public Peer {
public:
    SqlitePeer(const std::string& path, const std::string& synchronous) {
        Require(sqlite3_open(path.c_str(), &m_database) == SQLITE_OK);
        Execute("PRAGMA journal_mode=WAL");
        Execute("PRAGMA synchronous=" + synchronous);
        Execute("CREATE TABLE events (seq INTEGER PRIMARY KEY, time INTEGER, category TEXT, "
                "subcategory TEXT, name TEXT)");
        Require(sqlite3_prepare_v2(m_database,
                                   "INSERT INTO events (time, category, subcategory, name) "
                                   "VALUES (?, ?, ?, ?)",
                                   -1, &m_insertion, nullptr) == SQLITE_OK);
    }
    ~SqlitePeer() override {
        sqlite3_finalize(m_insertion);
        sqlite3_close(m_database);
    }

    void LogEvent(const Event& event) override {
        sqlite3_bind_int64(m_insertion, 1, std::time(nullptr));
        sqlite3_bind_text(m_insertion, 2, event.category, -1, SQLITE_STATIC);
        sqlite3_bind_text(m_insertion, 3, event.subcategory, -1, SQLITE_STATIC);
        sqlite3_bind_text(m_insertion, 4, event.name, -1, SQLITE_STATIC);
        Require(sqlite3_step(m_insertion) == SQLITE_DONE);
        sqlite3_reset(m_insertion);
    }

private:
    void Require(bool success) {
        if (!success)
            throw std::runtime_error(sqlite3_errmsg(m_database));
    }
    void Execute(const std::string& statement) {
        Require(sqlite3_exec(m_database, statement.c_str(), nullptr, nullptr, nullptr) ==
                SQLITE_OK);
    }

    sqlite3* m_database = nullptr;
    sqlite3_stmt* m_insertion = nullptr;
};

} // namespace

std::unique_ptr<Peer> MakeSqlitePeer(const std::string& folder, const std::string& synchronous) {
    return std::make_unique<SqlitePeer>(folder + "/" + synchronous + ".sqlite", synchronous);
}
