#include "KernWahl.hpp"

#include "NECKern/Rechenkerne/Kernliste.hpp"

#include "Befehle.hpp"

namespace Befehle {

// Anders als das Fenster fällt die Befehlszeile nicht still auf nec2c zurück:
// eine unbekannte Kennung ist ein falscher Aufruf, ein nicht verfügbarer Kern
// meldet sich beim Rechnen mit seinem eigenen Fehler.
NECKern::KernZeiger kernWaehlen(const std::string& kennung) {
    const auto kerne = NECKern::Kernliste::kerneFinden();
    std::string bekannt;
    for (const auto& k : kerne) {
        if (k->kennung() == kennung) return k;
        bekannt += (bekannt.empty() ? "" : ", ") + k->kennung();
    }
    throw Aufruffehler("Unbekannter Kern „" + kennung + "“. Bekannt: " + bekannt + ".");
}

} // namespace Befehle
