#pragma once

#include <vector>

// Runde Teilstriche für Achsen (1, 2, 5 mal Zehnerpotenz), ohne Fenster.
namespace Achsen {

struct Teilung {
    double von = 0, bis = 0; // auf ganze Schritte erweiterter Bereich
    double schritt = 1;
    std::vector<double> striche;
};

// Höchstens etwa `ziel` Schritte über [a, b]; ein leerer Bereich wird aufgeweitet.
Teilung teilen(double a, double b, int ziel, bool erweitern = true);

// Nachkommastellen, mit denen sich die Striche der Teilung unterscheiden.
int stellen(const Teilung& t);

} // namespace Achsen
