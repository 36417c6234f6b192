#include "Befehle.hpp"
#include "ModellWahl.hpp"

#include "NECKern/Beispiele.hpp"

#include <iostream>
#include <memory>

namespace Befehle {

// Ohne Argument die Namen aller Beispiele, mit --beispiel dessen Deckdatei.
void beispielAnmelden(CLI::App& app) {
    auto* befehl =
        app.add_subcommand("beispiel", "Eingebaute Beispiele auflisten oder als Deckdatei ausgeben");
    auto text = std::make_shared<std::string>();
    befehl->add_option("--beispiel", *text, "Beispiel, dessen Name TEXT enthält, als Deckdatei ausgeben");
    befehl->callback([text] {
        ausfuehren([&] {
            if (text->empty()) {
                for (const auto& b : NECKern::Beispiele::alle())
                    std::cout << b.name << '\n';
            } else {
                std::cout << beispielModell(*text).schreiben();
            }
            return erfolg;
        });
    });
}

} // namespace Befehle
