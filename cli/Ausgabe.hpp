#pragma once

#include "NECKern/Ergebnis.hpp"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

// Zahlen und Ergebnisse für die Ausgabe der Befehle: deutsch beschriftet,
// mit Dezimalpunkt; fehlende Werte als „–“ (Text) bzw. null (JSON).
namespace Befehle::Ausgabe {

// „25.31 + j3.12 Ω“ bzw. „25.31 - j3.12 Ω“; ohne Impedanz „–“.
std::string impedanz(const std::optional<NECKern::Komplex>& z);
// „%.2f“; „∞“ bei vollständiger Reflexion; „–“ ohne Wert.
std::string swr(std::optional<double> wert);
// Wert mit printf-Format und Einheit, „–“ wenn er fehlt oder nicht endlich ist.
std::string wert(std::optional<double> x, const char* format, const char* einheit);

nlohmann::ordered_json jsonZahl(std::optional<double> x);

// Die Kennzahlen einer Frequenz für --json.
nlohmann::ordered_json frequenzJson(const NECKern::FrequenzErgebnis& f, double z0);

// Die Kennzahlen einer Frequenz als eingerückte deutsche Zeilen.
std::string frequenzText(const NECKern::FrequenzErgebnis& f, double z0);

// Schreibt eine Ausgabedatei; scheitert mit einem deutschen Satz und dem Grund des Systems.
void dateiSchreiben(const std::string& pfad, const std::string& inhalt);

} // namespace Befehle::Ausgabe
