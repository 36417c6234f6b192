// feld: Nahfeld auf einer waagrechten Ebene um die Antenne, als Effektivwerte
// bei der Sendeleistung und verglichen mit den ICNIRP-Referenzwerten.
#include "Abbruch.hpp"
#include "Ausgabe.hpp"
#include "Befehle.hpp"
#include "KernWahl.hpp"
#include "ModellWahl.hpp"

#include "NECKern/Feldstaerke.hpp"

#include <algorithm>
#include <cmath>
#include <fmt/printf.h>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace Befehle {

namespace {

using namespace NECKern;

struct Optionen {
    ModellWahl wahl;
    std::string kern = "nec2c";
    double leistung = 100.0;
    double hoehe = 2.0;
    double halb = 15.0;
    int punkte = 31;
    bool json = false;
};

// Ein Gitterpunkt als Effektivwerte bei der Sendeleistung.
struct Punkt {
    double x, y, z;
    double e;                     // V/m
    std::optional<double> h;      // A/m
    std::optional<double> anteil; // E / Referenz
    std::optional<Feldstaerke::Klasse> klasse;
};

void pruefen(const Optionen& o) {
    if (!(std::isfinite(o.leistung) && o.leistung > 0))
        throw Aufruffehler("Die Leistung muss eine positive Zahl in W sein.");
    if (!std::isfinite(o.hoehe)) throw Aufruffehler("Die Höhe der Ebene muss eine Zahl in m sein.");
    if (!(std::isfinite(o.halb) && o.halb > 0))
        throw Aufruffehler("Die halbe Seitenlänge muss eine positive Zahl in m sein.");
}

std::vector<Punkt> punkteAus(const FrequenzErgebnis& f, double leistung) {
    const double pNEC = *f.leistungEingang;
    const auto referenz = Feldstaerke::icnirp(f.mhz);
    std::vector<Punkt> punkte;
    for (std::size_t i = 0; i < f.nahfeldE.size(); ++i) {
        const auto& p = f.nahfeldE[i];
        Punkt q{p.x, p.y, p.z, Feldstaerke::effektiv(p.gesamt(), pNEC, leistung), {}, {}, {}};
        if (i < f.nahfeldH.size()) q.h = Feldstaerke::effektiv(f.nahfeldH[i].gesamt(), pNEC, leistung);
        if (referenz) {
            q.anteil = q.e / referenz->e;
            q.klasse = Feldstaerke::klasse(*q.anteil);
        }
        punkte.push_back(q);
    }
    return punkte;
}

std::optional<double> prozent(std::optional<double> anteil) {
    if (!anteil) return std::nullopt;
    return *anteil * 100.0;
}

void textAusgeben(const Modell& m, const NECErgebnis& e, const std::vector<Punkt>& punkte, const Optionen& o,
                  double mhz) {
    std::cout << "Modell: " << m.name << '\n';
    std::cout << fmt::sprintf("Kern: %s, %.2f s\n", e.kern, e.dauer);
    std::cout << Feldstaerke::legende(o.leistung, o.hoehe, mhz) << '\n';
    if (const auto r = Feldstaerke::icnirp(mhz))
        std::cout << fmt::sprintf("Referenz: %.4g V/m, %.4g A/m\n", r->e, r->h);
    else
        std::cout << "Referenz: für diese Frequenz keine\n";
    std::cout << fmt::sprintf("\n%9s %9s %12s %12s %9s  %s\n", "x (m)", "y (m)", "E (V/m)", "H (A/m)",
                              "E/Ref", "Klasse");
    for (const auto& p : punkte)
        std::cout << fmt::sprintf("%9.2f %9.2f %12s %12s %9s  %s\n", p.x, p.y, Ausgabe::wert(p.e, "%.4g", ""),
                                  Ausgabe::wert(p.h, "%.4g", ""),
                                  Ausgabe::wert(prozent(p.anteil), "%.1f", " %"),
                                  p.klasse ? Feldstaerke::name(*p.klasse) : "–");
    std::cout << '\n' << Feldstaerke::erklaerung << '\n';
}

nlohmann::ordered_json jsonAus(const Modell& m, const NECErgebnis& e, const FrequenzErgebnis& f,
                               const std::vector<Punkt>& punkte, const Optionen& o, int n) {
    nlohmann::ordered_json j;
    j["modell"] = m.name;
    j["kern"] = o.kern;
    j["dauer"] = Ausgabe::jsonZahl(e.dauer);
    j["mhz"] = Ausgabe::jsonZahl(f.mhz);
    j["pNEC"] = Ausgabe::jsonZahl(f.leistungEingang);
    j["leistung"] = o.leistung;
    j["hoehe"] = o.hoehe;
    j["halb"] = o.halb;
    j["n"] = n;
    const auto r = Feldstaerke::icnirp(f.mhz);
    j["referenz"] = r ? nlohmann::ordered_json{{"e", r->e}, {"h", r->h}} : nlohmann::ordered_json(nullptr);
    j["legende"] = Feldstaerke::legende(o.leistung, o.hoehe, f.mhz);
    j["punkte"] = nlohmann::ordered_json::array();
    for (const auto& p : punkte)
        j["punkte"].push_back({{"x", p.x},
                               {"y", p.y},
                               {"z", p.z},
                               {"e", Ausgabe::jsonZahl(p.e)},
                               {"h", Ausgabe::jsonZahl(p.h)},
                               {"anteil", Ausgabe::jsonZahl(p.anteil)},
                               {"klasse", p.klasse ? nlohmann::ordered_json(Feldstaerke::name(*p.klasse))
                                                   : nlohmann::ordered_json(nullptr)}});
    j["erklaerung"] = Feldstaerke::erklaerung;
    return j;
}

int feld(const Optionen& o) {
    pruefen(o);
    const auto kern = kernWaehlen(o.kern);
    const auto modell = o.wahl.laden();
    // Wie in der Anwendung: 3 bis 61 Punkte je Seite.
    const int n = std::clamp(o.punkte, 3, 61);
    const double mhz = modell.frequenzen().start;
    const auto ergebnis =
        kern->rechnen(Feldstaerke::deck(modell, mhz, o.hoehe, 0, 0, o.halb, n), stoppzeichen());
    if (ergebnis.frequenzen.empty() || !ergebnis.frequenzen.front().leistungEingang ||
        ergebnis.frequenzen.front().nahfeldE.empty())
        throw std::runtime_error("Der Kern hat keine Nahfelder geliefert");
    const auto& f = ergebnis.frequenzen.front();
    const auto punkte = punkteAus(f, o.leistung);
    if (o.json)
        std::cout << jsonAus(modell, ergebnis, f, punkte, o, n).dump(2) << '\n';
    else
        textAusgeben(modell, ergebnis, punkte, o, f.mhz);
    return erfolg;
}

} // namespace

void feldAnmelden(CLI::App& app) {
    auto* befehl = app.add_subcommand("feld", "Feldstärke auf einer Ebene um die Antenne (ICNIRP-Vergleich)");
    auto o = std::make_shared<Optionen>();
    o->wahl.anmelden(befehl);
    befehl->add_option("--kern", o->kern, "Kennung des Rechenkerns (Vorgabe: nec2c)");
    befehl->add_option("--leistung", o->leistung, "Sendeleistung in W (Vorgabe: 100)");
    befehl->add_option("--hoehe", o->hoehe, "Höhe der Ebene in m (Vorgabe: 2)");
    befehl->add_option("--halb", o->halb, "Halbe Seitenlänge des Quadrats in m, Mitte 0,0 (Vorgabe: 15)");
    befehl->add_option("--punkte", o->punkte, "Punkte je Seite, 3 bis 61 (Vorgabe: 31)");
    befehl->add_flag("--json", o->json, "Ergebnis als JSON-Objekt");
    befehl->callback([o] { ausfuehren([&] { return feld(*o); }); });
}

} // namespace Befehle
