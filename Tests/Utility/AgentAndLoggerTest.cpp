#include "Tests/Support/Sandbox.h"
#include "Utility/src/LoggerUtil.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"

#include <gtest/gtest.h>

TEST(Agent, IsWhereTheHostSaysOrBesideTheHostsExecutable) {
    using Utils = LogTransUtils;
    const Sandbox sandbox;
    const std::string agent = "/LogTransport2.app/Contents/MacOS/LogTransport2",
                      contents = sandbox.Root() + "/Contents";
    Utils::SetLogTransportInputPath((contents + "/Frameworks").c_str());
    Utils::SetLogTransportInputPath(nullptr);
    EXPECT_EQ(Utils::GetAgentPath(), "");
    EXPECT_FALSE(Utils::UploadLog(""));
    WriteText(contents + "/MacOS" + agent, "");
    EXPECT_EQ(Utils::GetTransporterExeFullPath(), contents + "/MacOS" + agent);
    WriteText(contents + "/Frameworks" + agent, "");
    EXPECT_EQ(Utils::GetAgentPath(), contents + "/Frameworks/LogTransport2.app");
    Utils::gwsLogTransportPath->clear();
}

TEST(Log, ConfigurationIsReadLineByLine) {
    const Sandbox sandbox;
    const std::string path = sandbox.Root() + "/VSLog.config", off = "append=0\n";
    const std::pair<std::string, bool> kCases[] = {
        {"append=1", true},          {" =append;,1 0\n", true},
        {"append=yes", false},       {off + std::string(511, ' ') + "\nappend=1", true},
        {"append=1\n" + off, false}, {off + std::string(512, ' ') + "\nappend=1", false}};
    for (const auto& [text, append] : kCases) {
        WriteText(path, text);
        EXPECT_EQ(LoggerUtil::GetAppendTag(path), append) << text;
    }
}
