// Befunde nach dem Rechnen: Segmentlängen, Radien, Längensprünge, Boden.
#include "NECKern/Modellpruefung.hpp"

#include <cmath>
#include <fmt/format.h>
#include <fmt/printf.h>
#include <numbers>

namespace NECKern::Modellpruefung {

namespace {

constexpr double lichtgeschwindigkeit = 299.792458; // m · MHz

// Grösster und kleinster Wert; ein späterer ersetzt nur, wenn er echt grösser bzw. kleiner ist.
template <typename F> double groesster(std::span<const Segment> s, F wert) {
    double m = wert(s.front());
    for (const auto& seg : s.subspan(1))
        if (wert(seg) > m) m = wert(seg);
    return m;
}
template <typename F> double kleinster(std::span<const Segment> s, F wert) {
    double m = wert(s.front());
    for (const auto& seg : s.subspan(1))
        if (wert(seg) < m) m = wert(seg);
    return m;
}

void laengePruefen(std::span<const Segment> s, double lambda, std::vector<Befund>& befunde) {
    const double m = groesster(s, [](const Segment& g) { return g.laenge; }) / lambda;
    if (m > 0.1)
        befunde.push_back({Stufe::fehler, fmt::sprintf("Segment bis %.3f λ lang – NEC verlangt unter 0,1 λ "
                                                       "(besser unter 0,05 λ). Mehr Segmente.",
                                                       m)});
    else if (m > 0.05)
        befunde.push_back(
            {Stufe::warnung, fmt::sprintf("Längstes Segment %.3f λ – für genaue Impedanzen unter "
                                          "0,05 λ bleiben.",
                                          m)});

    const double k = kleinster(s, [](const Segment& g) { return g.laenge; }) / lambda;
    if (k < 0.001)
        befunde.push_back({Stufe::warnung, fmt::sprintf("Kürzestes Segment %.5f λ – unter 0,001 λ wird NEC "
                                                        "numerisch ungenau.",
                                                        k)});
}

// Nur Segmente mit Radius > 0 zählen; ohne solche kein Befund.
void verhaeltnisPruefen(std::span<const Segment> s, std::vector<Befund>& befunde) {
    std::optional<double> q;
    for (const auto& g : s) {
        if (!(g.radius > 0)) continue;
        const double v = g.laenge / g.radius;
        if (!q || v < *q) q = v;
    }
    if (!q) return;
    if (*q < 2)
        befunde.push_back({Stufe::fehler, fmt::sprintf("Segmentlänge nur %.1f × Radius – Dünndraht-Näherung "
                                                       "ungültig (mindestens 2, besser über 8).",
                                                       *q)});
    else if (*q < 8)
        befunde.push_back({Stufe::warnung,
                           fmt::sprintf("Segmentlänge %.1f × Radius – unter 8 weicht die Impedanz ab.", *q)});
}

void radiusPruefen(std::span<const Segment> s, double lambda, std::vector<Befund>& befunde) {
    const double r = groesster(s, [](const Segment& g) { return g.radius; }) / lambda;
    if (r > 0.01)
        befunde.push_back({Stufe::warnung, fmt::sprintf("Drahtradius %.4f λ – über 0,01 λ ist das "
                                                        "Dünndrahtmodell grob.",
                                                        r)});
    else if (r > 0.002)
        befunde.push_back(
            {Stufe::hinweis, fmt::sprintf("Dicker Draht (%.4f λ): verschiedene Rechenkerne weichen "
                                          "beim Blindanteil um einige Ω ab – Ergebnis mit einem "
                                          "zweiten Kern vergleichen.",
                                          r)});
}

void sprungPruefen(std::span<const Segment> s, std::vector<Befund>& befunde) {
    const double r = laengenSprung(s);
    if (r > 5)
        befunde.push_back(
            {Stufe::warnung, fmt::sprintf("An einer Verbindung sind Segmente %.1f-mal so lang wie "
                                          "ihr Nachbar – höchstens etwa 5, besser gleich lang.",
                                          r)});
}

} // namespace

std::vector<Befund> pruefen(std::span<const Segment> segmente, double mhz) {
    if (segmente.empty() || !(mhz > 0)) return {};
    const double lambda = lichtgeschwindigkeit / mhz;
    std::vector<Befund> befunde;
    laengePruefen(segmente, lambda, befunde);
    verhaeltnisPruefen(segmente, befunde);
    radiusPruefen(segmente, lambda, befunde);
    sprungPruefen(segmente, befunde);
    for (auto& b : verbindungenPruefen(segmente))
        befunde.push_back(std::move(b));
    return befunde;
}

std::vector<Befund> bodenPruefen(std::span<const Segment> segmente, bool mitBoden) {
    if (!mitBoden) return {};
    std::size_t darunter = 0;
    for (const auto& s : segmente) {
        const double h = s.laenge / 2;
        const double dz = h * std::sin(s.alpha * std::numbers::pi / 180.0);
        if (std::min(s.z - dz, s.z + dz) < -1e-6) ++darunter;
    }
    if (darunter == 0) return {};
    return {{Stufe::fehler, fmt::format("{} Segment(e) liegen unter der Erdoberfläche (z < 0) – über Boden "
                                        "nicht zulässig.",
                                        darunter)}};
}

} // namespace NECKern::Modellpruefung
