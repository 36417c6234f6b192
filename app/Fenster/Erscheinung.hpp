#pragma once

class QApplication;

// Schrift, Stil und Farben des Programms an einer Stelle: das Fenster und die
// Fenstertests sehen gleich aus, auf jedem Rechner mit den Schriften des Setups.
namespace Erscheinung {

void anwenden(QApplication& anwendung);

} // namespace Erscheinung
