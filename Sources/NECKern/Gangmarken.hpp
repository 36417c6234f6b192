#pragma once

#include "NECKern/Analyse.hpp"

#include <string>
#include <vector>

// Was der Frequenzgang auf einen Blick zeigen soll: die Bereiche mit SWR < 2 und
// die Resonanzen (X = 0), zwischen Nachbarpunkten linear eingepasst. Fenster und
// Befehlszeile nennen dieselben Marken.
namespace NECKern::Gangmarken {

struct Band {
    double von = 0, bis = 0; // MHz
    bool offenUnten = false; // reicht bis an den Anfang des Frequenzgangs
    bool offenOben = false;  // reicht bis an sein Ende
    double breiteKhz() const { return (bis - von) * 1000.0; }
    bool operator==(const Band&) const = default;
};

// Bereiche, in denen das SWR unter `grenze` liegt. Ein Punkt ohne SWR trennt.
std::vector<Band> swrBaender(const std::vector<Frequenzpunkt>& gang, double grenze = 2.0);

// Frequenzen, bei denen der Blindwiderstand das Vorzeichen wechselt oder null ist.
std::vector<double> resonanzen(const std::vector<Frequenzpunkt>& gang);

// Eine Zeile: „SWR < 2: 13.806–14.273 MHz (466 kHz) · Resonanz 14.254 MHz“; ein Band
// am Rand des Frequenzgangs ist breiter als gezeigt („≥ … kHz“).
std::string zusammenfassung(const std::vector<Frequenzpunkt>& gang);

} // namespace NECKern::Gangmarken
