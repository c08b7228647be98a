#include "Fuzz/FuzzInput.h"
#include "LogSession/OptInPolicy.h"
#include "LogSession/UTLogData.h"
#include "Tests/Support/Sandbox.h"
#include "Tests/Support/UsageDocument.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/Mac/PreferenceUtil.h"
#include "Utility/src/PreferenceKeys.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
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
    using Block = std::unique_ptr<char, decltype(&std::free)>;

    /// A text in a block without a byte to spare, or null.
    Block Text() {
        const int form = m_input.Number(8);
        if (form == 1)
            return {nullptr, std::free};
        std::string text = m_input.Text('\0');
        while (form > 5 && !text.empty() && text.size() <= (form == 6 ? 200 : 512))
            text += text;
        const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
        if (m_isTame)
            std::replace_if(text.begin(), text.end(), isControl, '_');
        return {::strdup(text.c_str()), std::free};
    }

    /// Any call takes what it needs of one set of arguments.
    void Call() {
        const int call = m_input.Number(16), handle = m_input.Number(8);
        const int number = m_input.Number(256), choice = number % 8, value = choice - 1;
        const Block first = Text(), second = Text(), third = Text();
        const char *const a = first.get(), *const b = second.get(), *const c = third.get();
        const std::string id = m_input.Text('\xFF');
        std::vector<unsigned char> block(id.begin(), id.end());
        unsigned char* const document = block.data();
        const int idLength = static_cast<int>(id.size()) * (choice == 1 ? -1 : 1);
        LogSession** const variable = handle == 7 ? nullptr : &m_handles[handle];
        LogSession* const session = m_handles[handle];
        int* const group = &m_groups[choice];
        unsigned long size = static_cast<unsigned long>(number);
        unsigned long* const length = handle == 7 ? nullptr : &size;
        std::vector<char> buffer(size + (size == 0));
        char* const out = a && b && c ? buffer.data() : nullptr;
        const char* const agent = b && !*b ? m_agent.c_str() : b;
        const std::function<void()> calls[16] = {
            [=] { UTAddToSession(session, a, b); },
            [=] { UTLogEvent(session, a, b, c, document, idLength); },
            [=] {
                UTNewDataGroup(session, a, b, c, choice == 7 ? nullptr : group, document, idLength);
            },
            [=] { UTAddToGroup(session, *group, a, b); },
            [=, this] { Start(variable, a, b, c); },
            [=, this] {
                m_handles[6] = session; // which is no longer one
                UTCloseSession(variable);
            },
            [=] { UTInitialize(a, static_cast<unsigned char>(number), agent); },
            [=] { UTSetOptIn(value); },
            [=] { UTOptInSet(a, value); },
            [=] { return void(UTOptInGet(a) + UTGetOptIn()); },
            [=] { UTSetSerializationState(value); },
            [=] { UTSetDemographic(a, b); },
            [=] { UTSetNonDefaultDemographic(a, b, c); },
            [=] { UTGetDemographic(a, out, length); },
            [=] { UTGetNonDefaultDemographic(a, b, out, length); },
            [=, this] { m_handles[handle % 4] = m_handles[choice]; }};
        // A data call is made once, or often enough to split a document.
        const int times = call > 3 || number < 240 ? 1 : 8 * (number - 239);
        for (int left = times; left > 0 && (call > 3 || m_records++ < kMaximumRecords); --left)
            calls[call]();
    }

    void Start(LogSession** variable, const char* a, const char* b, const char* c) {
        if (m_isTame)
            UTStartSession(variable, "Suite", "Photo Editor", "1.0_\xC3\xA4", nullptr, "");
        else
            UTStartSession(variable, a, b, c, a, b);
        if (variable && *variable)
            m_opened.push_back(*variable);
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
    for (auto& [session, files] : sessions) {
        std::ranges::stable_sort(files, {}, &std::string::size);
        ForgetLastSplit(files);
        if (isKept)
            ReadSession(files);
        else // what is left of them
            std::ranges::for_each(files, ReadDocument);
    }
}

} // namespace

/// The calls of a host, and the documents that it leaves.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Host host(FuzzInput(bytes, size));
    CheckFolder(host.IsTame(), host.Play());
    return 0;
}
