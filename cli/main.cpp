// wellenwerk-cli: die Rechenbibliothek ohne Fenster.
#include "Abbruch.hpp"
#include "Aufrufmeldung.hpp"
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
    // Vor jedem weiteren Faden: nur der Wartefaden bekommt SIGINT und SIGTERM.
    Befehle::Abbruch abbruch;
    std::setlocale(LC_ALL, "");
    CLI::App app{"Wellenwerk – Antennen rechnen ohne Fenster"};
    app.require_subcommand(1);
    deutscheHilfe(app);
    Befehle::anmelden(app);
    for (auto* befehl : app.get_subcommands({})) {
        befehl->group("Befehle");
        befehl->set_help_flag("-h,--help", "Diese Hilfe zeigen");
    }
    Befehle::typnamenDeutsch(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        std::cerr << "Falscher Aufruf: " << Befehle::aufrufMeldung(app, e) << "\nHilfe: " << argv[0]
                  << " --help\n";
        return Befehle::falscherAufruf;
    }
    if (const int signal = abbruch.signal()) return 128 + signal;
    return Befehle::ergebnis();
}
