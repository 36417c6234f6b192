#pragma once

// Lesen der Deckzeilen für Abflachen und Umnummerieren; nur für Geometrie*.cpp.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace NECKern::Geometrie::intern {

using Ganz = std::int64_t;

// Feindliche Ganzzahlen dürfen nicht überlaufen: sättigend rechnen.
Ganz plus(Ganz a, Ganz b);
Ganz mal(Ganz a, Ganz b);

// Vollständig gelesen oder nichts; ein führendes '+' gilt wie bei der C-Umwandlung.
std::optional<double> alsZahl(std::string_view teil);
std::optional<Ganz> alsGanz(std::string_view teil);

// Die Zeilen ohne die leeren.
std::vector<std::string_view> zeilen(std::string_view text);
// Die Teile zwischen Leerzeichen, Tabulatoren und Wagenrückläufen.
std::vector<std::string_view> teile(std::string_view zeile);

// Eine Deckzeile: Kartentyp, die Ganzzahlfelder I1 und I2 (soweit lesbar) und
// die Zahlen ab dem vierten Teil.
struct Zeile {
    std::string_view text;
    std::vector<std::string_view> teile;

    std::string_view typ() const { return teile.empty() ? std::string_view{} : teile[0]; }
    std::vector<Ganz> ganz() const;
    std::vector<double> reell() const;
};

// Hängt eine Zeile an; Zeilen werden mit LF getrennt, ohne LF am Schluss.
void anfuegen(std::string& aus, std::string_view zeile);

} // namespace NECKern::Geometrie::intern
