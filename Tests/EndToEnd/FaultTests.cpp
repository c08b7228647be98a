#include "Tests/EndToEnd/EndToEndTest.h"

#include <cstdlib>
#include <map>
#include <regex>

using namespace testing;

namespace {

/// Everything that a host does in one life, its hand-overs included; and what it does afterwards,
/// when the fault is over.
const std::string kLife =
    "UTInitialize key 1 NULL\nUTSetOptIn 1\nUTSetDemographic Age 42\n" + kStart +
    "UTStartSession t Suite Reader 1.0 NULL NULL\nUTAddToSession s Key Value\n"
    "UTLogEvent s C S E abc 3\nUTNewDataGroup s C S G g abc 3\nUTAddToGroup s g Key Value\n"
    "UTAddToSession s \"\" refused\nUTSetOptIn 0\nUTSetOptIn 1\nUTSetSerializationState 1\n"
    "repeat 120 UTAddToSession s Key " +
    std::string(512, '<') + "\n" + kClose + "UTCloseSession t\nallocations\n";
const std::string kAfter = "mark\nUTInitialize key 0 NULL\nUTSetOptIn 1\n"
                           "UTStartSession u After Editor 1.0 100 en_US\nUTAddToSession u Last V\n"
                           "UTCloseSession u\n";

struct FaultTest : EndToEndTest {
    FaultTest() {
        WriteText(m_account.Root() + "/calls", "mark\n" + kLife + kAfter);
        // An agent that ends at once: there are many lives to live.
        std::filesystem::copy_file("/bin/true",
                                   m_host.AgentBundle() + "/Contents/MacOS/LogTransport2",
                                   std::filesystem::copy_options::overwrite_existing);
    }

    /// The first of the sample, and the distance to the next: all of them if thorough.
    static unsigned Stride(unsigned stride) { return std::getenv("VISTRA_THOROUGH") ? 1 : stride; }

    /// What is there before a life.
    virtual void Prepare() const { WriteText(Others(), "theirs"); }

    /// Lives the life in an account that is otherwise empty. Returns what the host printed, and
    /// nothing when it does not end well within time.
    std::optional<std::string> Live(const std::string& prefix) const {
        for (const char* folder : {"/.config", "/.local"})
            std::filesystem::remove_all(m_account.Home() + folder);
        Prepare();
        const std::string command = "cd '" + m_account.Root() + "'; timeout 60 env " + prefix +
                                    " Host.app/Contents/MacOS/Host <calls >results";
        if (std::system(command.c_str()) != 0)
            return std::nullopt;
        return ReadText(m_account.Root() + "/results");
    }

    std::string Others() const { return m_account.LogFolder() + "/ulog_Others.xml"; }

    /// The documents of each session, without opt-in documents and empty files.
    std::map<std::string, std::vector<std::string>> Sessions() const {
        std::map<std::string, std::vector<std::string>> sessions;
        for (const char* prefix : {"ulog_Suite_Editor", "ulog_Suite_Reader", "ulog_After_Editor"})
            for (const std::string& path : Files(prefix))
                if (std::filesystem::file_size(path) > 0)
                    sessions[path.substr(0, path.rfind('_'))].push_back(path);
        return sessions;
    }
};

/// Fails for a document with anything but whole records, in the order of their numbers. Records
/// may be missing, and the head of a file, for what could not be opened or was deleted.
void ExpectWholeRecords(const std::vector<std::string>& paths) {
    const std::regex frame("(<\\?xml .*\\?>|</?UsageDoc.*>)?"),
        record("<\\w+( \\w+=\"[^\"<>]*\")* seq=\"(\\d+)\" />");
    int last = -1;
    for (const std::string& path : paths) {
        std::istringstream text(ClearText(path));
        std::smatch match;
        for (std::string line; std::getline(text, line);) {
            if (std::regex_match(line, frame))
                continue;
            ASSERT_TRUE(std::regex_match(line, match, record) && std::stoi(match[2]) > last)
                << path << ": " << line;
            last = std::stoi(match[2]);
        }
        EXPECT_TRUE(text.eof() && ClearText(path).ends_with("\n")) << path;
    }
}

struct AllocationFaultTest : FaultTest {
    unsigned CountAllocations() const {
        std::istringstream printed(Live("").value_or(""));
        unsigned count = 0;
        for (std::string line; std::getline(printed, line) && count < 100;)
            count = static_cast<unsigned>(std::max(0, std::atoi(line.c_str())));
        return count;
    }

