#include "NECKern/Ergebnis.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace NECKern {

namespace {

constexpr double grad = std::numbers::pi / 180.0;

// Abstand zweier Azimute auf dem Kreis, −180…180.
double winkelAbstand(double x) {
    double r = std::fmod(x, 360.0);
    if (r > 180.0) r -= 360.0;
    if (r < -180.0) r += 360.0;
    return r;
}

// Ein NaN gewinnt nie gegen eine echte Zahl, sonst zählt nur „echt grösser“.
bool groesser(double kandidat, double bisher) {
    if (std::isnan(bisher)) return !std::isnan(kandidat);
    return kandidat > bisher;
}

} // namespace

double Komplex::betrag() const {
    return std::hypot(re, im);
}

double Komplex::phaseGrad() const {
    return std::atan2(im, re) / grad;
}

std::pair<Punkt3, Punkt3> Segment::enden() const {
    const double a = alpha * grad;
    const double b = beta * grad;
    const double h = laenge / 2.0;
    const Punkt3 d{h * std::cos(a) * std::cos(b), h * std::cos(a) * std::sin(b), h * std::sin(a)};
    return {Punkt3{x - d[0], y - d[1], z - d[2]}, Punkt3{x + d[0], y + d[1], z + d[2]}};
}

double Nahfeldpunkt::gesamt() const {
    double summe = 0;
    for (double b : betrag)
        summe += b * b;
    return std::sqrt(summe);
}

double Nahfeldpunkt::effektiv() const {
    return gesamt() / std::numbers::sqrt2;
}

std::optional<Quelle> FrequenzErgebnis::speisung() const {
    if (quellen.empty()) return std::nullopt;
    return quellen.front();
}

std::optional<std::int64_t> FrequenzErgebnis::speiseSegment() const {
    if (speiseSegmentGeometrie) return speiseSegmentGeometrie;
    if (quellen.empty()) return std::nullopt;
    return quellen.front().segment;
}

std::optional<double> FrequenzErgebnis::swr(double z0) const {
    if (!impedanz) return std::nullopt;
    const Komplex z = *impedanz;
    const double gamma = std::hypot(z.re - z0, z.im) / std::max(std::hypot(z.re + z0, z.im), 1e-12);
    if (gamma >= 1.0) return HUGE_VAL;
    return (1.0 + gamma) / (1.0 - gamma);
}

std::optional<Richtung> FrequenzErgebnis::maxGewinn() const {
    const Richtung* beste = nullptr;
    for (const auto& r : diagramm) {
        if (mitBoden && !(r.theta <= 90.0001)) continue;
        if (!beste || groesser(r.gesamt, beste->gesamt)) beste = &r;
    }
    if (!beste) return std::nullopt;
    return *beste;
}

std::optional<double> FrequenzErgebnis::vorRueck() const {
    const auto vorn = maxGewinn();
    if (!vorn) return std::nullopt;
    const double rueckAzimut = std::fmod(vorn->phi + 180.0, 360.0);
    const Richtung* gewaehlt = nullptr;
    double abstand = 0;
    for (const auto& r : diagramm) {
        if (!(std::fabs(r.theta - vorn->theta) < 1e-6)) continue;
        const double a = std::fabs(winkelAbstand(r.phi - rueckAzimut));
        if (!gewaehlt || a < abstand) {
            gewaehlt = &r;
            abstand = a;
        }
    }
    if (!gewaehlt) return std::nullopt;
    return vorn->gesamt - gewaehlt->gesamt;
}

} // namespace NECKern
