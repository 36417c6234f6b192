// Vorprüfung: der erste Grund, der das Rechnen verhindert, als ein deutscher Satz.
#include "NECKern/Feldwerte.hpp"
#include "NECKern/Geometrie.hpp"
#include "NECKern/Modellpruefung.hpp"

#include <algorithm>
#include <cmath>
#include <exception>
#include <fmt/format.h>
#include <limits>
#include <map>

namespace NECKern::Modellpruefung {

namespace {

using Satz = std::optional<std::string>;
using Segmentzahlen = std::map<std::int64_t, std::int64_t>; // Tag → Segmentzahl

bool hatTyp(const Modell& m, std::initializer_list<std::string_view> typen) {
    return std::any_of(m.karten.begin(), m.karten.end(), [&](const Karte& k) {
        return std::find(typen.begin(), typen.end(), k.typ) != typen.end();
    });
}

Satz reihenfolgePruefen(const Modell& m) {
    if (!hatTyp(m, {"GW", "GA", "GH"})) return "Kein Draht: Füge eine Karte GW (Draht) hinzu.";
    auto ge = std::find_if(m.karten.begin(), m.karten.end(), [](const Karte& k) { return k.typ == "GE"; });
    if (ge == m.karten.end()) return "Karte GE (Geometrie-Ende) fehlt – sie schliesst die Drähte ab.";
    // GN und GD beschreiben den Boden, keine Drähte: sie gehören hinter GE.
    for (auto it = ge + 1; it != m.karten.end(); ++it)
        if (it->typ.starts_with('G') && it->typ != "GE" && it->typ != "GN" && it->typ != "GD")
            return "Eine Geometriekarte (G…) steht nach GE – Drähte gehören vor die Karte GE.";
    if (!hatTyp(m, {"EX"})) return "Keine Speisung: Karte EX fehlt – ohne Speisung gibt es keine Impedanz.";
    if (!hatTyp(m, {"FR"})) return "Karte FR (Frequenz) fehlt.";
    return std::nullopt;
}

// Ein GW-Draht; in Ordnung: sein Tag und seine Segmentzahl werden vermerkt.
Satz drahtPruefen(const Karte& k, const Werte& werte, Segmentzahlen& zahlen) {
    const auto tag = Feldwerte::ganz(k, 0, werte);
    const auto segmente = Feldwerte::ganz(k, 1, werte);
    if (!tag || !segmente) return "Draht: Feld nicht lesbar (Formel prüfen).";
    const auto t = fmt::format("{}", *tag);
    double r[7];
    for (std::size_t i = 0; i < 7; ++i) {
        const auto wert = Feldwerte::reell(k, i, werte);
        // Eine Formel, die ∞ oder NaN ergibt, ist für den Kern ebenso unlesbar.
        if (!wert || !std::isfinite(*wert))
            return "Draht (Tag " + t + "): Feld nicht lesbar (Formel prüfen).";
        r[i] = *wert;
    }
    if (*segmente < 1) return "Draht (Tag " + t + ") braucht mindestens 1 Segment.";
    const double dx = r[3] - r[0], dy = r[4] - r[1], dz = r[5] - r[2];
    if (dx * dx + dy * dy + dz * dz == 0)
        return "Draht (Tag " + t + ") hat die Länge 0 – Anfangs- und Endpunkt sind gleich.";
    if (!(r[6] > 0)) return "Draht (Tag " + t + ") braucht einen Radius grösser als 0.";
    zahlen[*tag] = *segmente;
    return std::nullopt;
}

// Nur Spannungsquellen (Typ 0 und 5) brauchen ein vorhandenes Segment.
Satz speisungPruefen(const Karte& k, const Werte& werte, const Segmentzahlen& zahlen, bool nurDraehte) {
    const auto art = Feldwerte::ganz(k, 0, werte);
    const auto tag = Feldwerte::ganz(k, 1, werte);
    const auto segment = Feldwerte::ganz(k, 2, werte);
    if (!art || !tag || !segment) return std::nullopt;
    if (*art != 0 && *art != 5) return std::nullopt;
    if (auto it = zahlen.find(*tag); it != zahlen.end()) {
        if (*segment < 1 || *segment > it->second)
            return fmt::format("Speisung: Draht {} hat {} Segmente, Segment {} gibt es nicht.", *tag,
                               it->second, *segment);
        return std::nullopt;
    }
    if (*tag > 0 && nurDraehte)
        return fmt::format("Speisung auf Draht {} – einen Draht mit diesem Tag gibt es nicht.", *tag);
    return std::nullopt;
}

// Kopien mit Tag-Zuwachs 0 verlängern ein Tag: NEC zählt die Segmente aller Drähte
// mit diesem Tag durch. Lässt sich das Deck nicht abflachen, bleiben die GW-Zahlen.
Segmentzahlen abgeflacht(const Modell& m, Segmentzahlen gw) {
    Geometrie::Struktur s;
    try {
        s = Geometrie::struktur(m.deck());
    } catch (const std::exception&) {
        return gw;
    }
    if (!s.zuGrossBei.empty()) return gw;
    Segmentzahlen zahlen;
    for (const auto& d : s.draehte) {
        if (d.tag == 0) continue; // EX mit Tag 0 zählt die Segmente absolut, nicht je Draht
        auto& summe = zahlen[d.tag];
        if (__builtin_add_overflow(summe, d.segmente, &summe))
            summe = std::numeric_limits<std::int64_t>::max();
    }
    return zahlen;
}

Satz frequenzPruefen(const Karte& k, const Werte& werte) {
    if (k.reell.empty()) return "Frequenz muss grösser als 0 MHz sein.";
    const auto mhz = Feldwerte::reell(k, 0, werte);
    if (mhz && !(*mhz > 0)) return "Frequenz muss grösser als 0 MHz sein.";
    return std::nullopt;
}

} // namespace

std::optional<std::string> vorpruefen(const Modell& modell) {
    if (auto satz = reihenfolgePruefen(modell)) return satz;
    const Werte werte = Feldwerte::lesbareWerte(modell);

    Segmentzahlen zahlen;
    for (const auto& k : modell.karten)
        if (k.typ == "GW")
            if (auto satz = drahtPruefen(k, werte, zahlen)) return satz;

    // Ohne Karten, die Tags erzeugen oder umnummerieren, muss jeder gespeiste Tag ein GW sein.
    const bool nurDraehte = !hatTyp(modell, {"GM", "GR", "GX", "GA", "GH"});
    if (!nurDraehte) zahlen = abgeflacht(modell, std::move(zahlen));
    for (const auto& k : modell.karten)
        if (k.typ == "EX")
            if (auto satz = speisungPruefen(k, werte, zahlen, nurDraehte)) return satz;

    for (const auto& k : modell.karten)
        if (k.typ == "FR")
            if (auto satz = frequenzPruefen(k, werte)) return satz;
    return umfangPruefen(modell);
}

} // namespace NECKern::Modellpruefung
