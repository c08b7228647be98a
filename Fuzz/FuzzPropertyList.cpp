#include "Fuzz/FuzzInput.h"
#include "Platform/Linux/PropertyListFile.h"
#include "Utility/src/Mac/PropertyListTreeOpt.h"

using namespace Platform;

namespace {

std::optional<std::string> Rewritten(const std::string& text) {
    const auto list = ParsePropertyList(text);
    return list ? SerializePropertyList(*list) : std::nullopt;
}

/// What is written of a property list reads and writes the same from then on. Only a date beyond
/// the four-digit years changes once more.
void CheckRewrite(const PropertyList& list) {
    const auto written = SerializePropertyList(list);
    const auto again = written ? Rewritten(*written) : std::nullopt;
    Require(again == written || (again && written->find("<date") != std::string::npos &&
                                 Rewritten(*again) == again),
            "reads another");
}

} // namespace

/// A file of preferences, or of a bundle, in which a value is set, looked up and removed.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const auto list = ParsePropertyList(std::string(reinterpret_cast<const char*>(bytes), size));
    if (!list)
        return 0;
    CheckRewrite(*list);
    static const auto& kKeys =
        *new PropertyListTreeOpt::Keys{CreateString("key"), CreateString("OptIn")};
    PropertyListTreeOpt::Keys keys = kKeys;
    CFPropertyListRef root = std::make_shared<const PropertyList>(*list);
    const PropertyList value(1);
    if (PropertyListTreeOpt::SetNode(root, keys, &value)) {
        const PropertyList* found = PropertyListTreeOpt::GetNode(root.get(), keys);
        Require(found && *found == value, "a value that was set is not there");
        CheckRewrite(*root);
        PropertyListTreeOpt::RemoveNode(root, keys);
        Require(!PropertyListTreeOpt::GetNode(root.get(), kKeys), "a removed value is there");
    }
    return 0;
}
