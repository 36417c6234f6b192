#include "NECKern/Variable.hpp"

#include "NECKern/Json.hpp"

#include <utility>

namespace NECKern {

Variable::Variable(std::string name_, std::string ausdruck_)
    : name(std::move(name_)), ausdruck(std::move(ausdruck_)) {}

void to_json(nlohmann::ordered_json& j, const Variable& v) {
    j = nlohmann::ordered_json::object();
    j["id"] = v.id;
    j["name"] = v.name;
    j["ausdruck"] = v.ausdruck;
    j["optimieren"] = v.optimieren;
    Json::optionalSetzen(j, "minimum", v.minimum);
    Json::optionalSetzen(j, "maximum", v.maximum);
}

void from_json(const nlohmann::ordered_json& j, Variable& v) {
    constexpr const char* typ = "Variable";
    v.id = Json::pflicht<Uuid>(j, "id", typ);
    v.name = Json::pflicht<std::string>(j, "name", typ);
    v.ausdruck = Json::pflicht<std::string>(j, "ausdruck", typ);
    v.optimieren = Json::pflicht<bool>(j, "optimieren", typ);
    v.minimum = Json::freiwillig<double>(j, "minimum", typ);
    v.maximum = Json::freiwillig<double>(j, "maximum", typ);
}

} // namespace NECKern
