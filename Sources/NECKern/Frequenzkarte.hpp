#pragma once

#include "NECKern/Karte.hpp"
#include "NECKern/Modell.hpp"

#include <cstdint>
#include <string>
#include <vector>

// Die FR-Karte, mit der Frequenzgang und Optimierer ihre Frequenzen verlangen.
namespace NECKern::Frequenzkarte {

// FR-Karte mit linearer Schrittweite. Die Zahlen stehen in kürzester Schreibweise,
// die beim Auswerten genau denselben Wert ergibt; erst das Rechendeck rundet.
Karte linear(double start, std::int64_t anzahl, double schritt);

// Kopie des Modells mit `fr` an Stelle der ersten FR-Karte (spätere FR-Karten
// fallen weg; ohne FR-Karte kommt `fr` an den Anfang der Kartenliste) und ohne
// die Karten der Typen in `ohne` (Grossbuchstaben).
Modell einsetzen(const Modell& modell, Karte fr, const std::vector<std::string>& ohne = {});

} // namespace NECKern::Frequenzkarte
