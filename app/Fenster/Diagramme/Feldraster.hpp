#pragma once

#include "Modell/FeldErgebnis.hpp"

#include "NECKern/Feldstaerke.hpp"

#include <optional>
#include <vector>

// Die Zellen der Feldstärkekarte: Effektivwerte bei der Sendeleistung und ihre
// Einstufung gegen die Referenz der Frequenz, ohne Fenster.
namespace Feldraster {

struct Zelle {
    int spalte = 0, zeile = 0; // 0 … n−1, Zeile 0 bei kleinstem y
    double x = 0, y = 0;       // m
    double eEff = 0;           // V/m, NaN ohne Wert
    double hEff = 0;           // A/m, NaN ohne Wert
    double verhaeltnis = 0;    // E_eff / Referenz, NaN ohne Referenz
    std::optional<NECKern::Feldstaerke::Klasse> klasse;
};

struct Raster {
    int n = 0;
    double xMin = 0, xMax = 0, yMin = 0, yMax = 0; // Mitten der Randzellen, m
    std::optional<NECKern::Feldstaerke::Referenz> referenz;
    std::vector<Zelle> zellen; // in der Reihenfolge der Punkte von `e`
    double eMin = 0, eMax = 0; // über alle Zellen mit Wert
};

// Spalte und Zeile ergeben sich aus den Koordinaten, nicht aus der Reihenfolge,
// in der der Kern die Punkte schreibt. H gehört zum E-Punkt gleichen Index.
Raster rechnen(const FeldErgebnis& feld);

} // namespace Feldraster
