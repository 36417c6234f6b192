#pragma once

#include "NECKern/Ergebnis.hpp"
#include "NECKern/Urteile.hpp"

#include <QColor>
#include <QString>

#include <string>

// Zahlen und Farben der Ergebnisseite, unabhängig von der Gebietsschema-Einstellung.
namespace Ergebnistexte {

// "R ± jX Ω" mit zwei Nachkommastellen.
std::string impedanz(const NECKern::Komplex& z);
// Realteil ± j Imaginärteil mit vier gültigen Stellen und Einheit.
std::string komplex(const NECKern::Komplex& z, const char* einheit);
// "%.4g W", "–" ohne Wert.
std::string leistung(const std::optional<double>& watt);
// Winkel in Grad, eine Nachkommastelle nur, wenn sie etwas sagt.
std::string winkel(double grad);
// Die Richtung als Elevation über dem Horizont und Azimut.
std::string richtung(const NECKern::Richtung& r);

// Hintergrund und Schrift einer Urteilsfarbe.
QColor hintergrund(NECKern::Urteile::Farbe farbe);
QColor schrift(NECKern::Urteile::Farbe farbe);
// Der Name der Farbe, wie er an den Anzeigen als Eigenschaft "farbe" steht.
QString name(NECKern::Urteile::Farbe farbe);

} // namespace Ergebnistexte
