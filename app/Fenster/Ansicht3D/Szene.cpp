#include "Fenster/Ansicht3D/Szene.hpp"

#include "Fenster/Ansicht3D/Lasten.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace Raumbild {

namespace {

Vek3 vek(const NECKern::Punkt3& p) {
    return {p[0], p[1], p[2]};
}

std::vector<std::int64_t> speiseNummern(const NECKern::FrequenzErgebnis& ergebnis) {
    std::vector<std::int64_t> nummern;
    for (const auto& q : ergebnis.quellen)
        nummern.push_back(q.segment);
    if (auto s = ergebnis.speiseSegment()) nummern.push_back(*s);
    return nummern;
}

// Ströme je Volt der ersten Quelle, damit die Legende von der Speisespannung absieht.
double stromFaktor(const NECKern::FrequenzErgebnis& ergebnis) {
    auto quelle = ergebnis.speisung();
    if (!quelle) return 0;
    const double volt = quelle->spannung.betrag();
    return std::isfinite(volt) && volt > 0 ? 1.0 / volt : 0;
}

// Wo die Ströme fliessen, strahlt die Antenne: ein kurzer Hilfsdraht mit der Quelle
// abseits der Wendel soll den Körper nicht von ihr wegziehen.
std::optional<Vek3> stromSchwerpunkt(const std::vector<Drahtstueck>& stuecke) {
    Vek3 summe;
    double gewicht = 0;
    for (const auto& s : stuecke) {
        const double g = s.betrag * (s.ende - s.anfang).laenge();
        summe = summe + s.mitte * g;
        gewicht += g;
    }
    if (!(gewicht > 0) || !std::isfinite(gewicht)) return std::nullopt;
    const Vek3 mitte = summe * (1 / gewicht);
    return mitte.endlich() ? std::optional(mitte) : std::nullopt;
}

} // namespace

void Grenzen::dazu(const Vek3& p) {
    min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
    max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
}

std::vector<Vek3> Szene::passpunkte(bool mitKoerper) const {
    std::vector<Vek3> punkte;
    punkte.reserve(2 * stuecke.size());
    for (const auto& s : stuecke) {
        punkte.push_back(s.anfang);
        punkte.push_back(s.ende);
    }
    if (mitBoden && !grenzen.leer())
        for (double x : {grenzen.min.x, grenzen.max.x})
            for (double y : {grenzen.min.y, grenzen.max.y})
                punkte.push_back({x, y, 0});
    if (mitKoerper && netz.art == Diagrammnetz::Art::koerper)
        for (std::size_t i = 0; i < netz.punkte.size(); ++i)
            if (!std::isnan(netz.gewinn[i])) punkte.push_back(koerperPunkt(i));
    return punkte;
}

Szene szeneBauen(const NECKern::FrequenzErgebnis& ergebnis, std::string_view deck) {
    Szene szene;
    szene.mhz = ergebnis.mhz;
    szene.stroeme = ergebnis.stroemeGeliefert;
    szene.mitBoden = ergebnis.mitBoden;
    const double faktor = stromFaktor(ergebnis);
    szene.jeVolt = faktor > 0;

    const auto last = lasten(deck, ergebnis.segmente);
    const auto speisung = speiseNummern(ergebnis);
    std::map<std::int64_t, std::int64_t> zaehler;
    szene.stuecke.reserve(ergebnis.segmente.size());
    for (std::size_t i = 0; i < ergebnis.segmente.size(); ++i) {
        const auto& s = ergebnis.segmente[i];
        const auto imTag = ++zaehler[s.tag];
        const auto [a, b] = s.enden();
        Drahtstueck d;
        d.anfang = vek(a);
        d.ende = vek(b);
        d.mitte = {s.x, s.y, s.z};
        if (!d.anfang.endlich() || !d.ende.endlich()) continue;
        d.radius = std::isfinite(s.radius) ? std::fabs(s.radius) : 0;
        const double f = szene.jeVolt ? faktor : 1.0;
        d.strom = {s.strom.re * f, s.strom.im * f};
        d.betrag = d.strom.betrag();
        if (!std::isfinite(d.betrag)) {
            d.strom = {};
            d.betrag = 0;
        }
        d.tag = s.tag;
        d.nummer = s.nummer;
        d.imTag = imTag;
        d.speisung = std::find(speisung.begin(), speisung.end(), s.nummer) != speisung.end();
        d.last = last[i];
        szene.maxStrom = std::max(szene.maxStrom, d.betrag);
        szene.grenzen.dazu(d.anfang);
        szene.grenzen.dazu(d.ende);
        szene.stuecke.push_back(d);
    }

    szene.netz = diagrammnetz(ergebnis.diagramm);
    if (!szene.grenzen.leer()) {
        szene.koerperMitte = stromSchwerpunkt(szene.stuecke).value_or(szene.grenzen.mitte());
        const double radius = szene.grenzen.diagonale() / 2;
        szene.koerperRadius = std::isfinite(radius) ? std::max(radius, 1e-3) : 1.0;
    }
    return szene;
}

bool ganzAndereAntenne(const Grenzen& alt, const Grenzen& neu) {
    if (alt.leer() || neu.leer()) return true;
    const double a = std::max(alt.diagonale(), 1e-9);
    const double n = std::max(neu.diagonale(), 1e-9);
    if (n > 3 * a || a > 3 * n) return true;
    return (neu.mitte() - alt.mitte()).laenge() > std::max(a, n);
}

} // namespace Raumbild
