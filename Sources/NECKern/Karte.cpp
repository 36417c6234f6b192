#include "NECKern/Karte.hpp"

#include "NECKern/Json.hpp"
#include "NECKern/Unicode.hpp"

#include <array>
#include <utility>

namespace NECKern {

Karte::Karte(std::string typ_, std::vector<std::string> ganz_, std::vector<std::string> reell_,
             std::string text_)
    : typ(Unicode::gross(typ_)), ganz(std::move(ganz_)), reell(std::move(reell_)), text(std::move(text_)) {}

Karte::Felder Karte::felder(std::string_view typ) {
    struct Eintrag {
        std::string_view typ;
        Felder felder;
    };
    // Die Lagen der NEC-2-Eingabe: Geometriekarten mit zwei Ganzzahlen vor den Zahlen,
    // Steuerkarten mit vier. Wer hier fehlt, bekommt 4 und 6, und bei einer Fläche
    // rutschte dann eine Koordinate in ein Ganzzahlfeld.
    static constexpr std::array<Eintrag, 33> tabelle{{
        {"GW", {2, 7}}, {"GA", {2, 4}}, {"GH", {2, 8}}, {"GS", {2, 1}}, {"GM", {2, 7}}, {"GR", {2, 0}},
        {"GX", {2, 0}}, {"GE", {1, 0}}, {"GN", {4, 6}}, {"EX", {4, 6}}, {"LD", {4, 3}}, {"TL", {4, 6}},
        {"NT", {4, 6}}, {"FR", {4, 2}}, {"RP", {4, 6}}, {"EK", {1, 0}}, {"KH", {0, 1}}, {"XQ", {1, 0}},
        {"NE", {4, 6}}, {"NH", {4, 6}}, {"PT", {4, 0}}, {"PQ", {4, 0}}, {"EN", {0, 0}}, {"GF", {1, 0}},
        {"GC", {2, 3}}, {"SP", {2, 6}}, {"SM", {2, 6}}, {"SC", {2, 6}}, {"GD", {4, 4}}, {"CP", {4, 0}},
        {"PL", {4, 0}}, {"NX", {0, 0}}, {"WG", {0, 0}},
    }};
    for (const auto& e : tabelle)
        if (e.typ == typ) return e.felder;
    return {4, 6};
}

const std::map<std::string, std::string>& Karte::beschreibung() {
    static const std::map<std::string, std::string> tabelle{
        {"GW", "Draht"},
        {"GA", "Drahtbogen"},
        {"GH", "Wendel (Helix)"},
        {"GS", "Skalieren"},
        {"GM", "Verschieben/Drehen/Kopieren"},
        {"GR", "Rotationssymmetrie"},
        {"GX", "Spiegeln"},
        {"GE", "Geometrie-Ende"},
        {"GN", "Boden"},
        {"EX", "Speisung"},
        {"LD", "Last"},
        {"TL", "Leitung"},
        {"NT", "Netzwerk"},
        {"FR", "Frequenz"},
        {"RP", "Strahlungsdiagramm"},
        {"EK", "Erweiterter Kern"},
        {"KH", "Interaktionsabstand"},
        {"XQ", "Rechnen"},
        {"NE", "Nahfeld E"},
        {"NH", "Nahfeld H"},
        {"PT", "Stromausgabe"},
        {"PQ", "Ladungsausgabe"},
        {"EN", "Ende"},
        {"CM", "Kommentar"},
        {"GF", "Green-Funktion lesen (NGF)"},
        {"GC", "Drahtverjüngung"},
        {"SP", "Fläche (Patch)"},
        {"SM", "Fläche aus mehreren Patches"},
        {"SC", "Fläche, Fortsetzung"},
        {"GD", "Zweiter Boden (Klippe)"},
        {"CP", "Kopplung"},
        {"PL", "Plotdaten"},
        {"NX", "Nächste Struktur"},
        {"WG", "Green-Funktion schreiben (NGF)"},
    };
    return tabelle;
}

void to_json(nlohmann::ordered_json& j, const Karte& k) {
    j = nlohmann::ordered_json::object();
    j["id"] = k.id;
    j["typ"] = k.typ;
    j["ganz"] = k.ganz;
    j["reell"] = k.reell;
    j["text"] = k.text;
}

void from_json(const nlohmann::ordered_json& j, Karte& k) {
    constexpr const char* typ = "Karte";
    k.id = Json::pflicht<Uuid>(j, "id", typ);
    k.typ = Json::pflicht<std::string>(j, "typ", typ);
    k.ganz = Json::pflicht<std::vector<std::string>>(j, "ganz", typ);
    k.reell = Json::pflicht<std::vector<std::string>>(j, "reell", typ);
    k.text = Json::pflicht<std::string>(j, "text", typ);
}

} // namespace NECKern
