#pragma once

#include "Modell/AppModell.hpp"

#include <QDoubleSpinBox>
#include <QSpinBox>

// Eingabefelder, die ein Feld des Anwendungsmodells zeigen und ändern. Das Modell
// bleibt die Quelle: eine Änderung dort erscheint im Feld, eine Eingabe geht
// erst beim Bestätigen (Enter, Fokuswechsel) ins Modell. Zahlen mit Dezimalpunkt.
namespace Eingaben {

struct Bereich {
    double min = 0, max = 0;
    int stellen = 0;
    QString einheit; // mit führendem Leerzeichen, etwa " MHz"
};

QDoubleSpinBox* zahl(AppModell& modell, double (AppModell::*lesen)() const,
                     void (AppModell::*schreiben)(double), void (AppModell::*geaendert)(),
                     const Bereich& bereich, QWidget* eltern);

QSpinBox* ganz(AppModell& modell, int (AppModell::*lesen)() const, void (AppModell::*schreiben)(int),
               void (AppModell::*geaendert)(), int min, int max, QWidget* eltern);

} // namespace Eingaben
