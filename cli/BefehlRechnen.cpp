#include "Abbruch.hpp"
#include "Ausgabe.hpp"
#include "Befehle.hpp"
#include "KernWahl.hpp"
#include "ModellWahl.hpp"

#include "NECKern/Rechengang.hpp"
#include "NECKern/Urteile.hpp"

#include <fmt/printf.h>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace Befehle {

namespace {

using NECKern::Rechengang::Durchlauf;
using Json = nlohmann::ordered_json;

struct Optionen {
    ModellWahl wahl;
    std::string kern = "nec2c";
    bool json = false;
    bool ergebnis = false;
};

const char* stufenwort(NECKern::Stufe s) {
    switch (s) {
    case NECKern::Stufe::fehler:
        return "Fehler";
    case NECKern::Stufe::warnung:
        return "Warnung";
    case NECKern::Stufe::hinweis:
        break;
    }
    return "Hinweis";
}

void befundeAusgeben(const Durchlauf& d) {
    std::cout << "\nModellprüfung:\n";
    if (d.befunde.empty()) std::cout << "  Segmentierung und Drähte nach den NEC-Regeln in Ordnung\n";
    for (const auto& b : d.befunde)
        std::cout << "  " << stufenwort(b.stufe) << ": " << b.text << '\n';
}

void gueteAusgeben(const Durchlauf& d) {
    std::cout << "\nModellgüte (mittlerer Gewinn):\n";
    if (!d.guete) {
        std::cout << "  nicht berechnet\n";
        return;
    }
    auto urteil = NECKern::Urteile::guete(*d.guete);
    std::cout << "  " << urteil.wert << " – " << urteil.wort << '\n';
}

void gegenprobeAusgeben(const Durchlauf& d, const NECKern::FrequenzErgebnis& aktuell) {
    if (!d.gegenprobe) return;
    auto urteil = NECKern::Urteile::gegenprobe(aktuell, *d.gegenprobe);
    std::cout << "\nGegenprobe mit nec2c:\n";
    if (urteil.nec2c) std::cout << "  " << *urteil.nec2c << '\n';
    std::cout << "  " << urteil.abweichung << "\n  " << urteil.urteil << '\n';
}

void textAusgeben(const NECKern::Modell& m, const Durchlauf& d) {
    const auto& e = *d.ergebnis;
    std::cout << "Modell: " << m.name << '\n';
    std::cout << fmt::sprintf("Kern: %s, %.2f s\n", e.kern, e.dauer);
    for (const auto& f : e.frequenzen)
        std::cout << '\n' << Ausgabe::frequenzText(f, m.z0);
    if (!e.warnungen.empty()) {
        std::cout << "\nWarnungen:\n";
        for (const auto& w : e.warnungen)
            std::cout << "  " << w << '\n';
    }
    if (e.frequenzen.empty()) return;
    befundeAusgeben(d);
    gueteAusgeben(d);
    gegenprobeAusgeben(d, e.frequenzen.front());
}

Json gegenprobeJson(const Durchlauf& d) {
    if (!d.gegenprobe || !d.ergebnis || d.ergebnis->frequenzen.empty()) return nullptr;
    const auto& g = *d.gegenprobe;
    Json j;
    j["impedanz"] =
        g.z ? Json{{"re", Ausgabe::jsonZahl(g.z->re)}, {"im", Ausgabe::jsonZahl(g.z->im)}} : Json(nullptr);
    j["gewinn"] = Ausgabe::jsonZahl(g.g);
    j["urteil"] = NECKern::Urteile::gegenprobe(d.ergebnis->frequenzen.front(), g).urteil;
    return j;
}

Json zusammenfassung(const NECKern::Modell* m, const std::string& kern, const Durchlauf& d) {
    static const NECKern::NECErgebnis leer;
    const auto& e = d.ergebnis ? *d.ergebnis : leer;
    Json j;
    j["modell"] = m ? Json(m->name) : Json(nullptr);
    j["kern"] = kern;
    j["dauer"] = Ausgabe::jsonZahl(e.dauer);
    j["fehler"] = d.fehler ? Json(*d.fehler) : Json(nullptr);
    j["warnungen"] = e.warnungen;
    j["befunde"] = Json::array();
    for (const auto& b : d.befunde)
        j["befunde"].push_back(Json{{"stufe", static_cast<int>(b.stufe)}, {"text", b.text}});
    j["guete"] = Ausgabe::jsonZahl(d.guete);
    j["gegenprobe"] = gegenprobeJson(d);
    j["frequenzen"] = Json::array();
    for (const auto& f : e.frequenzen)
        j["frequenzen"].push_back(Ausgabe::frequenzJson(f, m ? m->z0 : 50.0));
    return j;
}

int rechnen(const Optionen& o) {
    const auto kern = kernWaehlen(o.kern);
    std::optional<NECKern::Modell> modell;
    Durchlauf d;
    try {
        modell = o.wahl.laden();
    } catch (const Aufruffehler&) {
        throw;
    } catch (const std::exception& e) {
        d.fehler = e.what();
    }
    if (modell) d = NECKern::Rechengang::rechnen(*modell, kern, 0, nullptr, stoppzeichen());

    if (o.json)
        std::cout << zusammenfassung(modell ? &*modell : nullptr, kern->kennung(), d).dump(2) << '\n';
    else if (o.ergebnis && d.ergebnis)
        std::cout << Json(*d.ergebnis).dump(2) << '\n';
    else if (d.ergebnis && !d.fehler)
        textAusgeben(*modell, d);
    if (!d.fehler) return erfolg;
    std::cerr << *d.fehler << '\n';
    return gescheitert;
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
