#pragma once

#include <CLI/CLI.hpp>

// Jeder Befehl meldet sich in seiner eigenen Datei an; anmelden() ruft alle auf.
namespace Befehle {

inline int& rueckgabe() {
    static int code = 0;
    return code;
}
inline int ergebnis() {
    return rueckgabe();
}

void anmelden(CLI::App& app);

void beispielAnmelden(CLI::App& app);

} // namespace Befehle
