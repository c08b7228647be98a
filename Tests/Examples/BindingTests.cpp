#include "LogSession/UTSession.hpp"
#include "Tests/EndToEnd/EndToEndTest.h"

#include <regex>

using namespace testing;

namespace {

bool gMemoryIsMissing = false;

/// A user account, with sessions of this very process or of other hosts in it.
struct BindingTest : EndToEndTest {
    std::string AgentFolder() const { return m_host.Folder() + "/Contents/MacOS"; }

    void Initialize(UT::OptIn answer) const {
        UT::Initialize("key", true, AgentFolder());
        UT::SetOptIn(answer);
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
    UT::Session refused("Suite", "Editor", "1.0"), empty;
    for (UT::Session* session : {&refused, &empty}) {
        EXPECT_FALSE(*session);
        session->Add("Key", "Value");
        session->LogEvent("A", "B", "C", "id");
        const UT::Group group = session->NewGroup("A", "B", "C");
        EXPECT_FALSE(group);
        group.Add("Key", "Value");
        session->Close();
    }
    UT::Group().Add("Key", "Value");
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(BindingTest, ViewsAreRecordedAsTheTextsOfTheCInterface) {
    Initialize(UT::OptIn::In);
    const std::string text = std::string(600, 'x') + '\0' + "never seen";
    unsigned char id[] = {0xFF, 1, 0, 2};
    for (const std::size_t size : {0, 1, 128, 129, 512, 513, 514, 611}) {
        UT::Session views("Suite", "Views", "1.0", "5", {});
        const std::string_view view(text.data(), size);
        views.Add(view, view);
        views.Add("Key", {});
        views.LogEvent(view, view, view, UT::Bytes(id, sizeof id));
        UT::Group group = views.NewGroup(view, {}, "Name", view);
        group.Add("Key", view);

        LogSession* session;
        UTStartSession(&session, "Suite", "Texts", "1.0", "5", nullptr);
        const std::string copy(view);
        UTAddToSession(session, copy.c_str(), copy.c_str());
        UTAddToSession(session, "Key", nullptr);
        UTLogEvent(session, copy.c_str(), copy.c_str(), copy.c_str(), id, sizeof id);
        int number;
        std::string bytes = copy;
        UTNewDataGroup(session, copy.c_str(), nullptr, "Name", &number,
                       reinterpret_cast<unsigned char*>(bytes.data()), static_cast<int>(size));
        UTAddToGroup(session, number, "Key", copy.c_str());

        views.Close();
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
    const std::string python =
        "LOGSESSION_LIBRARY=" LIBRARY " " PYTHON " " EXAMPLES "/Python/minimal.py";
    for (const std::string& host :
         std::vector<std::string>{MINIMAL_HOST, MINIMAL_CXX_HOST, python}) {
        ClearFolder();
        EXPECT_EQ(std::system((host + " '" + AgentFolder() + "'").c_str()), 0) << host;
        EXPECT_EQ(Recorded("My Product", "My Suite"),
                  "DataRec|1|Theme|dark\nEventRec|0|File|Open|Image\n");
    }
}

TEST_F(BindingTest, PythonRefusesWhatIsNoTextAndClosesItsSessionOnAnError) {
    const std::string command = PYTHON " " TEST_DATA "/../Examples/logsession_test.py '";
    EXPECT_EQ(std::system((command + AgentFolder() + "'").c_str()), 0);
    const std::string lone = "DataRec|1|Surrogate|\uFFFD\n";
    EXPECT_THAT(std::regex_replace(Recorded("Editor"), std::regex("[0-9]{7}"), "HASH"),
                "DataRec|1|Key|gr\u00FCn\n" + lone + "NewGroup|A|NOVALUE|G|6|HASH\n" +
                    "DataRec|6|Key|NOVALUE\nEventRec|HASH|NOVALUE|NOVALUE|Same\n");
}
