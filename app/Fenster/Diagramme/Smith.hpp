#pragma once

#include "NECKern/Ergebnis.hpp"

#include <optional>
#include <vector>

// Abbildung von Impedanzen auf das Smith-Diagramm (Reflexionsfaktor), ohne Fenster.
namespace Smith {

struct Punkt {
    double x = 0; // Realteil des Reflexionsfaktors, −1 (Kurzschluss) … 1 (Leerlauf)
    double y = 0; // Imaginärteil, oben induktiv
    bool operator==(const Punkt&) const = default;
};

// Γ = (Z − z0) / (Z + z0). z0 liegt in der Mitte, 0 Ω links, Leerlauf (unendlich)
// rechts am Rand, reine Blindwiderstände auf dem Rand. Nichts für NaN oder z0 ≤ 0.
std::optional<Punkt> abbilden(NECKern::Komplex z, double z0);

// Mittelpunkt und Radius (in Γ) des Kreises konstanten normierten Wirkwiderstands r.
struct Kreis {
    Punkt mitte;
    double radius = 0;
};
Kreis widerstandskreis(double r);
// Kreis konstanten normierten Blindwiderstands x ≠ 0; nur sein Bogen im Einheitskreis gilt.
Kreis blindkreis(double x);

// Betrag des Reflexionsfaktors zu einem Stehwellenverhältnis.
double gammaBetrag(double swr);

} // namespace Smith
