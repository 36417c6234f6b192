// optimieren: markierte Variablen auf Ziele hin suchen (Simplex), Ergebnis ins Modell übernehmen.
#include "Abbruch.hpp"
#include "Ausgabe.hpp"
#include "Befehle.hpp"
#include "KernWahl.hpp"
#include "ModellWahl.hpp"

#include "NECKern/Optimierer.hpp"
#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <fmt/printf.h>
#include <fstream>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <system_error>

namespace Befehle {

namespace {

struct Optionen {
    ModellWahl wahl;
    std::string kern = "nec2c";
    std::vector<std::string> variablen;
    std::vector<std::string> ziele;
    int schritte = 200;
    std::string ausgabe;
    bool json = false;
};

std::vector<std::string> teilen(const std::string& text) {
    std::vector<std::string> teile;
    std::size_t anfang = 0;
    while (true) {
        auto ende = text.find(':', anfang);
        teile.push_back(text.substr(anfang, ende - anfang));
        if (ende == std::string::npos) return teile;
        anfang = ende + 1;
    }
}

// Eine endliche Zahl mit Dezimalpunkt, ganz gelesen; sonst nichts.
std::optional<double> zahl(const std::string& text) {
    double x = 0;
    auto [ende, fehler] = std::from_chars(text.data(), text.data() + text.size(), x);
    if (fehler != std::errc() || ende != text.data() + text.size() || !std::isfinite(x)) return std::nullopt;
    return x;
}

// NAME oder NAME:MIN:MAX; ein leeres MIN oder MAX lässt die Grenze offen.
void variableMarkieren(NECKern::Modell& m, const std::string& angabe) {
    auto teile = teilen(angabe);
    if (teile.size() != 1 && teile.size() != 3)
        throw Aufruffehler("--variable „" + angabe + "“: erwartet NAME oder NAME:MIN:MAX.");
    auto grenze = [&](const std::string& text) -> std::optional<double> {
        if (text.empty()) return std::nullopt;
        if (auto x = zahl(text)) return x;
        throw Aufruffehler("--variable „" + angabe + "“: „" + text + "“ ist keine Zahl.");
    };
    std::optional<double> minimum, maximum;
    if (teile.size() == 3) minimum = grenze(teile[1]), maximum = grenze(teile[2]);
    if (minimum && maximum && *minimum > *maximum)
        throw Aufruffehler("--variable „" + angabe + "“: MIN ist grösser als MAX.");
    bool gefunden = false;
    for (auto& v : m.variablen) {
        if (v.name != teile[0]) continue;
        v.optimieren = true;
        v.minimum = minimum;
        v.maximum = maximum;
        gefunden = true;
    }
    if (!gefunden) throw Aufruffehler("Das Modell hat keine Variable „" + teile[0] + "“.");
}

NECKern::Ziel ziel(const std::string& angabe) {
    using Art = NECKern::Ziel::Art;
    static const std::pair<const char*, Art> arten[] = {{"swr", Art::swr},
                                                        {"gewinn", Art::gewinn},
                                                        {"vorrueck", Art::vorRueck},
                                                        {"resonanz", Art::resonanz},
                                                        {"r", Art::impedanzR}};
    auto teile = teilen(angabe);
    const std::string falsch = "--ziel „" + angabe + "“: ";
    if (teile.size() < 2 || teile.size() > 4) throw Aufruffehler(falsch + "erwartet ART:MHZ:SOLL[:GEWICHT].");
    auto art = std::find_if(std::begin(arten), std::end(arten),
                            [&](const auto& a) { return NECKern::Unicode::klein(teile[0]) == a.first; });
    if (art == std::end(arten))
        throw Aufruffehler(falsch + "unbekannte Zielart; möglich sind swr, gewinn, vorrueck, resonanz, r.");
    auto mhz = zahl(teile[1]);
    if (!mhz || *mhz <= 0) throw Aufruffehler(falsch + "MHZ muss eine positive Frequenz sein.");
    // Die Resonanz braucht keinen Sollwert.
    std::optional<double> soll = teile.size() > 2 ? zahl(teile[2]) : std::nullopt;
    if (!soll && !(art->second == Art::resonanz && (teile.size() == 2 || teile[2].empty())))
        throw Aufruffehler(falsch + "SOLL muss eine Zahl sein.");
    auto gewicht = teile.size() > 3 ? zahl(teile[3]) : std::optional<double>(1.0);
    if (!gewicht || *gewicht < 0) throw Aufruffehler(falsch + "GEWICHT muss eine Zahl ab 0 sein.");
    return NECKern::Ziel(art->second, *mhz, soll.value_or(0), *gewicht);
}

std::string werteText(const NECKern::Werte& werte) {
    std::string text;
    for (const auto& [name, wert] : werte)
        text += fmt::sprintf("%s%s = %.9g", text.empty() ? "" : ", ", name, wert);
    return text;
}

int optimieren(const Optionen& o) {
    if (o.schritte < 0) throw Aufruffehler("--schritte darf nicht negativ sein.");
    std::vector<NECKern::Ziel> ziele;
    for (const auto& angabe : o.ziele)
        ziele.push_back(ziel(angabe));
    const auto kern = kernWaehlen(o.kern);
    auto modell = o.wahl.laden();
    // Mit --variable gilt genau diese Auswahl, sonst die Marken der Deckdatei.
    if (!o.variablen.empty())
        for (auto& v : modell.variablen)
            v.optimieren = false;
    for (const auto& angabe : o.variablen)
        variableMarkieren(modell, angabe);

    NECKern::Optimierer optimierer(modell, kern, ziele);
    // Ctrl+C hält auch die laufenden Kernläufe an; die Suche endet dann mit „Rechnung abgebrochen.“.
    std::stop_callback anhalten(stoppzeichen(), [&] { optimierer.anhalten(); });
    NECKern::Optimierer::Stand letzter;
    auto werte = optimierer.starten(o.schritte, [&](const NECKern::Optimierer::Stand& s) {
        letzter = s;
        std::cerr << fmt::sprintf("Schritt %d: Kosten %.6g, %s\n", s.schritt, s.kosten, werteText(s.werte));
    });
    if (o.json) {
        nlohmann::ordered_json j;
        j["modell"] = modell.name;
        j["kern"] = kern->kennung();
        j["schritte"] = letzter.schritt;
        j["kosten"] = std::isfinite(letzter.kosten) ? nlohmann::ordered_json(letzter.kosten) : nullptr;
        j["werte"] = werte;
        j["kernlaeufe"] = optimierer.kernlaeufe();
        std::cout << j.dump(2) << '\n';
    } else {
        std::cout << fmt::sprintf("Kosten %.6g nach %d Schritten und %ld Kernläufen\n", letzter.kosten,
                                  letzter.schritt, optimierer.kernlaeufe());
        for (const auto& [name, wert] : werte)
            std::cout << fmt::sprintf("%s = %.9g\n", name, wert);
    }
    if (!o.ausgabe.empty())
        Ausgabe::dateiSchreiben(o.ausgabe, NECKern::Optimierer::uebernehmen(modell, werte).schreiben());
    return erfolg;
}

} // namespace

void optimierenAnmelden(CLI::App& app) {
    auto* befehl = app.add_subcommand("optimieren", "Variablen des Modells auf Ziele hin optimieren");
    auto o = std::make_shared<Optionen>();
    o->wahl.anmelden(befehl);
    // Je Angabe genau ein Wert, damit eine folgende Deckdatei nicht als Variable gilt.
    befehl->add_option("--variable", o->variablen, "Zu optimierende Variable: NAME oder NAME:MIN:MAX")
        ->allow_extra_args(false);
    befehl
        ->add_option("--ziel", o->ziele,
                     "Ziel ART:MHZ:SOLL[:GEWICHT]; ART: swr, gewinn, vorrueck, resonanz, r")
        ->required()
        ->allow_extra_args(false);
    befehl->add_option("--schritte", o->schritte, "Höchstzahl der Simplex-Schritte (Vorgabe: 200)");
    befehl->add_option("--ausgabe", o->ausgabe, "Modell mit den gefundenen Werten als Deckdatei schreiben");
    befehl->add_option("--kern", o->kern, "Kennung des Rechenkerns (Vorgabe: nec2c)");
    befehl->add_flag("--json", o->json, "Ergebnis als JSON");
    befehl->callback([o] { ausfuehren([&] { return optimieren(*o); }); });
}

} // namespace Befehle
