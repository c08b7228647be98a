#include "Tools/vistra/JsonOutput.h"

#include <iostream>
#include <nlohmann/json.hpp>

void PrintJson(const nlohmann::ordered_json& value) {
    constexpr int kIndent = 2;
    std::cout << value.dump(kIndent, ' ', true, nlohmann::ordered_json::error_handler_t::replace)
              << "\n";
}
