// Prüfungen über Paare von Segmenten: Längensprung an Verbindungen und Drahtenden,
// die auf einem anderen Draht liegen, ohne dort verbunden zu sein.
//
// Gemeint ist jeweils der Vergleich aller Paare; gerechnet wird über ein Raster
// (Raster.hpp), das kein Paar in Reichweite verliert, und entschieden wird mit
// genau demselben Gleitkommaausdruck wie beim Vergleich aller Paare. Die
// Reichweiten sind so gewählt, dass jedes Paar, das dieser Ausdruck als nah
// erkennt, sich im Raster berührt: |dx| ≤ Abstand bis auf Rundung, dazu ein
// relativer Zuschlag von 1e-6 und eine Untergrenze gegen Unterlauf von dx².
// Was das Raster nicht fassen kann (nicht endliche Werte, riesige Quader), wird
// ohne Raster gegen alle geprüft. Wo die Reihenfolge zählt (erstes Segment eines
// freien Endes), gehen die Segmente in Listenfolge durch.
#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Raster.hpp"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace NECKern::Modellpruefung {

namespace {

using Enden = std::pair<Punkt3, Punkt3>;

constexpr double zuschlag = 1.000001;
constexpr double mindestReichweite = 1e-140; // deckt |dx| < 2^-511 ab, wo dx² unterläuft
constexpr double mindestGrenze = 0.0002;     // Abstandsgrenze freier Enden in m

double abstand(const Punkt3& a, const Punkt3& b) {
    const double dx = a[0] - b[0], dy = a[1] - b[1], dz = a[2] - b[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

// Abstand eines Punkts von der Strecke a–b: Lotfusspunkt, Parameter auf 0…1 begrenzt.
double abstandZurStrecke(const Punkt3& p, const Enden& e) {
    const auto& [a, b] = e;
    const Punkt3 v{b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const Punkt3 w{p[0] - a[0], p[1] - a[1], p[2] - a[2]};
    const double vv = v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
    const double wv = w[0] * v[0] + w[1] * v[1] + w[2] * v[2];
    const double t = vv > 0 ? std::clamp(wv / vv, 0.0, 1.0) : 0.0;
    return abstand(p, Punkt3{a[0] + t * v[0], a[1] + t * v[1], a[2] + t * v[2]});
}

bool endlich(const Punkt3& p) {
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

Punkt3 verschoben(const Punkt3& p, double d) {
    return {p[0] + d, p[1] + d, p[2] + d};
}

std::vector<Enden> alleEnden(std::span<const Segment> s) {
    std::vector<Enden> e;
    e.reserve(s.size());
    for (const auto& g : s)
        e.push_back(g.enden());
    return e;
}

// ---- Längensprung ----

// Ein Paar berührt sich, wenn zwei Enden näher als 1 % des kürzeren Segments liegen.
bool beruehren(const Segment& a, const Enden& ea, const Segment& b, const Enden& eb) {
    const double t = 0.01 * std::min(a.laenge, b.laenge);
    return abstand(ea.first, eb.first) < t || abstand(ea.second, eb.second) < t ||
           abstand(ea.second, eb.first) < t || abstand(ea.first, eb.second) < t;
}

void sprungNehmen(const Segment& a, const Enden& ea, const Segment& b, const Enden& eb, double& groesstes) {
    if (a.nummer == b.nummer || !beruehren(a, ea, b, eb)) return;
    const double v = std::max(a.laenge, b.laenge) / std::min(a.laenge, b.laenge);
    if (v > groesstes) groesstes = v;
}

// Toleranz t ≤ 0,01·L jedes der beiden Segmente; die Reichweite eines Endes deckt sie ab.
double sprungReichweite(const Segment& s) {
    return std::max(0.01 * s.laenge * zuschlag, mindestReichweite);
}

// Nur Segmente positiver Länge berühren etwas (sonst ist t ≤ 0 oder NaN), und nur
// mit endlichen Enden (sonst ist der Abstand ∞ oder NaN). Eine unendliche Länge
// macht beide Enden unendlich.
bool kannBeruehren(const Segment& s) {
    return s.laenge > 0 && std::isfinite(s.laenge);
}

constexpr std::size_t keine = static_cast<std::size_t>(-1);

} // namespace

double laengenSprung(std::span<const Segment> s) {
    const auto enden = alleEnden(s);
    const auto punkt = [&](std::size_t ende) -> const Punkt3& {
        return ende % 2 == 0 ? enden[ende / 2].first : enden[ende / 2].second;
    };

    // Enden nach Stufen ihrer Reichweite r ∈ [2^k, 2^(k+1)), je Stufe ein Raster mit
    // Zellen von 8·2^k: eine Abfrage trifft höchstens zwei Zellen je Achse, und lange
    // Segmente machen die Zellen der kurzen nicht voll.
    std::vector<int> stufen;
    for (const auto& g : s)
        if (kannBeruehren(g)) stufen.push_back(std::ilogb(sprungReichweite(g)));
    std::sort(stufen.begin(), stufen.end());
    stufen.erase(std::unique(stufen.begin(), stufen.end()), stufen.end());
    std::vector<std::size_t> stufeVon(s.size(), keine); // Platz in stufen
    for (std::size_t i = 0; i < s.size(); ++i)
        if (kannBeruehren(s[i])) {
            const int k = std::ilogb(sprungReichweite(s[i]));
            stufeVon[i] =
                static_cast<std::size_t>(std::lower_bound(stufen.begin(), stufen.end(), k) - stufen.begin());
        }
    std::vector<Raster> raster;
    for (int k : stufen)
        raster.emplace_back(std::ldexp(8.0, k));
    for (std::size_t e = 0; e < 2 * s.size(); ++e)
        if (stufeVon[e / 2] != keine && endlich(punkt(e))) // ein endlicher Punkt passt immer in eine Zelle
            raster[stufeVon[e / 2]].eintragen(static_cast<std::uint32_t>(e), punkt(e), punkt(e));
    for (auto& r : raster)
        r.fertig();

    // Berühren und Verhältnis sind symmetrisch (fl(x − y) = −fl(y − x)), also genügt
    // jedes ungeordnete Paar einmal. Gesucht wird vom Segment mit der kleineren Stufe
    // aus (bei gleicher Stufe vom vorderen): seine Reichweite deckt t ≤ 0,01·L ab.
    double groesstes = 1;
    std::vector<std::uint32_t> treffer;
    for (std::size_t e = 0; e < 2 * s.size(); ++e) {
        const std::size_t i = e / 2;
        if (stufeVon[i] == keine || !endlich(punkt(e))) continue;
        const double r = sprungReichweite(s[i]);
        for (std::size_t m = stufeVon[i]; m < raster.size(); ++m) {
            const auto partner = [&](std::size_t j) {
                return stufeVon[j] == m && (m > stufeVon[i] || j > i);
            };
            treffer.clear();
            if (raster[m].abfragen(verschoben(punkt(e), -r), verschoben(punkt(e), r), treffer)) {
                for (auto f : treffer)
                    if (partner(f / 2)) sprungNehmen(s[i], enden[i], s[f / 2], enden[f / 2], groesstes);
            } else {
                for (std::size_t j = 0; j < s.size(); ++j)
                    if (partner(j)) sprungNehmen(s[i], enden[i], s[j], enden[j], groesstes);
            }
        }
    }
    return groesstes;
}

namespace {

// ---- Freie Enden ----

struct FreiesEnde {
    std::size_t segment;
    Punkt3 punkt;
};

std::vector<FreiesEnde> freieEnden(std::span<const Segment> s, const std::vector<Enden>& enden) {
    std::vector<FreiesEnde> frei;
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (s[i].vorher == 0) frei.push_back({i, enden[i].first});
        if (s[i].nachher == 0) frei.push_back({i, enden[i].second});
    }
    return frei;
}

// Nummern, die sich um weniger als 2 unterscheiden, ohne Überlauf.
bool direkteNachbarn(std::int64_t a, std::int64_t b) {
    const auto ua = static_cast<std::uint64_t>(a), ub = static_cast<std::uint64_t>(b);
    return (a > b ? ua - ub : ub - ua) < 2;
}

bool liegtAuf(const Segment& frei, const Punkt3& p, const Segment& g, const Enden& e) {
    if (g.tag == frei.tag && direkteNachbarn(g.nummer, frei.nummer)) return false;
    if (g.laenge == 0) return false;
    double grenze = frei.radius + g.radius;
    if (grenze < mindestGrenze) grenze = mindestGrenze;
    return abstandZurStrecke(p, e) < grenze;
}

double positiv(double r) {
    return r > 0 ? r : 0;
}

// Die Grenze ist höchstens r⁺(Ende) + r⁺(Segment) + 0,0002; sie teilt sich auf die
// Quader von Segment und Ende auf.
double endeReichweite(const Segment& s) {
    return (positiv(s.radius) + mindestGrenze) * zuschlag;
}
double segmentReichweite(const Segment& s) {
    return positiv(s.radius) * zuschlag;
}

// Zwei typische Segmente je Zelle; nie kleiner als die Reichweite eines dünnen Endes.
double ausdehnung(const Enden& e) {
    const auto& [a, b] = e;
    return std::max({std::fabs(b[0] - a[0]), std::fabs(b[1] - a[1]), std::fabs(b[2] - a[2])});
}

double zellgroesse(const std::vector<Enden>& enden) {
    std::vector<double> laengen;
    for (const auto& e : enden)
        if (const double a = ausdehnung(e); std::isfinite(a)) laengen.push_back(a);
    double median = 0;
    if (!laengen.empty()) {
        auto mitte = laengen.begin() + static_cast<std::ptrdiff_t>(laengen.size() / 2);
        std::nth_element(laengen.begin(), mitte, laengen.end());
        median = *mitte;
    }
    return std::max(2 * median, 4 * mindestGrenze);
}

// Fragt ein Segment in Stücken von höchstens einer Zellbreite ab, jedes Stück als
// Quader um die Punkte a + t·v an seinen Enden – derselbe Ausdruck wie beim
// Lotfusspunkt und monoton in t, also liegt jeder Lotfusspunkt in einem der Quader.
// false: das Raster kann das Segment nicht fassen.
bool segmentAbfragen(const Raster& raster, double zelle, const Segment& g, const Enden& e,
                     std::vector<std::uint32_t>& treffer) {
    const double r = segmentReichweite(g);
    const double a = ausdehnung(e);
    if (!std::isfinite(r) || !std::isfinite(a)) return false;
    const double stuecke = std::max(1.0, std::ceil(a / zelle));
    if (stuecke > 4096) return false;
    const auto n = static_cast<int>(stuecke);
    const auto& p = e.first;
    const Punkt3 v{e.second[0] - p[0], e.second[1] - p[1], e.second[2] - p[2]};
    const auto ort = [&](double t) { return Punkt3{p[0] + t * v[0], p[1] + t * v[1], p[2] + t * v[2]}; };
    for (int k = 0; k < n; ++k) {
        const auto von = ort(static_cast<double>(k) / n), bis = ort(static_cast<double>(k + 1) / n);
        Punkt3 unten, oben;
        for (int i = 0; i < 3; ++i) {
            unten[i] = std::min(von[i], bis[i]) - r;
            oben[i] = std::max(von[i], bis[i]) + r;
        }
        if (!raster.abfragen(unten, oben, treffer)) return false;
    }
    return true;
}

// Für jedes freie Ende das erste Segment in Listenfolge, auf dem es liegt (sonst keine).
std::vector<std::size_t> ersteSegmente(std::span<const Segment> s, const std::vector<Enden>& enden,
                                       const std::vector<FreiesEnde>& frei) {
    std::vector<std::size_t> erstes(frei.size(), keine);
    const auto passt = [&](std::size_t f, std::size_t j) {
        return liegtAuf(s[frei[f].segment], frei[f].punkt, s[j], enden[j]);
    };

    // Die freien Enden kommen ins Raster; was es nicht fassen kann, wird über alle Segmente geprüft.
    const double zelle = zellgroesse(enden);
    Raster raster(zelle);
    std::vector<std::uint32_t> imRaster;
    for (std::size_t f = 0; f < frei.size(); ++f) {
        const auto& p = frei[f].punkt;
        const double r = endeReichweite(s[frei[f].segment]);
        const bool gefasst =
            endlich(p) && std::isfinite(r) &&
            raster.eintragen(static_cast<std::uint32_t>(f), verschoben(p, -r), verschoben(p, r));
        if (gefasst) {
            imRaster.push_back(static_cast<std::uint32_t>(f));
            continue;
        }
        for (std::size_t j = 0; j < s.size() && erstes[f] == keine; ++j)
            if (passt(f, j)) erstes[f] = j;
    }
    raster.fertig();

    // Segmente in Listenfolge: das erste Segment, das ein Ende findet, ist sein erstes.
    std::size_t offen = imRaster.size();
    std::vector<std::uint32_t> treffer;
    for (std::size_t j = 0; j < s.size() && offen > 0; ++j) {
        // Länge 0 wird übersprungen; nicht endliche Enden liegen nie näher als die Grenze.
        if (s[j].laenge == 0 || !endlich(enden[j].first) || !endlich(enden[j].second)) continue;
        treffer.clear();
        if (!segmentAbfragen(raster, zelle, s[j], enden[j], treffer)) treffer = imRaster;
        for (auto f : treffer)
            if (erstes[f] == keine && passt(f, j)) {
                erstes[f] = j;
                --offen;
            }
    }
    return erstes;
}

} // namespace

std::vector<Befund> verbindungenPruefen(std::span<const Segment> s) {
    const auto enden = alleEnden(s);
    const auto frei = freieEnden(s, enden);
    if (frei.empty()) return {};

    const auto erstes = ersteSegmente(s, enden, frei);
    std::optional<std::pair<std::int64_t, std::int64_t>> erste; // Tag A, Tag B
    std::int64_t stellen = 0;
    for (std::size_t f = 0; f < frei.size(); ++f) {
        if (erstes[f] == keine) continue;
        if (!erste) erste = {s[frei[f].segment].tag, s[erstes[f]].tag};
        ++stellen;
    }
    if (!erste) return {};
    return {{Stufe::fehler,
             fmt::format("Draht {} endet auf Draht {}, ist dort aber nicht verbunden ({} Stelle(n)) "
                         "– NEC verbindet nur an Segmentenden. Segmentzahl so wählen, dass am "
                         "Anschlusspunkt ein Segmentende liegt.",
                         erste->first, erste->second, stellen)}};
}

} // namespace NECKern::Modellpruefung
