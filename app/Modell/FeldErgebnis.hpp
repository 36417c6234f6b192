#pragma once

#include "NECKern/Ergebnis.hpp"

#include <vector>

// Ergebnis der Feldstärkekarte: NECs Spitzenwerte auf der Ebene und was nötig
// ist, um sie auf die Sendeleistung umzurechnen.
struct FeldErgebnis {
    double mhz = 0;
    double pNEC = 0;     // Eingangsleistung des Kernlaufs (W, bei der 1-V-Quelle des Kerns)
    double leistung = 0; // Sendeleistung (W)
    double hoehe = 0;    // Höhe der Ebene (m)
    std::vector<NECKern::Nahfeldpunkt> e;
    std::vector<NECKern::Nahfeldpunkt> h;
    int n = 0; // Punkte je Seite

    bool operator==(const FeldErgebnis&) const = default;
};
