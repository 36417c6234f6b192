#include "KernWahl.hpp"

#include "NECKern/Rechenkerne/Kernliste.hpp"

#include "Befehle.hpp"

#include <iostream>

namespace Befehle {

NECKern::KernZeiger kernWaehlen(const std::string& kennung) {
    auto kerne = NECKern::Kernliste::kerneFinden();
    std::string bekannte;
    bool bekannt = false;
    for (const auto& k : kerne) {
        bekannte += (bekannte.empty() ? "" : ", ") + k->kennung();
        bekannt = bekannt || k->kennung() == kennung;
    }
    if (!bekannt) throw Aufruffehler("Unbekannter Kern „" + kennung + "“. Bekannt sind: " + bekannte + ".");
    // Wie im Fenster: ein nicht verfügbarer Kern wird durch nec2c ersetzt – das soll man sehen.
    auto kern = NECKern::Kernliste::waehlen(kerne, kennung);
    if (kern->kennung() != kennung)
        std::cerr << "Kern „" << kennung << "“ ist nicht verfügbar – gerechnet wird mit " << kern->name()
                  << ".\n";
    return kern;
}

} // namespace Befehle
