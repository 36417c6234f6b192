// Grösse und Lage vor dem Rechnen: was nec2c nie fertig rechnet oder hängen lässt,
// wird abgelehnt, bevor ein Kern startet; was nur lange dauert, bekommt einen Befund.
#include "NECKern/Feldwerte.hpp"
#include "NECKern/Geometrie.hpp"
#include "NECKern/Modellpruefung.hpp"

#include <algorithm>
#include <cmath>
#include <exception>
#include <fmt/format.h>

namespace NECKern::Modellpruefung {

namespace {

// nec2c 1.3 auf dem Entwicklungsrechner (AMD EPYC), eine Frequenz, ein gerader Draht,
// Rechenzeit des Prozesses: 1000 Segmente 0,52 s, 2000 5,8 s, 3000 18,3 s, 4000 44,0 s
// (256 MB). Ab 2000 Segmenten folgt das t ≈ c·N³ mit c ≈ 7e-10 s; N zählt die
// Unbekannten (ein Segment eins, ein Flächenstück zwei). 12 000 Unbekannte brauchten so
// etwa 20 min – das Vierfache der 5 min, nach denen jeder Lauf endet – und 2,3 GB für die
// Matrix; darüber wird nicht gerechnet. Auf dem voll ausgelasteten Rechner (Last 11 auf
// zwei Kernen) dauerten die 4000 Segmente 320 s: ab einer geschätzten halben Minute je
// Lauf gibt es darum einen Befund.
// Symmetrie (GR, GX) nutzt nec2c: 4000 Segmente als GR 8 · 500 brauchten 0,74 s, als
// GR 4 · 1000 2,84 s (64 MB) – also c·N³/p² und N²/p für die Matrix bei p-facher
// Symmetrie. Mit N ≤ 12 000·√p bleiben Zeit und Speicher unter denen ohne Symmetrie.
constexpr double sekundenJeUnbekannteHoch3 = 7e-10;
constexpr std::int64_t hoechstensUnbekannte = 12'000;
constexpr double langeAbSekunden = 30;
constexpr double zeitlimitSekunden = 300;

// Kein Antennenmass reicht weiter; 1e300 m lässt nec2c ohne Ende rechnen.
constexpr double groessteKoordinate = 1e5;
// Dünner als 1 nm oder dicker als 1 km ist kein Draht; 1e-300 m ergibt in nec2c NaN.
constexpr double kleinsterRadius = 1e-9;
constexpr double groessterRadius = 1e3;

struct Zaehlung {
    std::int64_t segmente = 0;
    std::int64_t flaechen = 0;
    double symmetrie = 1;

    explicit Zaehlung(const Geometrie::Struktur& s)
        : segmente(s.segmente()), flaechen(s.flaechen),
          symmetrie(static_cast<double>(std::max<std::int64_t>(s.symmetrie, 1))) {}

