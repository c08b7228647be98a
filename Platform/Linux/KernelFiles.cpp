#include "Platform/Linux/KernelFiles.h"

#include "Platform/Linux/Descriptor.h"
#include "Platform/Linux/SystemText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fcntl.h>
#include <unistd.h>

namespace Platform {

namespace {

constexpr char kProcessors[] = "/proc/cpuinfo";
constexpr char kHighestKilohertz[] = "/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq";
constexpr const char* kModelFiles[] = {"/sys/class/dmi/id/product_name", "/proc/device-tree/model"};

// One system, several architectures: the first label that is there counts.
constexpr std::string_view kNameLabels[] = {"model name", "Model Name", "Processor",
                                            "cpu model",  "cpu",        "uarch"};
constexpr std::string_view kClockLabels[] = {"cpu MHz", "CPU MHz", "clock"};

/// The start of a kernel file, as much as one read gives: the first processor of a description
/// that grows with their number. Empty when it cannot be read.
std::string ReadStart(const std::string& path) {
    const Descriptor file = OpenDescriptor(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    std::array<char, 4096> buffer;
    const ssize_t count =
        file.IsOpen() ? Retried([&] { return ::read(file.Get(), buffer.data(), buffer.size()); })
                      : -1;
    return std::string(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
}

/// The value of the first line "label : value"; empty where there is none.
std::string_view ValueOf(std::string_view label, std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos && Trimmed(line.substr(0, colon)) == label)
            return Trimmed(line.substr(colon + 1));
    }
    return std::string_view();
}

template <std::size_t Count>
std::string_view FirstValueOf(const std::string_view (&labels)[Count], std::string_view text) {
    for (const std::string_view label : labels)
        if (const auto value = ValueOf(label, text); !value.empty() && IsPlainText(value))
            return value;
    return std::string_view();
}

/// The first line; a device tree's text ends with a NUL.
std::string_view FirstLine(std::string_view text) {
    return text.substr(0, text.find_first_of(std::string_view("\0\n", 2)));
}

/// The whole number that the text begins with; 0 where it begins with none, or too large a one.
int LeadingNumber(std::string_view text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return std::max(number, 0);
}

} // namespace

ProcessorDescription DescribeProcessor(const std::string& root) {
    const std::string text = ReadStart(root + kProcessors);
    ProcessorDescription processor;
    processor.isKnown = !text.empty();
    processor.name = FirstValueOf(kNameLabels, text);
    processor.megahertz = LeadingNumber(ReadStart(root + kHighestKilohertz)) / 1000;
    if (processor.megahertz == 0)
        processor.megahertz = LeadingNumber(FirstValueOf(kClockLabels, text));
    return processor;
}

std::string DescribeModel(const std::string& root) {
    for (const char* file : kModelFiles) {
        const std::string text = ReadStart(root + file);
        const std::string_view model = Trimmed(FirstLine(text));
        if (!model.empty() && IsPlainText(model))
            return std::string(model);
    }
    return std::string();
}

SystemVersion ParseRelease(std::string_view release) {
    SystemVersion version;
    for (int* number : {&version.major, &version.minor, &version.fix}) {
        const std::string_view digits = release.substr(0, release.find_first_not_of("0123456789"));
        std::from_chars(digits.data(), digits.data() + digits.size(), *number);
        release.remove_prefix(digits.size());
        if (!release.starts_with('.'))
            break;
        release.remove_prefix(1);
    }
    return version;
}

} // namespace Platform
