#pragma once

#include "NECKern/Modell.hpp"

#include <CLI/CLI.hpp>
#include <string>

// Woher ein Befehl sein Modell nimmt: eine Deckdatei, die Standardeingabe („-“)
// oder ein eingebautes Beispiel (--beispiel TEXT). Für alle Befehle mit Modell.
namespace Befehle {

struct ModellWahl {
    std::string datei;
    std::string beispiel;

    // Meldet DATEI und --beispiel an einem Befehl an.
    void anmelden(CLI::App* befehl);
    // Genau eine Quelle muss gewählt sein, sonst Aufruffehler. Eine unlesbare
    // Datei oder ein unbekanntes Beispiel wirft std::runtime_error (Exit-Code 1).
    NECKern::Modell laden() const;
};

// Das erste Beispiel, dessen Name `text` enthält (Gross- und Kleinschreibung
// egal, auch bei Umlauten); ohne Treffer std::runtime_error.
NECKern::Modell beispielModell(const std::string& text);

} // namespace Befehle
