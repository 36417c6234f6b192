#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace Befehle {

// Ein deutscher Satz zu einem Fehler, den CLI11 beim Lesen der Befehlszeile wirft.
// CLI11 liefert nur englischen Text: seine Einzelheiten (Name, Wert) werden daraus
// gelesen und neu gesetzt; was sich nicht lesen lässt, bekommt einen allgemeinen Satz.
std::string aufrufMeldung(const CLI::App& app, const CLI::ParseError& fehler);

// Die Typnamen der Hilfe deutsch: ZAHL und GANZZAHL statt FLOAT und INT.
void typnamenDeutsch(CLI::App& app);

} // namespace Befehle
