#include "Tools/vistra/DocumentHeading.h"

#include "Platform/FileReading.h"
#include "Tools/vistra/Console.h"
#include "Tools/vistra/SessionFileName.h"
#include "Tools/vistra/ShownText.h"
#include "Tools/vistra/UtcTime.h"

namespace {

std::string Row(std::string_view label, std::string_view text) {
    return "  " + Console::Styled(Console::Style::Faint, Padded(label, 12)).append(text) + "\n";
}

std::string ShownTime(const std::string& time) {
    return ShownText(UtcTime::Readable(time)) + (UtcTime::Seconds(time) ? " UTC" : "");
}

/// How long after the start a time is, in words; empty where either is not known.
std::string After(const std::string& start, const std::string& time) {
    const auto from = UtcTime::Seconds(start), to = UtcTime::Seconds(time);
    return from && to ? ", after " + UtcTime::Span(*to - *from) : "";
}

std::string ProductOf(const SessionIdentity& session) {
    std::string text = ShownText(session.family) + " / " + ShownText(session.name);
    if (!session.version.empty())
        text.append(" ").append(ShownText(session.version));
    if (!session.build.empty())
        text.append(", build ").append(ShownText(session.build));
    if (!session.language.empty())
        text.append(", ").append(ShownText(session.language));
    return text;
}

std::string EndRow(const std::string& path, const DocumentHead& head, const DocumentEnd& end) {
    const std::string when = ShownTime(end.time) + After(head.session.start, end.time);
    switch (end.kind) {
    case DocumentEnd::Kind::Session:
    case DocumentEnd::Kind::Leftover:
        return Row("ended", when);
    case DocumentEnd::Kind::Part:
        return Row("reaches to", when);
    default:
        return Row(Platform::IsHeldLocked(path) ? "so far to" : "breaks off", when);
    }
}

/// The number of the file beside this one, where its name tells this one's.
std::string Beside(const std::string& path, int step) {
    const auto index = ParseSessionFileName(path).index;
    return index ? "file " + std::to_string(std::int64_t{*index} + step) : "another file";
}

std::string PartRow(const std::string& path, const DocumentHead& head, const DocumentEnd& end) {
    std::string text;
    if (head.isResumed)
        text = "continued from " + Beside(path, -1);
    if (end.kind == DocumentEnd::Kind::Part)
        text.append(text.empty() ? "" : ", ").append("goes on in ").append(Beside(path, 1));
    if (text.empty())
        return text;
    const auto index = ParseSessionFileName(path).index;
    return Row("part", index ? "file " + std::to_string(*index) + ", " + text : text);
}

} // namespace

std::string HeadingOf(const std::string& path, const DocumentHead& head, const DocumentEnd& end) {
    const SessionIdentity& session = head.session;
    return Console::Styled(Console::Style::Heading, Console::Printable(path)) + "\n" +
           Row("session", ShownText(session.id)) + Row("product", ProductOf(session)) +
           Row("user", ShownText(session.user)) + Row("started", ShownTime(session.start)) +
           EndRow(path, head, end) + PartRow(path, head, end) +
           Row("stored",
               (head.isObfuscated ? "obfuscated, " : "in clear, ") + Counted(end.bytes, "byte"));
}
