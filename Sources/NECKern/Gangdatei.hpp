#pragma once

#include "NECKern/Analyse.hpp"
#include "NECKern/Modell.hpp"

#include <string>
#include <vector>

// Der Frequenzgang als Datei für andere Programme; Fenster und Befehlszeile
// schreiben dieselben Bytes.
namespace NECKern::Gangdatei {

// Kopfzeile „mhz,re,im,swr,gewinn,vorRueck“, Zahlen "%.9g" mit Dezimalpunkt,
// leeres Feld für fehlende Werte.
std::string csv(const std::vector<Frequenzpunkt>& punkte);

// S11 gegen z0 des Modells im Touchstone-Format 1.1 (.s1p); Punkte ohne Impedanz
// fehlen, eine Kommentarzeile sagt es.
std::string touchstone(const Modell& modell, const std::vector<Frequenzpunkt>& punkte);

} // namespace NECKern::Gangdatei
