#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Schreibt Exporte ganz oder gar nicht (erst eine temporäre Datei, dann umbenennen).
namespace Dateiausgabe {

// Nichts bei Erfolg, sonst ein deutscher Satz mit dem Grund des Systems; `was`
// nennt den Inhalt am Satzanfang („Das Bild“, „Die Datei“).
std::optional<QString> schreiben(const QString& pfad, const QByteArray& daten, const QString& was);

} // namespace Dateiausgabe
