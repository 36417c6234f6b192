#include "Fenster/Symbole.hpp"

namespace Symbole {

namespace {

QIcon ausThema(const char* name, const char* eigenes) {
    return QIcon::fromTheme(name, QIcon(QString(":/Ressourcen/") + eigenes));
}

} // namespace

QIcon oeffnen() {
    return ausThema("document-open", "oeffnen.svg");
}
QIcon sichern() {
    return ausThema("document-save", "sichern.svg");
}
QIcon rechnen() {
    return ausThema("media-playback-start", "rechnen.svg");
}
QIcon abbrechen() {
    return ausThema("process-stop", "abbrechen.svg");
}
QIcon beispiele() {
    return QIcon(":/Ressourcen/beispiele.svg");
}
QIcon programm() {
    return QIcon(":/Ressourcen/wellenwerk.svg");
}

} // namespace Symbole
