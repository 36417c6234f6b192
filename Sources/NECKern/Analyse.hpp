#pragma once

#include "NECKern/Ergebnis.hpp"
#include "NECKern/Modell.hpp"
#include "NECKern/Rechenkerne/Rechenkern.hpp"

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <stop_token>
#include <vector>

namespace NECKern {

// Ein Punkt des Frequenzgangs; gekennzeichnet durch seine Frequenz.
struct Frequenzpunkt {
    double mhz = 0;
    std::optional<Komplex> impedanz;
    std::optional<double> swr;      // gegen z0 des Modells
    std::optional<double> gewinn;   // grösster Gesamtgewinn, dBi
    std::optional<double> vorRueck; // dB

    bool operator==(const Frequenzpunkt&) const = default;
};

void to_json(nlohmann::ordered_json& j, const Frequenzpunkt& p);
void from_json(const nlohmann::ordered_json& j, Frequenzpunkt& p);

namespace Analyse {

// Impedanz, SWR, Gewinn und Vor-Rück-Verhältnis über das Band von…bis (MHz,
// beide Grenzen eingeschlossen). Das Band wird in `parallel` Stücke geteilt,
// jedes ein eigener Kernlauf auf eigenem Thread; ohne Diagramm entfallen die
// RP-Karten (und damit Gewinn und Vor-Rück). Ergebnis nach Frequenz sortiert.
// Der erste Fehler eines Laufs wird geworfen, sobald alle Läufe zu Ende sind;
// danach beginnt kein weiterer Lauf, und es gibt keine Teilliste.
// Wirft KernFehler, bevor ein Lauf beginnt: bei punkte < 2, parallel < 1, nicht
// endlichen Grenzen, einer Grenze bei 0 MHz oder darunter und bei einem Modell, das
// Modellpruefung::umfangPruefen ablehnt.
// `stopp` hält alle laufenden Kernläufe an; `fertig` meldet nach jedem Lauf die
// Zahl der bisher gerechneten Punkte (aus dem Thread dieses Laufs).
std::vector<Frequenzpunkt> frequenzgang(const Modell& modell, const Rechenkern& kern, double von, double bis,
                                        int punkte, bool mitDiagramm, int parallel,
                                        std::stop_token stopp = {},
                                        const std::function<void(int fertig)>& fertig = {});

} // namespace Analyse
} // namespace NECKern
