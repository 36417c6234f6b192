#include "ModellWahl.hpp"

#include "NECKern/Beispiele.hpp"
#include "NECKern/Systemgrund.hpp"
#include "NECKern/Unicode.hpp"

#include "Befehle.hpp"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <system_error>

namespace Befehle {

namespace {

std::string dateiLesen(const std::string& pfad) {
    std::ifstream datei(pfad, std::ios::binary);
    const int fehler = errno;
    if (!datei)
        throw std::runtime_error("Die Datei „" + pfad +
                                 "“ konnte nicht gelesen werden: " + NECKern::systemgrund(fehler) + ".");
    std::ostringstream inhalt;
    inhalt << datei.rdbuf();
    if (datei.bad()) throw std::runtime_error("Die Datei „" + pfad + "“ konnte nicht gelesen werden.");
    return inhalt.str();
}

std::string eingabeLesen() {
    return std::string(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
}

} // namespace

void ModellWahl::anmelden(CLI::App* befehl) {
    befehl->add_option("datei", datei, "Deckdatei (.nec) oder „-“ für die Standardeingabe");
    befehl->add_option("--beispiel", beispiel, "Eingebautes Beispiel, dessen Name TEXT enthält");
}

NECKern::Modell ModellWahl::laden() const {
    if (datei.empty() == beispiel.empty())
        throw Aufruffehler("Bitte genau ein Modell angeben: eine Deckdatei, „-“ für die Standardeingabe oder "
                           "--beispiel TEXT.");
    if (!beispiel.empty()) return beispielModell(beispiel);
    if (datei == "-") return NECKern::Modell::lesen(eingabeLesen(), "Standardeingabe");
    if (std::filesystem::is_directory(datei))
        throw std::runtime_error("„" + datei + "“ ist ein Ordner, keine Deckdatei.");
    return NECKern::Modell::lesen(dateiLesen(datei), std::filesystem::path(datei).stem().string());
}

NECKern::Modell beispielModell(const std::string& text) {
    const auto gesucht = NECKern::Unicode::klein(text);
    for (const auto& b : NECKern::Beispiele::alle())
        if (NECKern::Unicode::klein(b.name).find(gesucht) != std::string::npos) return b.modell();
    throw std::runtime_error("Kein eingebautes Beispiel enthält „" + text + "“ im Namen.");
}

} // namespace Befehle
