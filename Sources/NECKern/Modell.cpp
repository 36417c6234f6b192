#include "NECKern/Modell.hpp"

#include "NECKern/Json.hpp"

namespace NECKern {

void to_json(nlohmann::ordered_json& j, const Modell& m) {
    j = nlohmann::ordered_json::object();
    j["name"] = m.name;
    j["kommentar"] = m.kommentar;
    j["variablen"] = m.variablen;
    j["karten"] = m.karten;
    j["z0"] = m.z0;
}

void from_json(const nlohmann::ordered_json& j, Modell& m) {
    constexpr const char* typ = "Modell";
    m.name = Json::pflicht<std::string>(j, "name", typ);
    m.kommentar = Json::pflicht<std::vector<std::string>>(j, "kommentar", typ);
    m.variablen = Json::pflicht<std::vector<Variable>>(j, "variablen", typ);
    m.karten = Json::pflicht<std::vector<Karte>>(j, "karten", typ);
    m.z0 = Json::pflicht<double>(j, "z0", typ);
}

} // namespace NECKern
