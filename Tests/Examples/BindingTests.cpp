#include "LogSession/UTSession.hpp"
#include "Tests/EndToEnd/EndToEndTest.h"

#include <regex>

using namespace testing;

namespace {

bool gMemoryIsMissing = false;

const std::string kMinimalRecords = "DataRec|1|Theme|dark\nEventRec|0|File|Open|Image\n";

/// A user account, with sessions of this very process or of other hosts in it.
struct BindingTest : EndToEndTest {
    BindingTest() {
        m_account.SetVariable("LD_LIBRARY_PATH", std::filesystem::path(LIBRARY).parent_path());
    }

    std::string AgentFolder() const { return m_host.Folder() + "/Contents/MacOS"; }

    void Initialize(UT::OptIn answer) const {
        UT::Initialize("key", true, AgentFolder());
        UT::SetOptIn(answer);
    }

    /// Runs a shell command that takes the agent's folder. Returns its status.
    int Run(const std::string& host) const {
        return std::system((host + " '" + AgentFolder() + "'").c_str());
    }

    /// The end of the name of that product's only file.
    std::string State(const std::string& product) const {
        return std::filesystem::path(Files("ulog_Suite_" + product + "_").at(0)).extension();
    }

    /// The host's own records in that product's only session.
    std::string Recorded(const std::string& product, const std::string& family = "Suite") const {
        return Briefs(ReadSession(Files("ulog_" + family + "_" + product + "_")), kStartRecords,
                      kEndRecords);
    }
};

} // namespace

/// The one allocation that the C++ header makes when it records.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return gMemoryIsMissing ? nullptr : ::operator new[](size);
}

TEST_F(BindingTest, SessionIsClosedWhereItsOwnerEnds) {
    Initialize(UT::OptIn::In);
    UT::Session session("Suite", "First", "1.0");
    session = UT::Session("Suite", "Second", "1.0");
    EXPECT_EQ(State("First"), ".rdy");
    UT::Session& same = session;
    session = std::move(same);
    ASSERT_TRUE(session);
    try {
        const UT::Session owner(std::move(session));
        EXPECT_EQ(State("Second"), ".tmp");
        throw 1;
    } catch (int) {
        EXPECT_EQ(State("Second"), ".rdy");
    }
    session = UT::Session("Suite", "Third", "1.0");
    session.Close();
    session.Close();
    EXPECT_FALSE(session);
    EXPECT_EQ(State("Third"), ".rdy");
}