    double unbekannte() const { return static_cast<double>(segmente) + 2.0 * static_cast<double>(flaechen); }
    double hoechstens() const { return static_cast<double>(hoechstensUnbekannte) * std::sqrt(symmetrie); }
    double sekundenJeFrequenz() const {
        return sekundenJeUnbekannteHoch3 * std::pow(unbekannte(), 3) / (symmetrie * symmetrie);
    }
    std::string text() const {
        const auto s = fmt::format("{} Segment{}", segmente, segmente == 1 ? "" : "e");
        if (flaechen == 0) return s;
        return fmt::format("{} und {} Flächenstück{}", s, flaechen, flaechen == 1 ? "" : "e");
    }
};

std::optional<Geometrie::Struktur> struktur(const Modell& m) {
    try {
        return Geometrie::struktur(m.deck());
    } catch (const std::exception&) {
        return std::nullopt; // Formelfehler meldet das Rechendeck selbst
    }
}

bool koordinateGut(double x) {
    return std::isfinite(x) && std::fabs(x) <= groessteKoordinate;
}

std::optional<std::string> koordinatePruefen(const std::string& wer, double x) {
    if (!std::isfinite(x))
        return wer +
               " hat eine Koordinate, die keine endliche Zahl ist – Formeln und Kopien (GM, GS) prüfen.";
    if (std::fabs(x) > groessteKoordinate)
        return fmt::format("{} hat eine Koordinate von {:g} m – mehr als 100 km ist kein Antennenmass, Masse "
                           "und Einheiten prüfen.",
                           wer, x);
    return std::nullopt;
}

std::optional<std::string> drahtPruefen(const Geometrie::Draht& d) {
    const auto wer = fmt::format("Draht (Tag {})", d.tag);
    for (const auto& punkt : {d.a, d.b})
        for (double x : punkt)
            if (!koordinateGut(x)) return koordinatePruefen(wer, x);
    if (!(d.radius >= kleinsterRadius && d.radius <= groessterRadius))
        return fmt::format(
            "{} hat den Radius {:g} m – sinnvoll sind 1 nm bis 1 km, Masse und Einheiten prüfen.", wer,
            d.radius);
    return std::nullopt;
}

// Flächen werden nicht gebaut; ihre Eckpunkte stehen auf den Karten selbst.
std::optional<std::string> flaechenPruefen(const Modell& m) {
    const Werte werte = Feldwerte::lesbareWerte(m);
    for (const auto& k : m.karten) {
        if (k.typ != "SP" && k.typ != "SM" && k.typ != "SC") continue;
        for (std::size_t i = 0; i < 6; ++i) {
            const auto x = Feldwerte::reell(k, i, werte);
            if (x && !koordinateGut(*x)) return koordinatePruefen("Die Karte " + k.typ, *x);
        }
    }
    return std::nullopt;
}

std::string dauerText(double sekunden) {
    if (sekunden < 90) return fmt::format("{:.0f} s", sekunden);
    return fmt::format("{:.0f} min", sekunden / 60);
}

int frequenzzahl(const Modell& m) {
    try {
        return m.frequenzen().anzahl;
    } catch (const std::exception&) {
        return 1;
    }
}

} // namespace

std::optional<std::string> umfangPruefen(const Modell& modell) {
    const auto s = struktur(modell);
    if (!s) return std::nullopt;
    if (!s->zuGrossBei.empty())
        return "Die Karte " + s->zuGrossBei +
               " erzeugt mehr Drähte, als sich rechnen lassen – die Zahl der Kopien oder Segmente "
               "verkleinern.";
    const Zaehlung n(*s);
    if (n.unbekannte() > n.hoechstens())
        return fmt::format("Das Modell hat {} – so viele lassen sich in den 5 Minuten, die ein Lauf dauern "
                           "darf, nicht rechnen; höchstens {:.0f} {} verwenden{}.",
                           n.text(), std::floor(n.hoechstens()),
                           n.flaechen == 0 ? "Segmente" : "Unbekannte (Segmente plus zwei je Flächenstück)",
                           n.symmetrie > 1 ? fmt::format(" (bei {:.0f}-facher Symmetrie)", n.symmetrie) : "");
    for (const auto& d : s->draehte)
        if (auto satz = drahtPruefen(d)) return satz;
    return flaechenPruefen(modell);
}

std::optional<Befund> dauerBefund(const Modell& modell) {
    const auto s = struktur(modell);
    if (!s || !s->zuGrossBei.empty()) return std::nullopt;
    const Zaehlung n(*s);
    const int frequenzen = frequenzzahl(modell);
    const double jeFrequenz = n.sekundenJeFrequenz();
    const double gesamt = jeFrequenz * frequenzen;
    if (!(gesamt >= langeAbSekunden)) return std::nullopt;
    auto text = fmt::format("Das Modell hat {} – nec2c rechnet daran etwa {}", n.text(), dauerText(gesamt));
    if (frequenzen > 1) text += fmt::format(" ({} je Frequenz)", dauerText(jeFrequenz));
    if (gesamt < zeitlimitSekunden) return Befund{Stufe::hinweis, text + "."};
    return Befund{Stufe::warnung,
                  text + ", länger als die 5 Minuten, nach denen ein Lauf abbricht – weniger Frequenzen oder "
                         "Segmente wählen."};
}

} // namespace NECKern::Modellpruefung
