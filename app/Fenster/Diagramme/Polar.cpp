#include "Fenster/Diagramme/Polar.hpp"

#include "Fenster/Diagramme/Zahltext.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace Polar {

namespace {

constexpr double gleich = 1e-6;

double normiert(double winkel) {
    double w = std::fmod(winkel, 360.0);
    if (w < 0) w += 360.0;
    return w >= 360.0 ? 0.0 : w;
}

// Kürzester Abstand zweier Azimute, 0…180.
double abstand(double a, double b) {
    double d = normiert(a - b);
    return d > 180.0 ? 360.0 - d : d;
}

// Schrittweite vom Punkt i zum nächsten in Zeichenreihenfolge.
double schritt(const std::vector<Punkt>& p, std::size_t i) {
    return normiert(p[(i + 1) % p.size()].winkel - p[i].winkel);
}

std::vector<Punkt> azimutPunkte(const NECKern::FrequenzErgebnis& f, const NECKern::Richtung& max) {
    std::vector<Punkt> punkte;
    for (const auto& r : f.diagramm)
        if (std::fabs(r.theta - max.theta) < gleich) punkte.push_back({normiert(r.phi), r.gesamt});
    return punkte;
}

// Vorn (Azimut des Maximums) steht die Elevation 90° − θ, hinten (Gegenazimut) 90° + θ.
std::vector<Punkt> elevationPunkte(const NECKern::FrequenzErgebnis& f, const NECKern::Richtung& max) {
    std::vector<Punkt> punkte;
    for (const auto& r : f.diagramm) {
        if (f.mitBoden && !(r.theta <= 90.0001)) continue;
        if (abstand(r.phi, max.phi) < gleich)
            punkte.push_back({normiert(90.0 - r.theta), r.gesamt});
        else if (abstand(r.phi, max.phi + 180.0) < gleich)
            punkte.push_back({normiert(90.0 + r.theta), r.gesamt});
    }
    return punkte;
}

// Ordnet nach Winkel, streicht doppelte Winkel (0° und 360°, der Zenit vorn und
// hinten) und beginnt nach der grössten Lücke, wenn der Schnitt nicht rundum geht.
void ordnen(Schnittdaten& s) {
    auto& p = s.punkte;
    std::stable_sort(p.begin(), p.end(), [](const Punkt& a, const Punkt& b) { return a.winkel < b.winkel; });
    p.erase(std::unique(p.begin(), p.end(),
                        [](const Punkt& a, const Punkt& b) { return b.winkel - a.winkel < gleich; }),
            p.end());
    if (p.size() > 1 && 360.0 - p.back().winkel + p.front().winkel < gleich) p.pop_back();
    if (p.size() < 3) return;
    std::size_t luecke = 0;
    double groesste = 0, kleinste = 360.0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const double d = schritt(p, i);
        kleinste = std::min(kleinste, d);
        if (d > groesste) {
            groesste = d;
            luecke = i;
        }
    }
    s.geschlossen = groesste <= 1.5 * kleinste;
    if (!s.geschlossen) std::rotate(p.begin(), p.begin() + static_cast<std::ptrdiff_t>(luecke + 1), p.end());
}

std::string grad(double winkel) {
    return Zahltext::text("%g", std::round(winkel * 10.0) / 10.0) + "°";
}

// Winkelweg vom grössten Wert bis unter −3 dB in einer Richtung (+1 oder −1).
std::optional<double> halbseite(const Schnittdaten& s, std::size_t start, int richtung) {
    const auto& p = s.punkte;
    const std::size_t n = p.size();
    const double grenze = p[start].gewinn - 3.0;
    double weg = 0;
    std::size_t vorher = start;
    for (std::size_t k = 1; k < n; ++k) {
        const auto index = static_cast<std::ptrdiff_t>(start) + richtung * static_cast<std::ptrdiff_t>(k);
        if (!s.geschlossen && (index < 0 || index >= static_cast<std::ptrdiff_t>(n))) return std::nullopt;
        const auto i = static_cast<std::size_t>(
            (index % static_cast<std::ptrdiff_t>(n) + static_cast<std::ptrdiff_t>(n)) %
            static_cast<std::ptrdiff_t>(n));
        const double d = richtung > 0 ? schritt(p, vorher) : schritt(p, i);
        if (p[i].gewinn <= grenze) {
            const double t = (p[vorher].gewinn - grenze) / (p[vorher].gewinn - p[i].gewinn);
            return weg + t * d;
        }
        weg += d;
        vorher = i;
    }
    return std::nullopt;
}

} // namespace