    /// Lives with the nth allocation failing; "+" for the later ones of its call, too.
    void Fail(unsigned nth, const std::string& later) const {
        SCOPED_TRACE(std::to_string(nth) + later);
        ASSERT_THAT(Live("FAILING_ALLOCATION=" + std::to_string(nth) + later),
                    Optional(HasSubstr("\nu=open\nu=NULL\n")));
        EXPECT_EQ(ReadText(Others()), "theirs");
        for (const auto& [session, paths] : Sessions())
            later.empty() ? void(ReadSession(paths)) : ExpectWholeRecords(paths);
        if (!later.empty())
            return;
        EXPECT_THAT(NamesIn(m_account.Home() + "/.local/state/Logs/Norvale/Vistra/SessionInfo"),
                    IsEmpty());
    }
};

TEST_F(AllocationFaultTest, CostsOneCallAtMostAndLeavesSessionsWhole) {
    const unsigned count = CountAllocations();
    ASSERT_GT(count, 1000U);
    RecordProperty("allocations", std::to_string(count));
    for (unsigned nth = 1; nth <= count; nth += Stride(41))
        Fail(nth, "");
}

TEST_F(AllocationFaultTest, ThatLastsEndsTheCallAndTearsNothing) {
    for (unsigned nth = 1, count = CountAllocations(); nth <= count; nth += Stride(67))
        Fail(nth, "+");
}

/// The system calls of the life, each with the places that it has among those of its name. Those of
/// the loader count but are left out, as is the host's reading of its script.
std::map<std::string, std::vector<int>> TracedCalls(const std::vector<std::string>& trace) {
    const auto isMark = [](const std::string& line) { return line.find("\"mark\"") < 20; };
    const auto start = std::ranges::find_if(trace, isMark);
    const auto end = std::find_if(start + 1, trace.end(), isMark);
    // Unmapping the cache of libraries is the last that the loader does before they initialise.
    const auto isUnmap = [](const std::string& line) { return line.starts_with("munmap("); };
    const auto loaded = std::find_if(std::reverse_iterator(start), trace.rend(), isUnmap).base();
    std::map<std::string, int> counts;
    std::map<std::string, std::vector<int>> calls;
    for (auto line = trace.begin(); line != end; ++line) {
        const std::string call = line->substr(0, line->find('('));
        ++counts[call];
        if (line >= loaded && !line->starts_with("read(0,"))
            calls[call].push_back(counts[call]);
    }
    return calls;
}

struct SystemCallFaultTest : FaultTest, WithParamInterface<const char*> {
    void Prepare() const override {
        FaultTest::Prepare();
        using namespace PreferenceKeys;
        PreferenceUtil::SetPreferenceValue(kUserGuid, kDomain, m_user, kCFPreferencesCurrentUser,
                                           kCFPreferencesCurrentHost);
        PreferenceUtil::SetPreferenceValue("key", kDate, kDomain, std::string("2001"),
                                           kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
        WriteText(m_account.UserConfigFile(), "[mine]\nkeep=1\n");
    }

    /// Lives with the nth such call failing, or from the nth on if the error lasts.
    void Fail(const std::string& call, int nth) const {
        std::string error = GetParam(), when = std::to_string(nth);
        const bool lasts = error.ends_with("_lasting");
        if (lasts) {
            error.resize(error.rfind('_'));
            when += "+";
        }
        SCOPED_TRACE(call + " " + when);
        const std::optional<std::string> results =
            Live(m_strace + "-e trace='?access,?faccessat," + call + "' -e inject=" + call +
                 ":error=" + error + ":when=" + when);
        ASSERT_THAT(results, Optional(_));
        if (CameLate())
            return;
        ASSERT_THAT(results, Optional(HasSubstr(lasts ? "" : "\nu=open\nu=NULL\n")));
        EXPECT_THAT(ReadText(m_account.UserPreferences()),
                    AllOf(HasSubstr(m_user), HasSubstr("2001")));
        EXPECT_THAT(ReadText(m_account.UserConfigFile()), HasSubstr("keep=1"));
        for (const auto& [session, paths] : Sessions())
            lasts || session.find("After") == std::string::npos ? ExpectWholeRecords(paths)
                                                                : void(ReadSession(paths));
        // Without an agent, as it seems then, a hand-over empties the folder.
        if (std::regex_match(call, std::regex(".*stat.*")) && !std::filesystem::exists(Others()))
            return;
        EXPECT_EQ(ReadText(Others()), "theirs");
    }

    /// Whether the fault came when the life was over: how often a file is looked at depends on
    /// time.
    bool CameLate() const {
        int marks = 0;
        for (const std::string& line : LinesOf(m_account.Root() + "/trace")) {
            marks += line.find("\"mark\"") < 20;
            if (line.find("INJECTED") != std::string::npos)
                return marks > 1;
        }
        return true;
    }

    const std::string m_user = "0A1B2C3D-0000-4000-8000-0123456789AB";
    const std::string m_strace = "ASAN_OPTIONS=detect_leaks=0 strace -qq -o trace ";
};

TEST_P(SystemCallFaultTest, TearsNothingAndEndsWithTheCall) {
    if (std::system("strace -o /dev/null true 2>/dev/null") != 0)
        GTEST_SKIP() << "strace cannot run";
    ASSERT_THAT(Live(m_strace), Optional(_));
#ifdef __SANITIZE_ADDRESS__
    const std::string write = "-"; // the sanitizer itself writes, and does not bear a failure
#else
    const std::string write = "write";
#endif
    const std::regex faulty(write +
                            "|openat|read|close|.*stat.*|rename.*|.*link.*|mkdir|fsync|flock|"
                            "f?truncate|f?chmod|fchown|getdents64|faccessat.*|utimensat|fcntl|"
                            "clone|wait4");
    std::size_t failures = 0;
    for (const auto& [call, places] : TracedCalls(LinesOf(m_account.Root() + "/trace")))
        for (std::size_t i = 0; i < places.size() && std::regex_match(call, faulty);
             i += Stride(61), ++failures)
            Fail(call, places[i]);
    RecordProperty("failures", std::to_string(failures));
}

INSTANTIATE_TEST_SUITE_P(Errors, SystemCallFaultTest,
                         Values("EACCES", "EDQUOT", "EINTR", "EIO", "EMFILE", "ENOSPC", "EROFS",
                                "EACCES_lasting", "EIO_lasting", "EMFILE_lasting",
                                "ENOSPC_lasting"),
                         [](const auto& error) { return std::string(error.param); });

TEST_F(FaultTest, WritesThatAreShortOrInterruptedGoOn) {
    ASSERT_THAT(Live("SHORT_WRITES=7"), Optional(HasSubstr("\nu=open\nu=NULL\n")));
    EXPECT_THAT(Sessions(), SizeIs(3));
    for (const auto& [session, paths] : Sessions())
        EXPECT_NO_THROW(ReadSession(paths)) << session;
}

} // namespace
