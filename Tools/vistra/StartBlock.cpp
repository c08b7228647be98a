#include "Tools/vistra/StartBlock.h"

#include "Utility/src/RecordNames.h"

#include <iterator>

using namespace RecordNames;

namespace {

/// What may come next. `next` and `otherwise` are steps forward, or back: to go on behind a record
/// that fits, and to try for one that does not. 0 otherwise: nothing else may stand there.
struct Step {
    const char* name; ///< null: any
    bool isGroup;
    int next;
    int otherwise;
};

constexpr Step Group(const char* name) {
    return {name, true, 1, 0};
}
constexpr Step Data(const char* name) {
    return {name, false, 1, 0};
}

constexpr Step kSteps[] = {
    Group(kSessionGroup),
    Data(kProductFamily),
    Data(kProductName),
    Data(kProductVersion),
    Data(kProductBuild),
    Data(kProductLanguage),
    Data(kUser),
    {kUserType, false, 1, 1}, // only where one is set
    Group(kSystemInfoGroup),
    Data(kOS),
    Data(kOSType),
    Data(kOSLanguage),
    Data(kUserLanguage),
    Data(kProcessor),
    Data(kProcessorName),
    Data(kProcessorModel),
    Data(kNumProcessors),
    Data(kSpeed),
    Data(kMemory),
    Data(kMonitorCount),
    Data(kDefaultBrowser),
    {kScreenGroup, true, 1, 3}, // one for each screen
    Data(kScreenWidth),
    {kScreenHeight, false, -2, 0},
    Group(kDemographicsGroup),
    {nullptr, false, 0, 1}, // any answers
    Group(kExecutableInfoGroup),
    Data(kExecutableName),
    Data(kExecutableVersion),
    Data(kExecutableBuild),
    Data(kExecutableLanguage),
    Group(kUsageVersionInfoGroup),
    Data(kAgentVersion),
    Data(kLibraryVersion),
};
constexpr std::size_t kSize = std::size(kSteps);

bool Fits(const Record& record, const Step& step) {
    const bool isGroup = record.Type() == RecordType::NewGroup;
    if (isGroup != step.isGroup || (!isGroup && record.Type() != RecordType::DataRec))
        return false;
    if (isGroup && record.Written(AttributeName::kCategory) != kVistraCategory)
        return false;
    return !step.name || record.Written(AttributeName::kName) == step.name;
}

} // namespace

std::string StartBlock::Take(const Record& record) {
    if (record.Type() == RecordType::SplitSession || record.Type() == RecordType::ResumeSession)
        return std::string();
    while (m_step < kSize) {
        const Step& step = kSteps[m_step];
        const bool fits = Fits(record, step);
        if (!fits && step.otherwise == 0) {
            m_step = kSize;
            return std::string("the standard groups: here ") +
                   (step.isGroup ? "begins the group " : "stands ") + step.name;
        }
        m_step += static_cast<std::size_t>(fits ? step.next : step.otherwise);
        if (fits)
            break;
    }
    return std::string();
}
