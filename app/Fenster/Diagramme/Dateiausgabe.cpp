#include "Fenster/Diagramme/Dateiausgabe.hpp"

#include <QSaveFile>

namespace Dateiausgabe {

std::optional<QString> schreiben(const QString& pfad, const QByteArray& daten, const QString& was) {
    QSaveFile datei(pfad);
    if (datei.open(QIODevice::WriteOnly) && datei.write(daten) == daten.size() && datei.commit())
        return std::nullopt;
    return QString("%1 konnte nicht nach „%2“ geschrieben werden (%3); bitte einen anderen Ort wählen.")
        .arg(was, pfad, datei.errorString());
}

} // namespace Dateiausgabe
