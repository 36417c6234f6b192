#include "NECKern/Guetetest.hpp"

#include "NECKern/Ausdruck.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

namespace NECKern::Guetetest {

namespace {

constexpr double grad = std::numbers::pi / 180.0;

bool entfaellt(const std::string& typ) {
    return typ == "RP" || typ == "NE" || typ == "NH" || typ == "XQ" || typ == "FR" || typ == "EN" ||
           typ == "LD";
}

// Verlangt die GN-Karte freien Raum (Typ −1)? Ausgewertet wie im Rechendeck,
// damit auch eine Formel im Typfeld zählt.
bool freierRaum(const Karte& gn, const Werte& werte) {
    const std::string_view typ = gn.ganz.empty() || gn.ganz[0].empty() ? "0" : std::string_view(gn.ganz[0]);
    return std::round(Ausdruck::auswerten(typ, werte)) == -1.0;
}

// Liegt das tiefste Segmentende unter der Bodenebene? Als berührend gilt es
// näher an z = 0 als 1 % seiner Segmentlänge, mindestens 1e-6 m.
bool reichtUnterBoden(const std::vector<Segment>& segmente) {
    const Segment* tiefstes = nullptr;
    double zTief = 0;
    for (const auto& s : segmente) {
        const auto [anfang, ende] = s.enden();
        const double z = std::min(anfang[2], ende[2]);
        if (!tiefstes || z < zTief) {
            tiefstes = &s;
            zTief = z;
        }
    }
    if (!tiefstes) return false;
    const double toleranz = std::max(0.01 * tiefstes->laenge, 1e-6);
    return zTief <= -toleranz;
}

std::vector<double> verschiedene(std::vector<double> werte) {
    std::sort(werte.begin(), werte.end());
    werte.erase(std::unique(werte.begin(), werte.end()), werte.end());
    return werte;
}

} // namespace

std::optional<std::string> deck(const Modell& modell, double mhz, const std::vector<Segment>& segmente) {
    const auto werte = modell.variablenWerte();
    Modell kopie = modell;
    kopie.karten.clear();
    // NEC rechnet mit der jeweils letzten GN-Karte; das Diagramm steht am Ende.
    bool boden = false;
    for (const auto& k : modell.karten) {
        if (entfaellt(k.typ)) continue;
        if (k.typ != "GN") {
            kopie.karten.push_back(k);
            continue;
        }
        const bool frei = freierRaum(k, werte);
        boden = !frei;
        kopie.karten.push_back(frei ? k : Karte("GN", {"1", "0", "0", "0"}, {}));
    }
    // Über idealem Boden rechnet NEC Drähte unter der Erde ohne Meldung, aber falsch.
    if (boden && reichtUnterBoden(segmente)) return std::nullopt;

    // Über Boden strahlt nur der obere Halbraum: θ 0…90°, sonst die ganze Kugel.
    const std::string thetas = boden ? "19" : "37";
    kopie.karten.emplace_back("FR", std::vector<std::string>{"0", "1", "0", "0"},
                              std::vector<std::string>{Modell::zahl(mhz), "0"});
    kopie.karten.emplace_back("RP", std::vector<std::string>{"0", thetas, "72", "1000"},
                              std::vector<std::string>{"0", "0", "5", "5"});
    kopie.karten.emplace_back("EN", std::vector<std::string>{}, std::vector<std::string>{});
    return kopie.deck();
}

std::optional<double> mittlererGewinn(const std::vector<Richtung>& richtungen) {
    std::vector<double> t, p;
    for (const auto& r : richtungen) {
        if (!std::isfinite(r.theta) || !std::isfinite(r.phi)) return std::nullopt;
        t.push_back(r.theta);
        p.push_back(r.phi);
    }
    const auto thetas = verschiedene(std::move(t));
    const auto phis = verschiedene(std::move(p));
    if (thetas.size() < 3 || phis.size() < 3) return std::nullopt;

    const double phiMin = phis.front(), phiMax = phis.back();
    const double dPhi = (phiMax - phiMin) / static_cast<double>(phis.size() - 1);
    if (!(std::fabs(phiMax + dPhi - phiMin - 360.0) < 1e-6)) return std::nullopt;

    const double thetaMin = thetas.front(), thetaMax = thetas.back();
    const double dTheta = (thetaMax - thetaMin) / static_cast<double>(thetas.size() - 1) * grad;

    double summe = 0;
    for (const auto& r : richtungen) {
        // −999,99 dB ist NECs Zeichen für „keine Strahlung“.
        const double g = r.gesamt <= -900.0 ? 0.0 : std::pow(10.0, r.gesamt / 10.0);
        const double w = (r.theta == thetaMin || r.theta == thetaMax) ? 0.5 : 1.0;
        summe += dPhi * grad * dTheta * std::sin(r.theta * grad) * w * g;
    }
    return summe / (4.0 * std::numbers::pi);
}

} // namespace NECKern::Guetetest
