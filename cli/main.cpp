// wellenwerk-cli: die Rechenbibliothek ohne Fenster.
#include "Befehle.hpp"

#include <CLI/CLI.hpp>
#include <clocale>
#include <iostream>

namespace {

// CLI11 beschriftet die Hilfe englisch; die sichtbaren Überschriften werden deutsch.
void deutscheHilfe(CLI::App& app) {
    auto f = app.get_formatter();
    f->label("Usage", "Aufruf");
    f->label("OPTIONS", "OPTIONEN");
    f->label("SUBCOMMAND", "BEFEHL");
    f->label("SUBCOMMANDS", "BEFEHLE");
    f->label("Positionals", "Argumente");
    f->label("REQUIRED", "PFLICHT");
    f->label("TEXT", "TEXT");
    f->label("Excludes", "Schliesst aus");
    app.option_defaults()->group("Optionen");
    app.set_help_flag("-h,--help", "Diese Hilfe zeigen");
}

} // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    CLI::App app{"Wellenwerk – Antennen rechnen ohne Fenster"};
    app.require_subcommand(1);
    deutscheHilfe(app);
    Befehle::anmelden(app);
    for (auto* befehl : app.get_subcommands({})) {
        befehl->group("Befehle");
        befehl->set_help_flag("-h,--help", "Diese Hilfe zeigen");
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        // Die Einzelheit kommt von CLI11 und bleibt englisch; der Rahmen ist deutsch.
        std::cerr << "Falscher Aufruf: " << e.what() << "\nHilfe: " << argv[0] << " --help\n";
        return Befehle::falscherAufruf;
    }
    return Befehle::ergebnis();
}
