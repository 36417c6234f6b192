#pragma once

#include <QIcon>

// Symbole aus dem Thema des Desktops; ein nackter Rechner hat keines, dann
// gelten die eigenen aus den Ressourcen.
namespace Symbole {

QIcon oeffnen();
QIcon sichern();
QIcon rechnen();
QIcon abbrechen();
QIcon beispiele();
QIcon programm();

} // namespace Symbole
