#include "Fuzz/FuzzInput.h"
#include "LogSession/OptInPolicy.h"
#include "LogSession/UTLogData.h"
#include "Tests/Support/Sandbox.h"
#include "Tests/Support/UsageDocument.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/Mac/PreferenceUtil.h"
#include "Utility/src/PreferenceKeys.h"

#include <filesystem>
#include <memory>

namespace {

constexpr char kRootEnd[] = "</UsageDoc>\n";
constexpr int kMaximumCalls = 300, kMaximumRecords = 150;

const Sandbox& Account() {
    static const Sandbox account;
    return account;
}

void Prefer(const std::string& key, int value) {
    PreferenceUtil::SetPreferenceValue(key, PreferenceKeys::kDomain, value,
                                       kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
}

/// A host in an empty account. A tame one gives no product texts with markup and no control
/// characters, which would be in its documents as they are.
class Host {
public:
    explicit Host(FuzzInput input) : m_input(input), m_isTame(m_input.Number(2) == 0) {
        std::filesystem::remove_all(Account().Home());
        WriteText(m_agent + "/LogTransport2.app/Contents/MacOS/LogTransport2", "");
        Prefer(PreferenceKeys::kSend, 0); // no agent is started
        Prefer(PreferenceKeys::kObfuscate, m_input.Number(2));
        UTInitialize("key", 0, m_agent.c_str());
        UTSetSerializationState(2);
        UTSetOptIn(1);
    }

    /// Returns whether all documents have to be there.
    bool Play() {
        bool isKept = true;
        for (int i = 0; i < kMaximumCalls && !m_input.IsEmpty(); ++i) {
            Call();
            isKept = isKept && OptInPolicy::GetInstance()->AllowsRecording() &&
                     LogTransUtils::AgentExists();
        }
        for (LogSession* session : m_opened)
            UTCloseSession(&session);
        return isKept;
    }

    bool IsTame() const { return m_isTame; }

private:
    /// A text in a block without a byte to spare, or null.
    std::unique_ptr<char[]> Text() {
        const int form = m_input.Number(8);
        if (form == 1)
            return nullptr;
        std::string text = m_input.Text('\0');
        while (form > 5 && !text.empty() && text.size() <= (form == 6 ? 200 : 512))
            text += text;
        const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
        if (m_isTame)
            std::replace_if(text.begin(), text.end(), isControl, '_');
        auto block = std::make_unique<char[]>(text.size() + 1);
        text.copy(block.get(), text.size());
        return block;
    }

    /// Any call takes what it needs of one set of arguments.
    void Call() {
        const int call = m_input.Number(16), handle = m_input.Number(8);
        const int number = m_input.Number(256), choice = number % 8;
        const auto first = Text(), second = Text(), third = Text();
        const char *const a = first.get(), *const b = second.get(), *const c = third.get();
        const std::string id = m_input.Text('\xFF');
        std::vector<unsigned char> block(id.begin(), id.end());
        unsigned char* const document = block.data();
        const int idLength = static_cast<int>(id.size()) * (choice == 1 ? -1 : 1);
        LogSession** const variable = handle == 7 ? nullptr : &m_handles[handle];
        LogSession* const session = m_handles[handle];
        int& group = m_groups[choice];
        unsigned long length = static_cast<unsigned long>(number);
        std::vector<char> buffer(length + (length == 0));
        char* const out = a && b && c ? buffer.data() : nullptr;
        switch (call) {
        case 0:
            return Repeat(number, [=] { UTAddToSession(session, a, b); });
        case 1:
            return Repeat(number, [=] { UTLogEvent(session, a, b, c, document, idLength); });
        case 2:
            return Repeat(number, [=, &group] {
                UTNewDataGroup(session, a, b, c, choice == 7 ? nullptr : &group, document,
                               idLength);
            });
        case 3:
            return Repeat(number, [=] { UTAddToGroup(session, group, a, b); });
        case 4:
            return Start(variable, a, b, c);
        case 5:
            m_handles[6] = session; // which is no longer one
            return UTCloseSession(variable);
        case 6:
            return UTInitialize(a, static_cast<unsigned char>(number),
                                b && !*b ? m_agent.c_str() : b);
        case 7:
            return UTSetOptIn(choice - 1);
        case 8:
            return UTOptInSet(a, choice - 1);
        case 9:
            return void(UTOptInGet(a) + UTGetOptIn());
        case 10:
            return void(UTSetSerializationState(choice - 1));
        case 11:
            return UTSetDemographic(a, b);
        case 12:
            return UTSetNonDefaultDemographic(a, b, c);
        case 13:
            return UTGetDemographic(a, out, handle == 7 ? nullptr : &length);
        case 14:
            return UTGetNonDefaultDemographic(a, b, out, handle == 7 ? nullptr : &length);
        default:
            m_handles[handle % 4] = m_handles[choice];
        }
    }

    void Start(LogSession** variable, const char* a, const char* b, const char* c) {
        if (m_isTame)
            UTStartSession(variable, "Suite", "Photo Editor", "1.0_\xC3\xA4", nullptr, "");
        else
            UTStartSession(variable, a, b, c, a, b);
        if (variable && *variable)
            m_opened.push_back(*variable);
    }

    /// Makes a data call once, or often enough to split a document.
    template <class DataCall>
    void Repeat(int number, DataCall call) {
        for (int left = number < 240 ? 1 : 8 * (number - 239);
             left > 0 && m_records < kMaximumRecords; --left) {
            call();
            ++m_records;
        }
    }

    FuzzInput m_input;
    bool m_isTame;
    const std::string m_agent = Account().Root() + "/agent";
    /// Four of the host's own, none, a foreign one, one that was closed, none.
    LogSession* m_handles[8] = {{}, {}, {}, {}, {}, reinterpret_cast<LogSession*>(this), {}, {}};
    int m_groups[8] = {-1, 0, 1, 6, 7, 1000, INT32_MAX, INT32_MIN};
    int m_records = 0;
    std::vector<LogSession*> m_opened;
};

/// A split that the last record of a session brings about leaves a second root end, and a file
/// that holds its head alone. Takes both away.
void ForgetLastSplit(std::vector<std::string>& files) {
    if (ClearText(files.back()).ends_with(kRootEnd))
        return;
    files.pop_back();
    const std::string text = files.empty() ? "" : ClearText(files.back());
    const std::size_t end = text.find(std::string(kRootEnd) + "<SplitSession");
    Require(end != std::string::npos, "a file without an end");
    files.back() += ".xml";
    WriteText(files.back(), text.substr(0, end) + kRootEnd);
}

/// All files of a session, or what is left of them.
void CheckSession(std::vector<std::string> files, bool isKept) {
    std::ranges::stable_sort(files, {}, &std::string::size);
    ForgetLastSplit(files);
    if (isKept)
        ReadSession(files);
    else
        std::ranges::for_each(files, ReadDocument);
}

void CheckFolder(bool isTame, bool isKept) {
    std::map<std::string, std::vector<std::string>> sessions;
    for (const std::string& name : NamesIn(Account().LogFolder())) {
        const std::string path = Account().LogFolder() + "/" + name;
        Require(name.ends_with(".xml") || name.ends_with(".rdy"), "left behind: " + name);
        if (isTame && name.starts_with("ulog_VistraOptin"))
            ReadSession({path}, 0);
        else if (isTame)
            sessions[name.substr(0, name.rfind('_'))].push_back(path);
    }
    for (const auto& [session, files] : sessions)
        CheckSession(files, isKept);
}

} // namespace

/// The calls of a host, and the documents that it leaves.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Host host(FuzzInput(bytes, size));
    CheckFolder(host.IsTame(), host.Play());
    return 0;
}
