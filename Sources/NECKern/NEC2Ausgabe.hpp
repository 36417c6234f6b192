#pragma once

#include "NECKern/Ergebnis.hpp"

#include <string_view>
#include <vector>

// Liest den Textbericht eines NEC-2-Lösers (nec2c oder ein externer Kern im
// NEC-2-Format). Zeilenweise und nachsichtig: gesucht werden die Abschnittstitel,
// gelesen wird die Zahlentabelle danach, alles andere bleibt liegen. Scheitert nie.
namespace NECKern::NEC2Ausgabe {

// Ergebnis mit kern = "" und dauer = 0; beides setzt der rufende Kern.
NECErgebnis lesen(std::string_view text);

// Die Zahlen einer Zeile: Stücke zwischen Leerzeichen, die sich ganz als Zahl lesen lassen.
std::vector<double> zahlen(std::string_view zeile);

// Ob eine Zeile eine Tabellenzeile ist (beginnt nach Leerraum mit einer Zahl).
bool beginntMitZahl(std::string_view zeile);

} // namespace NECKern::NEC2Ausgabe
