// wellenwerk-cli: die Rechenbibliothek ohne Fenster.
#include "Befehle.hpp"

#include <CLI/CLI.hpp>
#include <clocale>
#include <iostream>

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    CLI::App app{"Wellenwerk – Antennen rechnen ohne Fenster"};
    app.require_subcommand(1);
    app.failure_message(CLI::FailureMessage::help);
    Befehle::anmelden(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        int code = app.exit(e);
        return code == 0 ? 0 : 2;
    }
    return Befehle::ergebnis();
}
