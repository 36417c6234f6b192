#pragma once

#include <QString>

class QFrame;
class QLabel;
class QWidget;

// Bausteine der Abschnitte der Ergebnisseite.
namespace Abschnitt {

QLabel* titel(const QString& text, QWidget* eltern);
// Ein Wert: mit Maus und Tastatur auswählbar, damit man ihn kopieren kann.
QLabel* wert(QWidget* eltern);
// Erklärender Text, umbrochen, etwas gedämpft.
QLabel* erklaerung(const QString& text, QWidget* eltern);
QFrame* trenner(QWidget* eltern);

} // namespace Abschnitt
