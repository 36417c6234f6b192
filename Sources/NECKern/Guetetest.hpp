#pragma once

#include "NECKern/Ergebnis.hpp"
#include "NECKern/Modell.hpp"

#include <optional>
#include <string>
#include <vector>

// Gütetest nach der Energieerhaltung: verlustlos gerechnet, im freien Raum
// oder über idealem Boden, muss der über alle Richtungen gemittelte Gewinn 1
// sein (0 dB).
namespace NECKern::Guetetest {

inline constexpr const char* erklaerung =
    "Verlustlos gerechnet (freier Raum oder idealer Boden) muss 1 herauskommen (0 dB). Abweichungen über "
    "±0,5 dB deuten auf Modellfehler (Segmente, Verbindungen) – dann auch Impedanz und Gewinn misstrauen.";

// Das verlustlose Rechendeck mit einem Diagramm über die ganze Kugel, über
// Boden über den oberen Halbraum. Mit den Segmenten eines früheren Ergebnisses
// gibt es kein Deck, wenn über Boden gerechnet würde und die Struktur unter
// die Bodenebene reicht: dann taugt das Modell nicht für den Test. Wirft die
// Fehler des Rechendecks.
std::optional<std::string> deck(const Modell& modell, double mhz, const std::vector<Segment>& segmente = {});

// Mittlerer linearer Leistungsgewinn eines Diagramms (Trapezregel in θ, φ
// über den vollen Kreis). Kein Wert, wenn das Diagramm kein geschlossenes
// Gitter mit mindestens drei θ- und drei φ-Werten ist.
std::optional<double> mittlererGewinn(const std::vector<Richtung>& richtungen);

} // namespace NECKern::Guetetest
