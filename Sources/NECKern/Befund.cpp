#include "NECKern/Json.hpp"
#include "NECKern/Modellpruefung.hpp"

namespace NECKern {

std::optional<Stufe> stufeAus(int roh) {
    if (roh < 0 || roh > 2) return std::nullopt;
    return static_cast<Stufe>(roh);
}

void to_json(nlohmann::ordered_json& j, const Befund& b) {
    j = nlohmann::ordered_json::object();
    j["stufe"] = static_cast<int>(b.stufe);
    j["text"] = b.text;
}

void from_json(const nlohmann::ordered_json& j, Befund& b) {
    constexpr const char* typ = "Befund";
    const int roh = Json::pflicht<int>(j, "stufe", typ);
    const auto stufe = stufeAus(roh);
    if (!stufe) throw DatenFehler("Befund: eine Stufe " + std::to_string(roh) + " gibt es nicht.");
    b.stufe = *stufe;
    b.text = Json::pflicht<std::string>(j, "text", typ);
}

} // namespace NECKern
