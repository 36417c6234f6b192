#pragma once

class QApplication;
class QCoreApplication;

// Schrift, Stil und Sprache des Programms an einer Stelle: das Fenster und die
// Fenstertests sehen gleich aus, auf jedem Rechner mit den Schriften des Setups.
namespace Erscheinung {

void anwenden(QApplication& anwendung);
// Nur Qts eigene Texte deutsch, auch ohne Fenster (Hilfe der Befehlszeile).
void deutsch(QCoreApplication& anwendung);

} // namespace Erscheinung
