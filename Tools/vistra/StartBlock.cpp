#include "Tools/vistra/StartBlock.h"

#include "Utility/src/RecordNames.h"
#include "Utility/src/StringUtils.h"

#include <iterator>

using namespace RecordNames;

/// What may come next. `next` and `otherwise` are steps forward, or back: to go on behind a record
/// that fits, and to try for one that does not. 0 otherwise: nothing else may stand there.
struct StartBlock::Step {
    const char* name;     ///< null: any
    const char* category; ///< null: a value, not a group
    const char* subcategory;
    int next;
    int otherwise;
};

namespace {

using Step = StartBlock::Step;

constexpr Step Group(const char* name, const char* category = kVistraCategory,
                     const char* subcategory = kNoValue) {
    return {name, category, subcategory, 1, 0};
}
constexpr Step Data(const char* name) {
    return {name, nullptr, nullptr, 1, 0};
}

constexpr Step kSessionSteps[] = {
    Group(kSessionGroup),
    Data(kProductFamily),
    Data(kProductName),
    Data(kProductVersion),
    Data(kProductBuild),
    Data(kProductLanguage),
    Data(kUser),
    {kUserType, nullptr, nullptr, 1, 1}, // only where one is set
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
    {kScreenGroup, kVistraCategory, kNoValue, 1, 3}, // one for each screen
    Data(kScreenWidth),
    {kScreenHeight, nullptr, nullptr, -2, 0},
    Group(kDemographicsGroup),
    {nullptr, nullptr, nullptr, 0, 1}, // any answers
    Group(kExecutableInfoGroup),
    Data(kExecutableName),
    Data(kExecutableVersion),
    Data(kExecutableBuild),
    Data(kExecutableLanguage),
    Group(kUsageVersionInfoGroup),
    Data(kAgentVersion),
    Data(kLibraryVersion),
};
constexpr Step kDecisionSteps[] = {
    Group(kSessionGroup, kVistraCategory, kOptInRateSubcategory),
    Data(kProductFamily),
    Data(kProductName),
    Group(kOptInProductInfo, kOptInProductInfo, kOptInProductInfo),
    Data(kOptInProductFamily),
    Data(kOptInProductName),
    Data(kOptInProductVersion),
    Data(kOptInProductState),
    Data(kOptInUsageKey),
    Group(kOptInInfo, kOptInInfo, kOptInInfo),
    Data(kBaseCount),
    Data(kOptInCount),
};

constexpr Step kCrashSteps[] = {
    Group(kSessionGroup, kVistraCategory, kCrash),
    Data(kProductFamily),
    Data(kProductName),
    Group(kExitInfo, kAppExit, kCrash),
    Data(kExitType),
    Data(kCrashProductName),
    Data(kCrashProductFamily),
    Data(kCrashUser),
};

std::span<const Step> StepsOf(SmallDocument::Kind kind) {
    switch (kind) {
    case SmallDocument::Kind::Decision:
        return kDecisionSteps;
    case SmallDocument::Kind::Crash:
        return kCrashSteps;
    default:
        return kSessionSteps;
    }
}

constexpr char kDeparts[] = "the standard groups: here ";

} // namespace

StartBlock::StartBlock(SmallDocument::Kind kind)
    : m_steps(StepsOf(kind)),
      m_document(kind == SmallDocument::Kind::None ? kNoDocument : kNoValue),
      m_isAll(kind != SmallDocument::Kind::None) {}

bool StartBlock::Fits(const Record& record, const Step& step) const {
    const std::string_view name = record.Written(AttributeName::kName);
    if (!step.category)
        return record.Type() == RecordType::DataRec && (!step.name || name == step.name) &&
               record.Number(AttributeName::kGroup) == m_group;
    return record.Type() == RecordType::NewGroup && name == step.name &&
           record.Written(AttributeName::kCategory) == step.category &&
           record.Written(AttributeName::kSubcategory) == step.subcategory &&
           record.Written(AttributeName::kDoc) == m_document;
}

std::string StartBlock::Expected(const Step& step) const {
    if (!step.category)
        return std::string(kDeparts).append("stands ").append(step.name).append(" of group ") +=
               std::to_string(m_group);
    return std::string(kDeparts)
        .append("begins the group ")
        .append(step.name)
        .append(" of category ")
        .append(step.category)
        .append(", subcategory ")
        .append(step.subcategory)
        .append(" and doc ")
        .append(m_document);
}

std::string StartBlock::TakeBehind(const Record& record) {
    const bool departs = m_isAll && record.Type() != RecordType::EndSession;
    m_isAll = m_isAll && !departs;
    return departs ? std::string(kDeparts) + "the document ends" : std::string();
}

std::string StartBlock::Take(const Record& record) {
    if (record.Type() == RecordType::SplitSession || record.Type() == RecordType::ResumeSession)
        return std::string();
    while (m_step < m_steps.size()) {
        const Step& step = m_steps[m_step];
        const bool fits = Fits(record, step);
        if (!fits && step.otherwise == 0) {
            m_step = m_steps.size();
            m_isAll = false;
            return Expected(step);
        }
        m_step += static_cast<std::size_t>(fits ? step.next : step.otherwise);
        if (fits && step.category)
            m_group = record.Number(AttributeName::kGroup).value_or(0);
        if (fits)
            return std::string();
    }
    return TakeBehind(record);
}
