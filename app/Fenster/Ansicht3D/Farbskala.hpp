#pragma once

#include <QColor>

// Farbskalen mit gleichmässig wachsender Helligkeit, damit Stufen überall gleich
// gross wirken. Werte ausserhalb werden auf die Enden gesetzt; NaN gilt als kein Strom
// bzw. kleinster Gewinn.
namespace Raumbild::Farbskala {

// Stromstärke, 0…1: dunkelviolett über blaugrün nach gelb.
QColor strom(double t);
// Gewinn des Diagrammkörpers, 0…1: dunkelblau über magenta nach gelb.
QColor gewinn(double t);
// Vorzeichenbehafteter Momentanstrom, −1…1: blau, grau bei null, rot.
QColor momentan(double t);

} // namespace Raumbild::Farbskala