std::optional<Schnittdaten> schnitt(const NECKern::FrequenzErgebnis& f, Schnitt art) {
    const auto max = f.maxGewinn();
    if (!max) return std::nullopt;
    Schnittdaten s;
    s.art = art;
    if (art == Schnitt::azimut) {
        s.fest = 90.0 - max->theta;
        s.punkte = azimutPunkte(f, *max);
    } else {
        s.fest = normiert(max->phi);
        s.punkte = elevationPunkte(f, *max);
    }
    ordnen(s);
    if (s.punkte.size() < 2) return std::nullopt;
    return s;
}

std::string fehlt(const NECKern::FrequenzErgebnis& f, Schnitt art) {
    if (f.diagramm.empty()) return "Das Ergebnis enthält kein Richtdiagramm; eine RP-Karte verlangt es.";
    const auto max = f.maxGewinn();
    if (!max) return "Das Richtdiagramm enthält keine Richtung über dem Boden.";
    if (art == Schnitt::azimut)
        return "Das Richtdiagramm enthält keinen Azimutschnitt bei Elevation " + grad(90.0 - max->theta) +
               ".";
    return "Das Richtdiagramm enthält keinen Elevationsschnitt bei Azimut " + grad(normiert(max->phi)) + ".";
}

std::string titel(const Schnittdaten& s) {
    if (s.art == Schnitt::azimut) return "Azimut bei Elevation " + grad(s.fest);
    return "Elevation bei Azimut " + grad(s.fest);
}

double radius(double gewinn, double maximum, double boden, double obergrenze) {
    if (!(boden > 0)) return 0;
    const double t = (gewinn - (maximum - boden)) / boden;
    if (!(t > 0)) return 0;
    return std::min(t, obergrenze);
}

std::optional<double> oeffnungswinkel(const Schnittdaten& s) {
    if (s.punkte.size() < 2) return std::nullopt;
    const auto max = std::max_element(s.punkte.begin(), s.punkte.end(),
                                      [](const Punkt& a, const Punkt& b) { return a.gewinn < b.gewinn; });
    const auto start = static_cast<std::size_t>(max - s.punkte.begin());
    const auto rechts = halbseite(s, start, +1);
    const auto links = halbseite(s, start, -1);
    if (!rechts || !links) return std::nullopt;
    return *rechts + *links;
}

std::string winkeltext(Schnitt art, double winkel) {
    const double w = normiert(winkel);
    if (art == Schnitt::azimut) return grad(w);
    if (w <= 90.0) return grad(w);
    if (w <= 270.0) return grad(180.0 - w);
    return grad(w - 360.0);
}

double strahlSchritt(double radius, double textbreite) {
    // Die Zahlen stehen mindestens 6 px vor dem Aussenring; gemessen wird die Sehne
    // zwischen zwei Nachbarn.
    for (const double schritt : {30.0, 45.0})
        if (2.0 * (radius + 6.0) * std::sin(schritt * std::numbers::pi / 360.0) >= textbreite + 4.0)
            return schritt;
    return 90.0;
}

int ringzahlSchritt(double ringabstand, double texthoehe) {
    constexpr int hoechstens = 1000;
    if (!(ringabstand > 0)) return hoechstens;
    return static_cast<int>(std::clamp(std::ceil(texthoehe / ringabstand), 1.0, double(hoechstens)));
}

} // namespace Polar
