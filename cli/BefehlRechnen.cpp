#include "Ausgabe.hpp"
#include "Befehle.hpp"
#include "KernWahl.hpp"
#include "ModellWahl.hpp"

#include <fmt/printf.h>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace Befehle {

namespace {

struct Optionen {
    ModellWahl wahl;
    std::string kern = "nec2c";
    bool json = false;
    bool ergebnis = false;
};

// Ohne Frequenz ist nichts gerechnet: dann gilt der erste Hinweis des Kerns als Grund.
std::optional<std::string> fehlerDes(const NECKern::NECErgebnis& e) {
    if (!e.frequenzen.empty()) return std::nullopt;
    return e.warnungen.empty() ? "keine Ausgabe" : e.warnungen.front();
}

void textAusgeben(const NECKern::Modell& m, const NECKern::NECErgebnis& e) {
    std::cout << "Modell: " << m.name << '\n';
    std::cout << fmt::sprintf("Kern: %s, %.2f s\n", e.kern, e.dauer);
    for (const auto& f : e.frequenzen)
        std::cout << '\n' << Ausgabe::frequenzText(f, m.z0);
    if (!e.warnungen.empty()) {
        std::cout << "\nWarnungen:\n";
        for (const auto& w : e.warnungen)
            std::cout << "  " << w << '\n';
    }
}

nlohmann::ordered_json zusammenfassung(const Optionen& o, const NECKern::Modell* m,
                                       const NECKern::NECErgebnis& e,
                                       const std::optional<std::string>& fehler) {
    nlohmann::ordered_json j;
    j["modell"] = m ? nlohmann::ordered_json(m->name) : nlohmann::ordered_json(nullptr);
    j["kern"] = o.kern;
    j["dauer"] = Ausgabe::jsonZahl(e.dauer);
    j["fehler"] = fehler ? nlohmann::ordered_json(*fehler) : nlohmann::ordered_json(nullptr);
    j["warnungen"] = e.warnungen;
    j["befunde"] = nlohmann::ordered_json::array();
    j["frequenzen"] = nlohmann::ordered_json::array();
    for (const auto& f : e.frequenzen)
        j["frequenzen"].push_back(Ausgabe::frequenzJson(f, m ? m->z0 : 50.0));
    return j;
}

int rechnen(const Optionen& o) {
    const auto kern = kernWaehlen(o.kern);
    std::optional<NECKern::Modell> modell;
    NECKern::NECErgebnis ergebnis;
    try {
        modell = o.wahl.laden();
        ergebnis = kern->rechnen(modell->deck());
    } catch (const Aufruffehler&) {
        throw;
    } catch (const std::exception& e) {
        // Mit --json bekommt auch ein Fehlschlag sein Objekt; die Meldung steht zudem auf stderr.
        if (o.json)
            std::cout << zusammenfassung(o, modell ? &*modell : nullptr, {}, e.what()).dump(2) << '\n';
        throw;
    }
    const auto fehler = fehlerDes(ergebnis);
    if (o.ergebnis)
        std::cout << nlohmann::ordered_json(ergebnis).dump(2) << '\n';
    else if (o.json)
        std::cout << zusammenfassung(o, &*modell, ergebnis, fehler).dump(2) << '\n';
    else
        textAusgeben(*modell, ergebnis);
    if (fehler) {
        std::cerr << "Keine Ergebnisse: " << *fehler << '\n';
        return gescheitert;
    }
    return erfolg;
}

} // namespace

void rechnenAnmelden(CLI::App& app) {
    auto* befehl = app.add_subcommand("rechnen", "Das Modell mit einem Rechenkern rechnen");
    auto o = std::make_shared<Optionen>();
    o->wahl.anmelden(befehl);
    befehl->add_option("--kern", o->kern, "Kennung des Rechenkerns (Vorgabe: nec2c)");
    auto* json = befehl->add_flag("--json", o->json, "Kennzahlen als JSON-Objekt");
    befehl->add_flag("--ergebnis", o->ergebnis, "Das ganze Ergebnis als JSON")->excludes(json);
    befehl->callback([o] { ausfuehren([&] { return rechnen(*o); }); });
}

} // namespace Befehle
