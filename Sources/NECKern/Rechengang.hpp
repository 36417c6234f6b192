#pragma once

#include "NECKern/Ergebnis.hpp"
#include "NECKern/Modell.hpp"
#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Rechenkerne/Rechenkern.hpp"
#include "NECKern/Urteile.hpp"

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

// Ein ganzer Rechengang ohne Fenster: Vorprüfung, Rechendeck, Kernlauf, Befunde,
// Gütetest und – bei anderen Kernen als nec2c – die Gegenprobe mit nec2c.
namespace NECKern::Rechengang {

struct Durchlauf {
    // Der Satz für den Benutzer: Vorprüfung, Formel- oder Kernfehler, oder die
    // NEC-Meldung, wenn der Kern das Modell abgelehnt hat (Modellpruefung::laufAbgelehnt).
    std::optional<std::string> fehler;
    bool vorpruefungGescheitert = false;
    std::optional<NECErgebnis> ergebnis;
    // Der Befund zur langen Rechenzeit steht schon vor dem Lauf hier, auch wenn er scheitert.
    std::vector<Befund> befunde;
    std::optional<double> guete;
    std::optional<Urteile::Gegenprobe> gegenprobe;
};

// Blockiert, bis alles gerechnet ist. Gütetest und Gegenprobe laufen neben dem Hauptlauf.
// Die Gegenprobe rechnet mit `nec2c`; ohne Angabe wird nec2c gesucht.
// `stopp` hält alle Läufe an; der Durchlauf trägt dann den Satz Prozess::abgebrochen.
Durchlauf rechnen(const Modell& modell, const KernZeiger& kern, std::size_t frequenzIndex = 0,
                  KernZeiger nec2c = nullptr, std::stop_token stopp = {});

// Der Gütetest allein: nichts, wenn das Modell nicht taugt oder der Kern scheitert.
std::optional<double> gueteRechnen(const Modell& modell, const Rechenkern& kern, double mhz,
                                   const std::vector<Segment>& segmente, std::stop_token stopp = {});

} // namespace NECKern::Rechengang
