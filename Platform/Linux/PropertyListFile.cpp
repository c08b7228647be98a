#include "Platform/Linux/PropertyListFile.h"

#include "Platform/Linux/ClassicLocale.h"
#include "Platform/Linux/PropertyListNodes.h"

#include <algorithm>
#include <cstdlib>

namespace Platform {

namespace {

constexpr std::string_view kBinaryHead = "bplist00";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// libplist ends the program when it runs out of memory. So what it may need for so many bytes of a
/// file is asked for first, and given back at once: what runs out, runs out here.
void RequireMemoryFor(std::size_t bytes) {
    constexpr std::size_t kNeedOfAByte = 40, kNeedOfAFile = 16'384;
    const auto memory =
        std::make_unique_for_overwrite<volatile char[]>(kNeedOfAFile + bytes * kNeedOfAByte);
    memory[0] = 0;
}

NodePointer ParseBytes(std::string_view bytes) {
    RequireMemoryFor(bytes.size());
    const ClassicLocale classic;
    plist_t node = nullptr;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (bytes.starts_with(kBinaryHead)) {
        if (IsHarmlessBinary(bytes))
            plist_from_bin(bytes.data(), length, &node);
    } else if (IsHarmlessXml(bytes)) {
        plist_from_xml(bytes.data(), length, &node);
    }
    return NodePointer(node);
}

/// Years before 1000 lose their leading zeros in libplist, and other readers their date by that.
void PadYears(std::string& xml) {
    constexpr std::string_view kTag = "<date>";
    for (std::size_t at = xml.find(kTag); at != std::string::npos; at = xml.find(kTag, at + 1)) {
        const std::size_t digits = xml.find('-', at) - at - kTag.size();
        if (digits < 4)
            xml.insert(at + kTag.size(), 4 - digits, '0');
    }
}

/// A carriage return as such reads as a line feed in XML.
void EscapeCarriageReturns(std::string& xml) {
    for (std::size_t at = xml.find('\r'); at != std::string::npos; at = xml.find('\r', at))
        xml.replace(at, 1, "&#13;");
}

std::string XmlOf(const NodePointer& node) {
    char* text = nullptr;
    std::uint32_t length = 0;
    {
        const ClassicLocale classic;
        plist_to_xml(node.get(), &text, &length);
    }
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    std::string xml(text ? text : "", text ? length : 0);
    PadYears(xml);
    EscapeCarriageReturns(xml);
    return xml;
}

/// Whether a value reads as it was stored. What other programs stored is opaque here too.
bool ReadsAs(const PropertyList& stored, const PropertyList& read);

bool ItemReadsAs(const PropertyList::Dictionary::value_type& stored,
                 const PropertyList::Dictionary::value_type& read) {
    return stored.first == read.first && ReadsAs(stored.second, read.second);
}

bool ReadsAs(const PropertyList& stored, const PropertyList& read) {
    if (stored.GetKind() == PropertyList::Kind::Other)
        return true;
    if (stored.GetKind() != read.GetKind())
        return false;
    if (const auto* items = stored.AsDictionary())
        return std::equal(items->begin(), items->end(), read.AsDictionary()->begin(),
                          read.AsDictionary()->end(), ItemReadsAs);
    if (const auto* items = stored.AsArray())
        return std::equal(items->begin(), items->end(), read.AsArray()->begin(),
                          read.AsArray()->end(), ReadsAs);
    return stored.Original() ? stored.AsNumber() == read.AsNumber() : stored == read;
}

} // namespace

std::optional<PropertyList> ParsePropertyList(const std::string& bytes) {
    if (bytes.size() > kMaximumPropertyListBytes)
        return std::nullopt;
    std::string_view content = bytes;
    if (content.starts_with(kByteOrderMark))
        content.remove_prefix(kByteOrderMark.size());
    const NodePointer node = ParseBytes(content);
    return node ? FromNode(node.get()) : std::nullopt;
}

std::optional<std::string> SerializePropertyList(const PropertyList& value) {
    const NodePointer node = ToNode(value);
    if (!node)
        return std::nullopt;
    std::string xml = XmlOf(node);
    const std::optional<PropertyList> read = ParsePropertyList(xml);
    if (!read || !ReadsAs(value, *read))
        return std::nullopt;
    return xml;
}

} // namespace Platform
