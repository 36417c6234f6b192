#include "Befehle.hpp"

#include "NECKern/Modell.hpp"

#include <iostream>

namespace Befehle {

namespace {

constexpr const char* eingebaut = "CM Halbwellendipol 20 m\nCE\nSY f=14.175, l=10.25 ' Länge\nSY h=10\n"
                                  "gw 1,21 0 -l/2 h 0 l/2 h 1mm\nGE 1\nGN 2 0 0 0 13 0.005\nEX 0 1 11 0 1\n"
                                  "FR 0 1 0 0 f 0\nRP 0 19 73 1000 0 0 5 5\nEN\n";

} // namespace

void beispielAnmelden(CLI::App& app) {
    auto* befehl = app.add_subcommand("beispiel", "Eingebautes Beispiel als Deckdatei ausgeben");
    befehl->callback([] { std::cout << NECKern::Modell::lesen(eingebaut, "Beispiel").schreiben(); });
}

} // namespace Befehle
