#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <stdexcept>
#include <string>

// Jeder Befehl meldet sich in seiner eigenen Datei an; anmelden() ruft alle auf.
namespace Befehle {

inline int& rueckgabe() {
    static int code = 0;
    return code;
}
inline int ergebnis() {
    return rueckgabe();
}

// Exit-Codes: gerechnet, Modell oder Kern gescheitert, falscher Aufruf.
constexpr int erfolg = 0;
constexpr int gescheitert = 1;
constexpr int falscherAufruf = 2;

// Ein falscher Aufruf, der erst beim Ausführen auffällt (Exit-Code 2).
class Aufruffehler : public std::runtime_error {
  public:
    explicit Aufruffehler(const std::string& text) : std::runtime_error(text) {}
};

// Führt den Rumpf eines Befehls aus: Ausnahmen werden zur deutschen Meldung auf
// stderr, Aufruffehler zu Exit-Code 2, alle anderen zu 1.
void ausfuehren(const std::function<int()>& rumpf);

void anmelden(CLI::App& app);

void beispielAnmelden(CLI::App& app);
void deckAnmelden(CLI::App& app);
void rechnenAnmelden(CLI::App& app);
void feldAnmelden(CLI::App& app);
void selbsttestAnmelden(CLI::App& app);
void pruefenAnmelden(CLI::App& app);
void gangAnmelden(CLI::App& app);
void optimierenAnmelden(CLI::App& app);
void kerneAnmelden(CLI::App& app);

} // namespace Befehle
