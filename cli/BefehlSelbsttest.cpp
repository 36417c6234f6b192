// selbsttest: einen Rechenkern an Fällen mit bekannter Lösung prüfen.
#include "Abbruch.hpp"
#include "Befehle.hpp"
#include "KernWahl.hpp"

#include "NECKern/Selbsttest.hpp"
#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace Befehle {

namespace {

using NECKern::Selbsttest::Zeile;

struct Optionen {
    std::string kern = "nec2c";
    bool json = false;
};

// Eine bekannte Abweichung des Kerns ist kein Fehler der Installation.
std::string urteil(const Zeile& z, const std::string& kennung) {
    if (!z.bestanden) return "nicht geprüft";
    if (*z.bestanden) return "bestanden";
    if (NECKern::Selbsttest::bekannteAbweichung(kennung, z.pruefung)) return "bekannte Abweichung";
    return "nicht bestanden";
}

// Linksbündig auf Breite, gezählt in Zeichen (nicht in Bytes).
std::string links(const std::string& text, std::size_t breite) {
    const auto n = NECKern::Unicode::laenge(text);
    return text + std::string(breite > n ? breite - n : 0, ' ');
}

void tabelle(const std::vector<Zeile>& zeilen, const std::string& kennung) {
    using Spalten = std::array<std::string, 5>;
    std::vector<Spalten> reihen{{"Prüfung", "Soll", "Ist", "Ergebnis", "Quelle"}};
    for (const auto& z : zeilen)
        reihen.push_back({z.pruefung, z.soll, z.ist, urteil(z, kennung), z.quelle});
    std::array<std::size_t, 5> breite{};
    for (const auto& r : reihen)
        for (std::size_t i = 0; i < r.size(); ++i)
            breite[i] = std::max(breite[i], NECKern::Unicode::laenge(r[i]));
    for (const auto& r : reihen) {
        std::string zeile;
        for (std::size_t i = 0; i + 1 < r.size(); ++i)
            zeile += links(r[i], breite[i]) + "  ";
        std::cout << zeile << r.back() << '\n';
    }
}

int selbsttest(const Optionen& o) {
    const auto kern = kernWaehlen(o.kern);
    const auto zeilen = NECKern::Selbsttest::laufen(*kern, {}, stoppzeichen());
    const bool fehler = std::any_of(zeilen.begin(), zeilen.end(), [&](const Zeile& z) {
        return urteil(z, kern->kennung()) == "nicht bestanden";
    });
    const auto satz = NECKern::Selbsttest::zusammenfassung(zeilen);
    if (o.json) {
        nlohmann::ordered_json j;
        j["kern"] = kern->kennung();
        j["name"] = kern->name();
        j["zeilen"] = nlohmann::ordered_json::array();
        for (const auto& z : zeilen) {
            nlohmann::ordered_json zeile = z;
            zeile["bestanden"] =
                z.bestanden ? nlohmann::ordered_json(*z.bestanden) : nlohmann::ordered_json(nullptr);
            zeile["bekannteAbweichung"] =
                NECKern::Selbsttest::bekannteAbweichung(kern->kennung(), z.pruefung);
            j["zeilen"].push_back(zeile);
        }
        j["zusammenfassung"] = satz;
        j["bestanden"] = !fehler;
        std::cout << j.dump(2) << '\n';
    } else {
        std::cout << "Selbsttest: " << kern->name() << "\n\n";
        tabelle(zeilen, kern->kennung());
        std::cout << '\n' << satz << '\n';
    }
    return fehler ? gescheitert : erfolg;
}

} // namespace

void selbsttestAnmelden(CLI::App& app) {
    auto* befehl = app.add_subcommand("selbsttest", "Einen Rechenkern an Fällen mit bekannter Lösung prüfen");
    auto o = std::make_shared<Optionen>();
    befehl->add_option("--kern", o->kern, "Kennung des Rechenkerns (Vorgabe: nec2c)");
    befehl->add_flag("--json", o->json, "Zeilen als JSON-Objekt");
    befehl->callback([o] { ausfuehren([&] { return selbsttest(*o); }); });
}

} // namespace Befehle
