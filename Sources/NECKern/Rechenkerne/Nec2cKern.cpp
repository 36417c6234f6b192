#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include "NECKern/NEC2Ausgabe.hpp"
#include "NECKern/Rechenkerne/Ascii.hpp"
#include "NECKern/Rechenkerne/Datei.hpp"
#include "NECKern/Rechenkerne/Prozess.hpp"

#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace NECKern {

namespace {

constexpr double zeitlimit = 300.0;

// nec2c 1.3 liest je Zeile 132 Zeichen und übergeht den Rest still; ein längerer
// CM-Text bringt es zum Abbruch („memory allocation request has failed“). Kommentare
// werden darum umgebrochen, jede andere zu lange Karte abgelehnt – sonst rechnete
// nec2c mit einer abgeschnittenen Karte.
constexpr std::size_t zeilenlaenge = 132;

void kommentarUmbrechen(std::string& aus, std::string_view text) {
    constexpr std::size_t breite = zeilenlaenge - 3;
    do {
        aus += "CM ";
        aus += text.substr(0, breite);
        aus += '\n';
        text.remove_prefix(std::min(breite, text.size()));
    } while (!text.empty());
}

std::string zeilenBegrenzen(std::string_view deck) {
    std::string aus;
    aus.reserve(deck.size());
    while (!deck.empty()) {
        const auto ende = deck.find('\n');
        const auto zeile = deck.substr(0, ende);
        deck.remove_prefix(ende == std::string_view::npos ? deck.size() : ende + 1);
        if (zeile.size() <= zeilenlaenge) {
            aus += zeile;
            aus += '\n';
            continue;
        }
        const auto typ = Unicode::gross(zeile.substr(0, 2));
        if (typ != "CM")
            throw KernFehler(
                fmt::format("Die Karte {} ist {} Zeichen lang, nec2c liest aber nur {} je Zeile – "
                            "kleine Masse in Millimetern schreiben und mit GS 0 0 0.001 in Meter "
                            "umrechnen.",
                            typ, zeile.size(), zeilenlaenge));
        kommentarUmbrechen(aus, Datei::trimmen(zeile.substr(2)));
    }
    return aus;
}

std::optional<std::filesystem::path> nebenDemProgramm() {
    std::error_code fehler;
    const auto selbst = std::filesystem::read_symlink("/proc/self/exe", fehler);
    if (fehler) return std::nullopt;
    auto pfad = selbst.parent_path() / "nec2c";
    if (Datei::ausfuehrbar(pfad)) return pfad;
    return std::nullopt;
}

std::optional<std::filesystem::path> imQuellbaum() {
    auto pfad = std::filesystem::path(WW_QUELLWURZEL) / "Kerne" / "bin" / "nec2c";
    if (Datei::ausfuehrbar(pfad)) return pfad;
    return std::nullopt;
}

// Wie die Shell, aber ohne sie: erste ausführbare Datei „nec2c“ in den
// Ordnern von PATH. Leere Einträge (aktueller Ordner) zählen nicht.
std::optional<std::filesystem::path> aufPath() {
    const char* path = std::getenv("PATH");
    if (!path) return std::nullopt;
    std::string_view rest(path);
    while (!rest.empty()) {
        const auto ende = rest.find(':');
        const auto ordner = rest.substr(0, ende);
        rest = ende == std::string_view::npos ? std::string_view{} : rest.substr(ende + 1);
        if (ordner.empty()) continue;
        auto pfad = std::filesystem::path(ordner) / "nec2c";
        if (Datei::ausfuehrbar(pfad)) return pfad;
    }
    return std::nullopt;
}

} // namespace

Nec2cKern::Nec2cKern(std::optional<std::filesystem::path> programm)
    : programm_(programm ? std::move(programm) : finden()) {}

std::optional<std::filesystem::path> Nec2cKern::finden() {
    if (auto p = nebenDemProgramm()) return p;
    if (auto p = imQuellbaum()) return p;
    return aufPath();
}

bool Nec2cKern::verfuegbar() const {
    return programm_ && Datei::ausfuehrbar(*programm_);
}

NECErgebnis Nec2cKern::rechnen(std::string_view deck, std::stop_token stopp) const {
    if (!verfuegbar()) throw KernFehler("nec2c nicht gefunden");
    const auto text = zeilenBegrenzen(ascii(deck));
    Prozess::Arbeitsordner ordner;
    Datei::schreibenAtomar(ordner.pfad() / "a.nec", text);
    const auto start = std::chrono::steady_clock::now();
    const auto ende =
        Prozess::ausfuehren(*programm_, {"-i", "a.nec", "-o", "a.out"}, ordner.pfad(), zeitlimit, stopp);
    const std::string bericht = Datei::lesenAscii(ordner.pfad() / "a.out");
    const auto fehlerausgabe = Datei::trimmen(ende.fehlerausgabe);

    if (ende.status != 0 && bericht.empty()) {
        if (!fehlerausgabe.empty()) throw KernFehler("nec2c: " + std::string(fehlerausgabe));
        throw KernFehler("nec2c: beendet mit " + std::to_string(ende.status) +
                         ", ohne Bericht und ohne Fehlermeldung");
    }
    NECErgebnis ergebnis = NEC2Ausgabe::lesen(bericht);
    if (ende.status != 0) {
        // nec2c schreibt seine Gründe in den Bericht, nicht nach stderr: dann
        // steht der Grund in dessen letzter Zeile.
        const auto grund = fehlerausgabe.empty() ? Datei::letzteZeile(bericht) : fehlerausgabe;
        auto warnung = "nec2c beendet mit " + std::to_string(ende.status);
        if (!grund.empty()) warnung += ": " + std::string(grund);
        ergebnis.warnungen.push_back(std::move(warnung));
    }
    ergebnis.kern = name();
    ergebnis.dauer = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return ergebnis;
}

} // namespace NECKern
