#pragma once

#include <QString>

// Bild des Fensters für Skripte und Dokumentation.
namespace Schnappschuss {

// Das erste sichtbare Fenster oberster Ebene, das breiter als 600 ist, als PNG nach
// `pfad`. Rückgabe: 0 bei Erfolg, 2 ohne solches Fenster oder ohne Bild.
int sichern(const QString& pfad);

} // namespace Schnappschuss
