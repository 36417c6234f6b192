#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Geometrie-Umformungen am Rechendeck für Kerne, die nur gerade Drähte lesen
// oder jedem Draht eine eigene Tag-Nummer abverlangen. Reiner Text zu Text,
// nichts wirft; unvollständige Geometriekarten fallen weg.
namespace NECKern::Geometrie {

// Schutz gegen feindliche Decks (etwa GM mit 10^9 Kopien): Wer mehr Drähte
// erzeugen oder mehr Drahtbearbeitungen verlangen würde, bekommt sein Deck
// unverändert zurück. Kein Kern rechnet solche Grössen, und ein abgeschnittenes
// Deck wäre ein stilles falsches Ergebnis.
inline constexpr std::size_t maxDraehte = 200'000;
inline constexpr std::size_t maxArbeit = 10'000'000;

// Ein gerader Draht; Tag 0 heisst: ohne Tag, wird nie umnummeriert oder erhöht.
struct Draht {
    std::int64_t tag = 0;
    std::int64_t segmente = 0;
    std::array<double, 3> a{};
    std::array<double, 3> b{};
    double radius = 0;
};

// Die Geometrie bis GE, mit allen Kopien, Drehungen und Spiegelungen ausgeführt.
struct Struktur {
    std::vector<Draht> draehte;
    std::int64_t flaechen = 0; // Flächenstücke aus SP und SM samt Kopien (gezählt, nicht gebaut)
    // Ordnung der Symmetrie, die NEC nutzt: GR n gibt n, GX mit k Ebenen 2^k. Neue Teile
    // (GW, GA, GH, SP, SM) oder Kopien mit GM danach heben sie auf; GS lässt sie stehen.
    std::int64_t symmetrie = 1;
    std::string zuGrossBei; // Karte, an der die Grenzen oben griffen; leer: vollständig gelesen

    // Segmente aller Drähte; eine Summe jenseits von 64 Bit bleibt beim Grösstwert stehen.
    std::int64_t segmente() const;
};

Struktur struktur(std::string_view deck);

// Ersetzt den Geometrieteil durch GW-Zeilen: Bögen und Wendeln in gerade
// Ein-Segment-Drähte zerlegt, GS, GM, GR und GX ausgeführt. Ohne Zeilenende am Schluss.
std::string abflachen(std::string_view deck);

// Gibt jeder GW-Zeile ihr eigenes Tag (1, 2, 3 … in Zeilenfolge) und führt die
// Verweise von EX, LD, TL und NT auf dieselbe Stelle der neuen Drähte nach.
std::string eindeutigeTags(std::string_view deck);

// Die Teile, die vollständig als Zahl lesbar sind; die anderen fallen weg.
std::vector<double> zahlen(const std::vector<std::string_view>& teile);

} // namespace NECKern::Geometrie