TEST_F(BindingTest, InactiveSessionTakesEveryCall) {
    Initialize(UT::OptIn::Out);
    UT::Session session("Suite", "Editor", "1.0");
    EXPECT_FALSE(session);
    session.Add("Key", "Value");
    session.LogEvent("A", "B", "C", "id");
    const UT::Group group = session.NewGroup("A", "B", "C");
    EXPECT_FALSE(group);
    group.Add("Key", "Value");
    session.Close();
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(BindingTest, ViewsAreRecordedAsTheTextsOfTheCInterface) {
    Initialize(UT::OptIn::In);
    const std::string text = std::string(600, 'x') + '\0' + "never seen";
    for (const std::size_t size : {0U, 1U, 128U, 129U, 512U, 513U, 514U, 611U}) {
        const std::string_view view(text.data(), size);
        UT::Session views("Suite", "Views", "1.0", "5", {});
        views.Add(view, view);
        views.LogEvent(view, {}, view, UT::Bytes(view.data(), size));
        views.NewGroup(view, view, "Name", view).Add("Key", view);
        views.Close();

        std::string copy(view), id = copy;
        auto* bytes = reinterpret_cast<unsigned char*>(id.data());
        const int length = static_cast<int>(size);
        int group;
        LogSession* session;
        UTStartSession(&session, "Suite", "Texts", "1.0", "5", nullptr);
        UTAddToSession(session, copy.c_str(), copy.c_str());
        UTLogEvent(session, copy.c_str(), nullptr, copy.c_str(), bytes, length);
        UTNewDataGroup(session, copy.c_str(), copy.c_str(), "Name", &group, bytes, length);
        UTAddToGroup(session, group, "Key", copy.c_str());
        UTCloseSession(&session);
        EXPECT_EQ(Recorded("Views"), Recorded("Texts")) << size;
        ClearFolder();
    }
}

TEST_F(BindingTest, TextBeyondTheLimitsIsRecordedWithoutMemory) {
    Initialize(UT::OptIn::In);
    UT::Session session("Suite", "Editor", "1.0");
    gMemoryIsMissing = true;
    session.Add("Key", std::string(5000, 'x'));
    gMemoryIsMissing = false;
    session.Close();
    EXPECT_THAT(Recorded("Editor"), HasSubstr("|Value|" + std::string(512, 'x')));
    EXPECT_THAT(Recorded("Editor"), EndsWith("|Key|" + std::string(512, 'x') + "\n"));
}

TEST_F(BindingTest, AnswersAreReadBackWhole) {
    Initialize(UT::OptIn::Unknown);
    UT::SetOptIn(UT::OptIn::Out, "other");
    EXPECT_EQ(UT::GetOptIn(), UT::OptIn::Unknown);
    EXPECT_EQ(UT::GetOptIn("other"), UT::OptIn::Out);
    EXPECT_EQ(UT::GetDemographic("Work"), std::nullopt);
    UT::SetDemographic("Work", std::string(128, 'w'));
    UT::SetDemographic("Work", "none", "product");
    EXPECT_EQ(UT::GetDemographic("Work"), std::string(128, 'w'));
    EXPECT_EQ(UT::GetDemographic("Work", "product"), "none");
}

TEST_F(BindingTest, SmallestHostOfEachLanguageLeavesTheSameSession) {
    const std::string python = PYTHON " " SOURCES "/Examples/Python/minimal.py";
    m_account.SetVariable("LOGSESSION_LIBRARY", LIBRARY);
    for (const std::string& host :
         std::vector<std::string>{MINIMAL_HOST, MINIMAL_CXX_HOST, python}) {
        ClearFolder();
        EXPECT_EQ(Run(host), 0);
        EXPECT_EQ(Recorded("My Product", "My Suite"), kMinimalRecords);
    }
}

TEST_F(BindingTest, PythonRefusesWhatIsNoTextAndClosesItsSessionOnAnError) {
    EXPECT_EQ(Run(PYTHON " " SOURCES "/Tests/Examples/logsession_test.py"), 0);
    const std::string lone = "DataRec|1|Surrogate|\uFFFD\n";
    EXPECT_THAT(std::regex_replace(Recorded("Editor"), std::regex("[0-9]{7}"), "HASH"),
                "DataRec|1|Key|gr\u00FCn\n" + lone + "NewGroup|A|NOVALUE|G|6|HASH\n" +
                    "DataRec|6|Key|NOVALUE\nEventRec|HASH|NOVALUE|NOVALUE|Same\n");
}

/// The programs of the guide are told from its other blocks by the product that they record.
TEST_F(BindingTest, GuidesProgramsRecordAndItsOtherCodeCompiles) {
    const std::string build = " -Wall -Werror -I " SOURCES "/LogSession -o host host.";
    std::map<std::string, std::string> run = {
        {"c", C_COMPILER + build + "c " LIBRARY " && ./host"},
        {"cpp", CXX_COMPILER " -std=c++17" + build + "cpp " LIBRARY " && ./host"},
        {"python", PYTHON " host.python"}};
    std::map<std::string, std::string> frame = {
        {"c", "#include <UTLogData.h>\nvoid Use(LogSession* session) {\n"},
        {"cpp", "#include <UTSession.hpp>\nvoid Use(UT::Session& session) {\n"}};
    const std::string guide = ReadText(SOURCES "/docs/guide.md");
    const std::regex block("```(c|cpp|python)\n([^`]+)```");
    std::vector<std::string> programs;
    for (std::sregex_iterator i(guide.begin(), guide.end(), block), end; i != end; ++i) {
        const std::string language = (*i)[1], code = (*i)[2];
        const bool isProgram = code.find("My Suite") != std::string::npos;
        WriteText(m_account.Root() + "/host." + language,
                  isProgram ? code : frame.at(language) + code + "}\nint main() {}\n");
        ClearFolder();
        EXPECT_EQ(Run("cd " + m_account.Root() + " && " + run.at(language)), 0) << code;
        if (isProgram)
            programs.push_back(language + "\n" + Recorded("My Product", "My Suite"));
    }
    EXPECT_THAT(programs, ElementsAre("c\n" + kMinimalRecords, "cpp\n" + kMinimalRecords,
                                      "python\n" + kMinimalRecords));
}
