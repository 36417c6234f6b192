#pragma once

#include "NECKern/Modell.hpp"

#include <optional>
#include <string>

// Feldstärke auf einer waagrechten Ebene um die Antenne, verglichen mit den
// Referenzwerten der ICNIRP (1998) für die Bevölkerung.
namespace NECKern::Feldstaerke {

inline constexpr const char* erklaerung =
    "Effektivwerte, aus NECs Spitzenwerten auf die eingegebene Leistung umgerechnet (E_eff = E/√2 · "
    "√(P/P_NEC)). Vergleich mit den Referenzwerten der ICNIRP (1998) für die Bevölkerung, in der Schweiz "
    "die Immissionsgrenzwerte der NISV. Keine Zeitmittelung (6 min), kein Betriebsartfaktor (SSB, CW, "
    "Pausen) – eine Abschätzung, kein amtlicher Nachweis.";

// Rechendeck für das Nahfeld (E und H) auf n × n Punkten der Ebene in Höhe z,
// Mitte (mx, my), halbe Seitenlänge halb. Wirft die Fehler des Rechendecks und
// KernFehler bei einem Modell, das Modellpruefung::umfangPruefen ablehnt.
std::string deck(const Modell& modell, double mhz, double z, double mx, double my, double halb, int n);

// Effektivwert bei der Sendeleistung aus NECs Spitzenwert bei dessen
// Eingangsleistung; NaN, wenn pNEC nicht positiv ist. Für E wie für H.
double effektiv(double spitze, double pNEC, double pSende);

struct Referenz {
    double e; // V/m
    double h; // A/m
    bool operator==(const Referenz&) const = default;
};

// Referenzwerte für die Bevölkerung; kein Wert ausserhalb 0,15 MHz … 300 GHz.
std::optional<Referenz> icnirp(double mhz);

// Einstufung nach dem Verhältnis Feld / Referenz.
enum class Klasse { gruen, gelb, orange, rot };

// Kein Wert für ein Verhältnis, das keine Zahl ist.
std::optional<Klasse> klasse(double verhaeltnis);
std::string name(Klasse k); // „grün“, „gelb“, „orange“, „rot“

// Legende der Karte mit Sendeleistung, Höhe der Ebene und Frequenz.
std::string legende(double leistung, double hoehe, double mhz);

} // namespace NECKern::Feldstaerke
