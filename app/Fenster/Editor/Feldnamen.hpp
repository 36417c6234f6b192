#pragma once

#include <string>
#include <string_view>

// Deutsche Namen der Kartenfelder nach dem NEC-2-Kartenaufbau, getrennt nach
// Ganzzahl- und Reellfeldern, damit eine abweichende Feldzahl nur das Ende trifft.
// Typen ohne Eintrag und Felder über die Liste hinaus heissen I1…, F1….
namespace Feldnamen {

struct Name {
    std::string kurz; // für den Spaltenkopf
    std::string lang; // für den Hinweis
};

Name ganz(std::string_view typ, int index);
Name reell(std::string_view typ, int index);

// Das Feld an einer Spalte der Kartentabelle (0 = erstes Feld), nach Karte::felder.
Name feld(std::string_view typ, int index);

} // namespace Feldnamen
