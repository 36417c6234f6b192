#include "Befehle.hpp"

#include <iostream>

namespace Befehle {

void ausfuehren(const std::function<int()>& rumpf) {
    try {
        rueckgabe() = rumpf();
    } catch (const Aufruffehler& e) {
        std::cerr << e.what() << '\n';
        rueckgabe() = falscherAufruf;
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        rueckgabe() = gescheitert;
    }
}

void anmelden(CLI::App& app) {
    beispielAnmelden(app);
    deckAnmelden(app);
    rechnenAnmelden(app);
    feldAnmelden(app);
    selbsttestAnmelden(app);
    pruefenAnmelden(app);
    gangAnmelden(app);
    optimierenAnmelden(app);
    kerneAnmelden(app);
}

} // namespace Befehle
