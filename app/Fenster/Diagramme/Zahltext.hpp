#pragma once

#include "NECKern/Ergebnis.hpp"

#include <optional>
#include <string>

// Zahlen für Beschriftungen: C-Format mit Dezimalpunkt, gleich welche Locale, und
// ein echtes Minuszeichen statt des Bindestrichs; „–“ für NaN.
namespace Zahltext {

std::string text(const char* format, double wert);

// Drei geltende Ziffern ohne Exponent für Feldstärken: 6300, 14.9, 0.0331.
std::string kurz(double wert);

// „R + jX Ω“ bzw. „R − jX Ω“ mit zwei Nachkommastellen.
std::string impedanz(NECKern::Komplex z);

// „%.2f“, „∞“ bei vollständiger Reflexion, „–“ ohne Wert.
std::string swr(std::optional<double> swr);

} // namespace Zahltext
