#pragma once

#include "NECKern/Uuid.hpp"

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace NECKern {

// Eine Karte des Decks. Die Felder bleiben Text (Zahl, Variable oder Formel);
// erst das Rechendeck wertet sie aus.
struct Karte {
    Uuid id;
    std::string typ;
    std::vector<std::string> ganz;
    std::vector<std::string> reell;
    std::string text;

    Karte() = default;
    Karte(std::string typ, std::vector<std::string> ganz, std::vector<std::string> reell,
          std::string text = {});

    struct Felder {
        int ganz;
        int reell;
        bool operator==(const Felder&) const = default;
    };

    // Anzahl der Ganzzahl- und Reellfelder eines Kartentyps; unbekannt: 4 und 6.
    static Felder felder(std::string_view typ);
    // Kurze deutsche Beschreibung je Kartentyp für den Editor.
    static const std::map<std::string, std::string>& beschreibung();

    bool operator==(const Karte&) const = default;
};

void to_json(nlohmann::ordered_json& j, const Karte& k);
void from_json(const nlohmann::ordered_json& j, Karte& k);

} // namespace NECKern
