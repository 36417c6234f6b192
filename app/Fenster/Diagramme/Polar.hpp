#pragma once

#include "NECKern/Ergebnis.hpp"

#include <optional>
#include <string>
#include <vector>

// Schnitte durch das Richtdiagramm und die Masse des Polardiagramms, ohne Fenster.
// Winkel im Bild: 0° rechts, gegen den Uhrzeigersinn steigend, 0…360.
namespace Polar {

enum class Schnitt { elevation, azimut };

struct Punkt {
    double winkel = 0; // im Bild
    double gewinn = 0; // dBi
    bool operator==(const Punkt&) const = default;
};

struct Schnittdaten {
    Schnitt art = Schnitt::azimut;
    double fest = 0;           // Azimut (Elevationsschnitt) bzw. Elevation (Azimutschnitt), Grad
    std::vector<Punkt> punkte; // nach Winkel geordnet, ohne doppelte Winkel
    bool geschlossen = false;  // rundum gerechnet: der letzte Punkt schliesst an den ersten an
    bool operator==(const Schnittdaten&) const = default;
};

// Der Schnitt durch die Richtung grössten Gewinns: Elevation beim Azimut des
// Maximums (mit der Gegenrichtung), Azimut bei dessen Elevation. Nichts, wenn es
// kein Maximum gibt oder der Schnitt weniger als zwei Richtungen enthält.
std::optional<Schnittdaten> schnitt(const NECKern::FrequenzErgebnis& f, Schnitt art);

// Warum kein Schnitt gezeigt wird, als ein deutscher Satz.
std::string fehlt(const NECKern::FrequenzErgebnis& f, Schnitt art);

// Überschrift, z. B. „Azimut bei Elevation 12°“.
std::string titel(const Schnittdaten& s);

// Abstand von der Mitte als Anteil des Aussenrings: das Maximum liegt aussen, was
// `boden` dB oder mehr darunter liegt, in der Mitte. Höchstens `obergrenze`, damit
// eine frühere, stärkere Spur knapp über den Rand hinaus sichtbar bleibt.
double radius(double gewinn, double maximum, double boden, double obergrenze = 1.0);

// Öffnungswinkel zwischen den −3-dB-Punkten beiderseits des grössten Werts,
// linear zwischen Nachbarpunkten eingepasst; über 0°/360° hinweg, wenn der Schnitt
// geschlossen ist. Nichts, wenn eine Seite nicht unter −3 dB fällt.
std::optional<double> oeffnungswinkel(const Schnittdaten& s);

// Beschriftung eines Winkelstrichs: Azimut 0…330, Elevation −90…90.
std::string winkeltext(Schnitt art, double winkel);

// Winkelabstand der Strahlen und ihrer Gradzahlen: 30°, wo die Zahlen am Rand des
// Kreises nebeneinander Platz haben, sonst 45° oder 90°.
double strahlSchritt(double radius, double textbreite);

// Jeder wievielte Ring eine dBi-Zahl trägt, damit die Zahlen sich nicht überdecken.
int ringzahlSchritt(double ringabstand, double texthoehe);

} // namespace Polar
