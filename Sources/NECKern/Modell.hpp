#pragma once

#include "NECKern/Karte.hpp"
#include "NECKern/Variable.hpp"
#include "NECKern/Werte.hpp"

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace NECKern {

// Die Antenne: Name, Kommentar, Variablen, Karten und Bezugsimpedanz.
struct Modell {
    std::string name = "Neue Antenne";
    std::vector<std::string> kommentar;
    std::vector<Variable> variablen;
    std::vector<Karte> karten;
    double z0 = 50.0;

    bool operator==(const Modell&) const = default;

    // Deckdatei: Lesen nimmt jeden Text an, Schreiben ist kanonisch.
    static Modell lesen(std::string_view text, std::string_view name);
    std::string schreiben() const;
    static std::vector<std::string> kommentarZeilen(std::string_view text, int breite);

    // Rechendeck: nur Zahlen, vollständige Karten, mit XQ und EN.
    Werte variablenWerte(const Werte& ueberschreiben = {}) const;
    std::string deck(const Werte& ueberschreiben = {}, const std::optional<Karte>& ersetzeFR = std::nullopt,
                     bool ohneRP = false) const;

    struct Frequenzplan {
        double start;
        double schritt;
        int anzahl;
        bool operator==(const Frequenzplan&) const = default;
    };
    Frequenzplan frequenzen() const;

    // Zahlenformat der Reellfelder im Rechendeck.
    static std::string zahl(double x);
};

void to_json(nlohmann::ordered_json& j, const Modell& m);
void from_json(const nlohmann::ordered_json& j, Modell& m);

} // namespace NECKern
