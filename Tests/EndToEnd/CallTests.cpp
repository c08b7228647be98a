#include "Tests/EndToEnd/EndToEndTest.h"

using namespace testing;

namespace {

using CallTest = EndToEndTest;

/// Each file holds calls and, after an empty line, what they leave in the log and the document.
TEST_F(CallTest, WritesWhatCanBeUsedAndReportsTheRest) {
    const std::string folder = TEST_DATA "/Calls/";
    EXPECT_THAT(NamesIn(folder), SizeIs(16));
    for (const std::string& name : NamesIn(folder)) {
        const std::string given = ReadText(folder + name);
        const std::size_t end = given.find("\n\n") + 1;
        m_host.Play(kOpen + given.substr(0, end) + kClose);
        std::string outcome = "\n";
        for (const std::string& message : m_host.Log())
            if (message.starts_with("DEBUG ") && !message.starts_with("DEBUG UT"))
                outcome += message + "\n";
        outcome += Briefs(ReadSession(Files()), kStartRecords, kEndRecords);
        EXPECT_EQ(outcome, given.substr(end)) << name;
        ClearFolder();
        std::filesystem::remove(m_account.DiagnosticLog());
    }
}

TEST_F(CallTest, NamesADocumentByAHashOfItsOwnForEachUser) {
    std::string hashes[2];
    for (std::string& hash : hashes) {
        const Sandbox account;
        HostBundle(account).Play(kOpen +
                                 "UTLogEvent s C S E abc 3\nUTLogEvent s C S E abc 10\n"
                                 "UTLogEvent s C S E abcd 3\nUTLogEvent s C S E abcd 4\n"
                                 "UTLogEvent s C S E abc 0\n" +
                                 kClose);
        const auto records =
            ReadSession({account.LogFolder() + "/" + NamesIn(account.LogFolder())[0]});
        const DocumentRecord* events = &records[kStartRecords];
        hash = events[0]["doc"];
        EXPECT_TRUE(events[1]["doc"] == hash && events[2]["doc"] == hash);
        EXPECT_TRUE(events[3]["doc"] != hash && events[4]["doc"] != hash);
        EXPECT_THAT(hash + events[4]["doc"], MatchesRegex("[0-9]{14}"));
    }
    EXPECT_NE(hashes[0], hashes[1]);
}

TEST_F(CallTest, WithoutALiveSessionDoesNothing) {
    const std::string calls = "UTGetOptIn\nUTOptInGet NULL\nUTCloseSession s\n" + kOpen +
                              "copy t s\n" + kClose + kClose +
                              "UTCloseSession F\nUTCloseSession t\nUTCloseSession "
                              "NULL\nUTStartSession NULL a b c d e\nUTAddToSession NULL K V\n"
                              "UTAddToSession F K V\nUTLogEvent t C S E NULL 0\nUTNewDataGroup t C "
                              "S G g NULL 0\nUTAddToGroup F 1 K V\n";
    EXPECT_EQ(m_host.Play(calls), "-1\n-1\ns=NULL\ns=open\ns=NULL\ns=NULL\nF=open\nt=open\n"
                                  "NULL=NULL\nNULL=NULL\ng=-1\n");
    EXPECT_EQ(ReadSession(Files()).size(), kStartRecords + kEndRecords);
}

TEST_F(CallTest, DemographicAnswersFitTheBufferOrAreCut) {
    const std::pair<std::string, std::string> answers[] = {
        {"Age NULL 0", " 10"},
        {"Age 10 10", "forty-two. 10"},
        {"Age 12 12", "forty-two.## 10"},
        {"Age 4 4", "for. 4"},
        {"Age 1 1", ". 1"},
        {"Age 2 0", ".# 0"},
        {"Age 2 NULL", "## 0"},
        {"None 3 3", "### 3"},
        {"None 2 0", ".# 0"},
        {"NULL 2 2", "## 2"},
        {std::string(64, 'k') + " 9 9", "NOVALUE.# 8"}};
    std::string calls = "UTSetDemographic Age forty-two\nUTSetDemographic " + std::string(70, 'k') +
                        " NULL\n",
                expected;
    for (const auto& [call, answer] : answers) {
        calls += "UTGetDemographic " + call + "\n";
        expected += answer + "\n";
    }
    EXPECT_EQ(m_host.Play(calls), expected);
}

TEST_F(CallTest, DemographicAnswersBelongToProducts) {
    const std::string set = "UTSetNonDefaultDemographic ", get = "UTGetNonDefaultDemographic ";
    std::string deep; // would take more stack to store than there is
    for (int i = 0; i < 100'000; ++i)
        deep += "d/";
    EXPECT_EQ(m_host.Play(set + deep + " A deep\n" + set + "key A own\n" + set + "a/b//c A sub\n" +
                          set + "\"\" A none\n" + get + "a/b/c A 4 4\n" + get +
                          "NULL A 5 5\nUTGetDemographic A 5 5\n" + kOpen + kClose +
                          "UTOptInSet other 0\nUTOptInGet other\nUTSetOptIn -1\nUTOptInGet key\n" +
                          get + "key A 4 4\n" + get + "a/b A 4 4\n"),
              "sub. 4\nnone. 5\nnone. 5\ns=open\ns=NULL\n0\n-1\n#### 4\n#### 4\n");
    EXPECT_THAT(Briefs(ReadSession(Files())), HasSubstr("DataRec|3|A|own\n"));
}

/// With "%" for each text.
const std::vector<std::string> kEveryCall = LinesOf(TEST_DATA "/every-call.txt");

/// A call with one text in place of its `index`th "%" and "ok" in place of the others.
std::string Filled(const std::string& call, const std::string& text, int index) {
    std::string filled;
    for (const char c : call)
        filled += c != '%' ? std::string(1, c) : index-- == 0 ? text : "ok";
    return filled + "\n";
}

TEST_F(CallTest, HostileTextsNeitherCrashNorTearTheDocument) {
    std::string calls = kOpen;
    for (const std::string text : {"NULL", "\"\"", "../../x", "\"\xff\xfe\xc3(\xed\xa0\x80\"",
                                   "\"<a b='&amp;'>]]>\\\"\\\\\"", "long"})
        for (const std::string& call : kEveryCall)
            for (int i = 0; i < std::ranges::count(call, '%'); ++i)
                calls += Filled(call, text == "long" ? std::string(1'100'000, '<') : text, i) +
                         kInitialize + "UTCloseSession t\n";
    m_host.Play(calls + "UTSetOptIn 1\nUTAddToSession s Last V\n" + kClose);
    const std::string briefs = Briefs(ReadSession(Files()), 0, 5);
    EXPECT_THAT(briefs, EndsWith("\nDataRec|1|Last|V\n"));
    EXPECT_THAT(briefs, HasSubstr("DataRec|1|ok|<a b='&amp;'>]]>\"\\\n"));
}

TEST_F(CallTest, ThatRunsOutOfMemoryIsLogged) {
    std::string calls;
    for (int nth = 1; nth < 80; ++nth) {
        const std::string failing = "failing " + std::to_string(nth) + " ";
        calls += failing + "UTSetSerializationState 2\n" + kOpen;
        for (const std::string& call : kEveryCall)
            calls += failing + Filled(call, std::string(100, 'x'), 0);
        calls += failing + kClose;
    }
    m_host.Play(calls);
    for (const std::string& call : kEveryCall) {
        const std::string name = call.substr(0, call.find(' '));
        const std::string twin = name == "UTAddToGroup" ? name : "WRAPPER" + name;
        EXPECT_THAT(m_host.Log(), Contains("DEBUG Exception occurs for " + twin + "()"));
    }
}

TEST_F(CallTest, AFailedWriteDeletesTheFileAndEndsRecording) {
    Prefer("send", 0);
    std::filesystem::remove(m_host.Folder() + "/VSLog.config");
    EXPECT_EQ(m_host.Play(kOpen + "repeat 300 UTAddToSession s Key " + std::string(400, 'x') +
                              "\nUTNewDataGroup s C S G g NULL 0\nUTAddToGroup s g K V\n" + kClose,
                          "trap '' XFSZ; ulimit -f 60;"),
              "s=open\ng=-1\ns=NULL\n");
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(CallTest, IsAllThatTheLibraryExports) {
    const std::string list = m_account.Root() + "/symbols";
    ASSERT_EQ(std::system(("nm -D --defined-only -j '" LOG_SESSION "' >" + list).c_str()), 0);
    std::vector<std::string> names;
    for (const std::string& call : kEveryCall)
        names.push_back(call.substr(0, call.find(' ')));
    EXPECT_THAT(LinesOf(list), UnorderedElementsAreArray(names));
}

} // namespace
