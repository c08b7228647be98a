#include "Utility/src/Mac/CommonMacUtils.h"

CommonMacUtils::MACTYPE CommonMacUtils::GetType(const Platform::PropertyList* object) {
    using Kind = Platform::PropertyList::Kind;
    if (!object)
        return kOther;
    switch (object->GetKind()) {
    case Kind::Dictionary:
        return kDictionary;
    case Kind::String:
        return kString;
    case Kind::Number:
        return kNumber;
    case Kind::Array:
        return kArray;
    case Kind::Other:
        break;
    }
    return kOther;
}

bool CommonMacUtils::CheckTypeMatch(const Platform::PropertyList* object, int kind) {
    return object && kind < kOther && GetType(object) == kind;
}

bool CommonMacUtils::Convert(const Platform::PropertyList* object, std::string& out) {
    if (!object || !object->AsString())
        return false;
    out = *object->AsString();
    return true;
}

bool CommonMacUtils::Convert(const Platform::PropertyList* object, int& out) {
    const std::optional<int> number = object ? object->AsNumber() : std::nullopt;
    out = number.value_or(out);
    return number.has_value();
}

bool CommonMacUtils::AppendStringPairs(const Platform::PropertyList* object,
                                       std::vector<std::pair<std::string, std::string>>& out) {
    if (!object || !object->AsDictionary())
        return false;
    for (const auto& [key, value] : *object->AsDictionary())
        if (value.AsString())
            out.emplace_back(key, *value.AsString());
    return true;
}
