#pragma once

#include "NECKern/Karte.hpp"
#include "NECKern/Modell.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>

// Kartenfelder für Prüfungen auswerten: ein Fehler wird zu „kein Wert“, nie zu
// einer Ausnahme. Leere und fehlende Felder zählen wie im Rechendeck als "0".
namespace NECKern::Feldwerte {

// Variablenwerte, soweit sie sich berechnen lassen: bei einer kaputten Formel
// die Werte aller Variablen davor.
Werte lesbareWerte(const Modell& modell);

std::optional<double> reell(const Karte& karte, std::size_t index, const Werte& werte);

// Gerundet wie im Rechendeck (halbe weg von null); nicht endlich oder ausserhalb
// von 64 Bit: kein Wert.
std::optional<std::int64_t> ganz(const Karte& karte, std::size_t index, const Werte& werte);

} // namespace NECKern::Feldwerte
