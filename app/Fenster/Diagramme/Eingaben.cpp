#include "Fenster/Diagramme/Eingaben.hpp"

#include <QLocale>
#include <QSignalBlocker>

namespace Eingaben {

namespace {

// Gemeinsam für beide Feldarten: Dezimalpunkt, Übernahme erst beim Bestätigen,
// Anzeige folgt dem Modell ohne Rückmeldung an das Modell.
template <typename Feld, typename T>
void verbinden(Feld* feld, AppModell& modell, T (AppModell::*lesen)() const, void (AppModell::*schreiben)(T),
               void (AppModell::*geaendert)()) {
    QLocale c = QLocale::c();
    c.setNumberOptions(QLocale::OmitGroupSeparator);
    feld->setLocale(c);
    feld->setKeyboardTracking(false);
    feld->setValue((modell.*lesen)());
    QObject::connect(feld, &Feld::valueChanged, &modell,
                     [&modell, schreiben](T wert) { (modell.*schreiben)(wert); });
    QObject::connect(&modell, geaendert, feld, [feld, &modell, lesen] {
        const QSignalBlocker still(feld);
        feld->setValue((modell.*lesen)());
    });
}

} // namespace

QDoubleSpinBox* zahl(AppModell& modell, double (AppModell::*lesen)() const,
                     void (AppModell::*schreiben)(double), void (AppModell::*geaendert)(),
                     const Bereich& bereich, QWidget* eltern) {
    auto* feld = new QDoubleSpinBox(eltern);
    feld->setDecimals(bereich.stellen);
    feld->setRange(bereich.min, bereich.max);
    feld->setSuffix(bereich.einheit);
    verbinden(feld, modell, lesen, schreiben, geaendert);
    return feld;
}

QSpinBox* ganz(AppModell& modell, int (AppModell::*lesen)() const, void (AppModell::*schreiben)(int),
               void (AppModell::*geaendert)(), int min, int max, QWidget* eltern) {
    auto* feld = new QSpinBox(eltern);
    feld->setRange(min, max);
    verbinden(feld, modell, lesen, schreiben, geaendert);
    return feld;
}

} // namespace Eingaben
