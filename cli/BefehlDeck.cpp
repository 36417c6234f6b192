#include "Befehle.hpp"
#include "ModellWahl.hpp"

#include <iostream>
#include <memory>

namespace Befehle {

// Das Zahlendeck, wie es ein Rechenkern bekommt.
void deckAnmelden(CLI::App& app) {
    auto* befehl = app.add_subcommand("deck", "Das Zahlendeck des Modells ausgeben");
    auto wahl = std::make_shared<ModellWahl>();
    wahl->anmelden(befehl);
    befehl->callback([wahl] {
        ausfuehren([&] {
            std::cout << wahl->laden().deck();
            return erfolg;
        });
    });
}

} // namespace Befehle
