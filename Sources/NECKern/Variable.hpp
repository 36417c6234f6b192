#pragma once

#include "NECKern/Uuid.hpp"

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace NECKern {

// Ein Symbol aus einer SY-Zeile: Name, Formel und Grenzen für den Optimierer.
struct Variable {
    Uuid id;
    std::string name;
    std::string ausdruck;
    bool optimieren = false;
    std::optional<double> minimum;
    std::optional<double> maximum;

    Variable() = default;
    Variable(std::string name, std::string ausdruck);

    bool operator==(const Variable&) const = default;
};

void to_json(nlohmann::ordered_json& j, const Variable& v);
void from_json(const nlohmann::ordered_json& j, Variable& v);

} // namespace NECKern
