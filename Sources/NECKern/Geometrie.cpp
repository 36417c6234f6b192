#include "NECKern/Geometrie.hpp"

#include "NECKern/Modell.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <limits>
#include <map>
#include <numbers>
#include <optional>

namespace NECKern::Geometrie {

namespace {

using Ganz = std::int64_t;
using Vektor = std::array<double, 3>;
using Matrix = std::array<Vektor, 3>;

constexpr Ganz ganzMax = std::numeric_limits<Ganz>::max();
constexpr Ganz ganzMin = std::numeric_limits<Ganz>::min();

// Ein gerader Draht; Tag 0 heisst: ohne Tag, wird nie umnummeriert oder erhöht.
struct Draht {
    Ganz tag = 0;
    Ganz segmente = 0;
    Vektor a{};
    Vektor b{};
    double radius = 0;
};

// Feindliche Ganzzahlen dürfen nicht überlaufen: sättigend rechnen.
Ganz plus(Ganz a, Ganz b) {
    Ganz r = 0;
    if (!__builtin_add_overflow(a, b, &r)) return r;
    return b > 0 ? ganzMax : ganzMin;
}

Ganz mal(Ganz a, Ganz b) {
    Ganz r = 0;
    if (!__builtin_mul_overflow(a, b, &r)) return r;
    return (a < 0) != (b < 0) ? ganzMin : ganzMax;
}

std::size_t malGroesse(std::size_t a, std::size_t b) {
    std::size_t r = 0;
    if (!__builtin_mul_overflow(a, b, &r)) return r;
    return std::numeric_limits<std::size_t>::max();
}

Ganz tagPlus(Ganz tag, Ganz zuwachs) {
    return tag == 0 ? 0 : plus(tag, zuwachs);
}

// Die C-Umwandlung nimmt ein führendes '+' an, from_chars nicht.
std::string_view ohnePlus(std::string_view teil) {
    if (teil.size() > 1 && teil[0] == '+' && teil[1] != '+' && teil[1] != '-') teil.remove_prefix(1);
    return teil;
}

std::optional<double> alsZahl(std::string_view teil) {
    teil = ohnePlus(teil);
    double x = 0;
    auto [ende, fehler] = std::from_chars(teil.data(), teil.data() + teil.size(), x);
    if (fehler != std::errc{} || ende != teil.data() + teil.size()) return std::nullopt;
    return x;
}

std::optional<Ganz> alsGanz(std::string_view teil) {
    teil = ohnePlus(teil);
    Ganz x = 0;
    auto [ende, fehler] = std::from_chars(teil.data(), teil.data() + teil.size(), x);
    if (fehler != std::errc{} || ende != teil.data() + teil.size()) return std::nullopt;
    return x;
}

std::vector<std::string_view> zeilen(std::string_view text) {
    std::vector<std::string_view> ergebnis;
    while (!text.empty()) {
        auto ende = text.find('\n');
        auto zeile = text.substr(0, ende);
        if (!zeile.empty()) ergebnis.push_back(zeile);
        if (ende == std::string_view::npos) break;
        text.remove_prefix(ende + 1);
    }
    return ergebnis;
}

// Tabulator und Wagenrücklauf zählen wie Leerzeichen, damit CR-LF-Decks nicht
// an der letzten Zahl jeder Zeile scheitern.
bool istTrenner(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

std::vector<std::string_view> teile(std::string_view zeile) {
    std::vector<std::string_view> ergebnis;
    std::size_t i = 0;
    while (i < zeile.size()) {
        while (i < zeile.size() && istTrenner(zeile[i]))
            ++i;
        auto anfang = i;
        while (i < zeile.size() && !istTrenner(zeile[i]))
            ++i;
        if (i > anfang) ergebnis.push_back(zeile.substr(anfang, i - anfang));
    }
    return ergebnis;
}

// Eine Deckzeile: Kartentyp, die Ganzzahlfelder I1 und I2 (soweit lesbar) und
// die Zahlen ab dem vierten Teil.
struct Zeile {
    std::string_view text;
    std::vector<std::string_view> teile;

    std::string_view typ() const { return teile.empty() ? std::string_view{} : teile[0]; }

    std::vector<Ganz> ganz() const {
        std::vector<Ganz> ergebnis;
        for (std::size_t i = 1; i < 3 && i < teile.size(); ++i)
            if (auto wert = alsGanz(teile[i])) ergebnis.push_back(*wert);
        return ergebnis;
    }

    std::vector<double> reell() const {
        if (teile.size() <= 3) return {};
        return zahlen({teile.begin() + 3, teile.end()});
    }
};

Matrix drehung(double gradX, double gradY, double gradZ) {
    auto bogen = [](double grad) { return grad * std::numbers::pi / 180.0; };
    double cx = std::cos(bogen(gradX)), sx = std::sin(bogen(gradX));
    double cy = std::cos(bogen(gradY)), sy = std::sin(bogen(gradY));
    double cz = std::cos(bogen(gradZ)), sz = std::sin(bogen(gradZ));
    // Erst um x, dann um y, dann um z: Rz · Ry · Rx.
    return {{{cz * cy, cz * sy * sx - sz * cx, cz * sy * cx + sz * sx},
             {sz * cy, sz * sy * sx + cz * cx, sz * sy * cx - cz * sx},
             {-sy, cy * sx, cy * cx}}};
}

Vektor anwenden(const Matrix& m, const Vektor& v, const Vektor& verschiebung) {
    Vektor r{};
    for (std::size_t i = 0; i < 3; ++i)
        r[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2] + verschiebung[i];
    return r;
}

// Die Drahtliste des Geometrieteils, mit Wächter gegen unbegrenztes Wachstum.
class Drahtliste {
  public:
    const std::vector<Draht>& draehte() const { return liste; }
    bool zuGross() const { return ueberlauf; }

    void karte(const Zeile& z) {
        if (ueberlauf) return;
        auto typ = z.typ();
        if (typ == "GW") return gw(z.ganz(), z.reell());
        if (typ == "GA") return ga(z.ganz(), z.reell());
        if (typ == "GH") return gh(z.ganz(), z.reell());
        if (typ == "GS") return gs(z.reell());
        if (typ == "GM") return gm(z.ganz(), z.reell());
        if (typ == "GR") return gr(z.ganz());
        if (typ == "GX") return gx(z.ganz());
    }

    static bool istGeometriekarte(std::string_view typ) {
        return typ == "GW" || typ == "GA" || typ == "GH" || typ == "GS" || typ == "GM" || typ == "GR" ||
               typ == "GX";
    }

  private:
    std::vector<Draht> liste;
    std::size_t arbeit = 0;
    bool ueberlauf = false;

    // Darf die Liste um `neu` Drähte wachsen und `bearbeitet` Drähte umformen?
    bool erlaubt(std::size_t neu, std::size_t bearbeitet) {
        if (neu > maxDraehte - liste.size() || bearbeitet > maxArbeit - arbeit ||
            neu > maxArbeit - arbeit - bearbeitet) {
            ueberlauf = true;
            return false;
        }
        arbeit += neu + bearbeitet;
        return true;
    }

    void gw(const std::vector<Ganz>& ganz, const std::vector<double>& r) {
        if (ganz.size() < 2 || r.size() < 7 || !erlaubt(1, 0)) return;
        liste.push_back({ganz[0], ganz[1], {r[0], r[1], r[2]}, {r[3], r[4], r[5]}, r[6]});
    }

    // Zerlegt eine Kurve in n gerade Ein-Segment-Drähte; punkt(i) ist der i-te Stützpunkt.
    template <typename Punkt> void zerlegen(Ganz tag, Ganz n, double radius, Punkt punkt) {
        if (n <= 0 || !erlaubt(static_cast<std::size_t>(n), 0)) return;
        auto anfang = punkt(0);
        for (Ganz i = 0; i < n; ++i) {
            auto ende = punkt(i + 1);
            liste.push_back({tag, 1, anfang, ende, radius});
            anfang = ende;
        }
    }

    void ga(const std::vector<Ganz>& ganz, const std::vector<double>& r) {
        if (ganz.size() < 2 || r.size() < 4) return;
        auto n = ganz[1];
        double bogenradius = r[0];
        double von = r[1] * std::numbers::pi / 180.0;
        double delta = r[2] * std::numbers::pi / 180.0 - von;
        zerlegen(ganz[0], n, r[3], [&](Ganz i) {
            double phi = von + delta * static_cast<double>(i) / static_cast<double>(n);
            return Vektor{bogenradius * std::cos(phi), 0.0, bogenradius * std::sin(phi)};
        });
    }

    void gh(const std::vector<Ganz>& ganz, const std::vector<double>& r) {
        if (ganz.size() < 2 || r.size() < 7) return;
        auto n = ganz[1];
        double steigung = r[0], laenge = r[1];
        double a1 = r[2], b1 = r[3], a2 = r[4], b2 = r[5];
        double sinn = laenge < 0 ? -1.0 : 1.0; // negative Länge: linksgängig
        zerlegen(ganz[0], n, r[6], [&](Ganz i) {
            double t = static_cast<double>(i) / static_cast<double>(n);
            double z = std::fabs(laenge) * t;
            double theta = steigung == 0 ? 0.0 : sinn * 2.0 * std::numbers::pi * z / steigung;
            return Vektor{(a1 + (a2 - a1) * t) * std::cos(theta), (b1 + (b2 - b1) * t) * std::sin(theta), z};
        });
    }

    void gs(const std::vector<double>& r) {
        if (r.empty() || !erlaubt(0, liste.size())) return;
        for (auto& d : liste) {
            for (std::size_t i = 0; i < 3; ++i) {
                d.a[i] *= r[0];
                d.b[i] *= r[0];
            }
            d.radius *= r[0];
        }
    }

    void gm(const std::vector<Ganz>& ganz, const std::vector<double>& r) {
        if (ganz.size() != 2 || r.size() < 6) return;
        auto zuwachs = ganz[0];
        auto kopien = ganz[1];
        double ab = r.size() > 6 ? r[6] : 0.0;
        auto m = drehung(r[0], r[1], r[2]);
        Vektor verschiebung{r[3], r[4], r[5]};
        auto umformen = [&](Draht& d) {
            d.a = anwenden(m, d.a, verschiebung);
            d.b = anwenden(m, d.b, verschiebung);
            d.tag = tagPlus(d.tag, zuwachs);
        };

        std::vector<std::size_t> betroffen;
        for (std::size_t i = 0; i < liste.size(); ++i)
            if (ab == 0 || static_cast<double>(liste[i].tag) >= ab) betroffen.push_back(i);
        // Ohne betroffene Drähte gibt es nichts zu tun, auch nicht 10^9-mal.
        if (betroffen.empty()) return;

        if (kopien <= 0) {
            if (!erlaubt(0, betroffen.size())) return;
            for (auto i : betroffen)
                umformen(liste[i]);
            return;
        }
        if (!erlaubt(malGroesse(betroffen.size(), static_cast<std::size_t>(kopien)), 0)) return;
        std::vector<Draht> generation;
        for (auto i : betroffen)
            generation.push_back(liste[i]);
        for (Ganz k = 0; k < kopien; ++k) {
            for (auto& d : generation)
                umformen(d);
            liste.insert(liste.end(), generation.begin(), generation.end());
        }
    }

    void gr(const std::vector<Ganz>& ganz) {
        if (ganz.size() != 2) return;
        auto zuwachs = ganz[0];
        auto anzahl = ganz[1];
        if (anzahl <= 1) return;
        auto n = liste.size();
        if (n == 0 || !erlaubt(malGroesse(n, static_cast<std::size_t>(anzahl - 1)), 0)) return;
        for (Ganz k = 1; k < anzahl; ++k) {
            auto m = drehung(0, 0, 360.0 * static_cast<double>(k) / static_cast<double>(anzahl));
            for (std::size_t i = 0; i < n; ++i) {
                auto d = liste[i];
                d.a = anwenden(m, d.a, {});
                d.b = anwenden(m, d.b, {});
                d.tag = tagPlus(d.tag, mal(k, zuwachs));
                liste.push_back(d);
            }
        }
    }

    void gx(const std::vector<Ganz>& ganz) {
        if (ganz.size() < 2) return;
        auto zuwachs = ganz[0];
        // Drei Ziffern X, Y, Z mit führenden Nullen: 1 heisst nur Z.
        auto code = fmt::format("{:03d}", ganz[1]);
        std::array<std::pair<char, std::size_t>, 3> folge{{{code[2], 2}, {code[1], 1}, {code[0], 0}}};
        for (auto [ziffer, achse] : folge) {
            if (ziffer != '1') continue;
            auto n = liste.size();
            if (!erlaubt(n, 0)) return;
            for (std::size_t i = 0; i < n; ++i) {
                auto d = liste[i];
                d.a[achse] = -d.a[achse];
                d.b[achse] = -d.b[achse];
                d.tag = tagPlus(d.tag, zuwachs);
                liste.push_back(d);
            }
            zuwachs = mal(zuwachs, 2);
        }
    }
};

void anfuegen(std::string& aus, std::string_view zeile) {
    if (!aus.empty()) aus += '\n';
    aus += zeile;
}

std::string gwZeile(const Draht& d) {
    auto z = [](double x) { return Modell::zahl(x); };
    return fmt::format("GW {} {} {} {} {} {} {} {} {}", d.tag, d.segmente, z(d.a[0]), z(d.a[1]), z(d.a[2]),
                       z(d.b[0]), z(d.b[1]), z(d.b[2]), z(d.radius));
}

// Die Stücke, zu denen ein altes Tag wurde: neue Tags und die laufende Summe
// ihrer Segmentzahlen (für die Suche nach einem Segment).
struct Stuecke {
    std::vector<Ganz> neu;
    std::vector<Ganz> bis;

    Ganz anzahl(std::size_t i) const { return bis[i] - (i > 0 ? bis[i - 1] : 0); }
};
using Tagkarte = std::map<Ganz, Stuecke>;

struct Treffer {
    std::size_t stueck;
    Ganz segment;
};

// Segment s des alten Tags: über die Stücke laufen, bis eines weit genug reicht;
// jenseits der Summe das letzte Segment des letzten Stücks.
Treffer suchen(const Stuecke& st, Ganz s) {
    auto it = std::lower_bound(st.bis.begin(), st.bis.end(), s);
    if (it == st.bis.end()) return {st.neu.size() - 1, st.anzahl(st.neu.size() - 1)};
    auto i = static_cast<std::size_t>(it - st.bis.begin());
    auto davor = i > 0 ? st.bis[i - 1] : 0;
    return {i, std::max<Ganz>(s - davor, 1)};
}

std::pair<Ganz, Ganz> abbilden(const Tagkarte& karte, Ganz tag, Ganz segment) {
    if (tag == 0) return {tag, segment};
    auto it = karte.find(tag);
    if (it == karte.end()) return {tag, segment};
    auto t = suchen(it->second, segment);
    return {it->second.neu[t.stueck], t.segment};
}

Tagkarte tagkarte(const std::vector<Zeile>& deck) {
    Tagkarte karte;
    Ganz k = 0;
    for (const auto& z : deck) {
        if (z.typ() != "GW") continue;
        ++k;
        if (z.teile.size() < 2) continue;
        auto alt = alsGanz(z.teile[1]);
        if (!alt) continue;
        // Negative Segmentzahlen nimmt kein Kern an; als 0 gezählt bleibt die Suche monoton.
        auto segmente = z.teile.size() > 2 ? alsGanz(z.teile[2]).value_or(0) : 0;
        auto& st = karte[*alt];
        st.neu.push_back(k);
        st.bis.push_back(plus(st.bis.empty() ? 0 : st.bis.back(), std::max<Ganz>(segmente, 0)));
    }
    return karte;
}

std::string verbunden(const std::vector<std::string>& teile) {
    std::string aus;
    for (const auto& t : teile) {
        if (!aus.empty()) aus += ' ';
        aus += t;
    }
    return aus;
}

std::vector<std::string> alsText(const std::vector<std::string_view>& teile) {
    return {teile.begin(), teile.end()};
}

// Ersetzt das Paar (Tag, Segment) an den Stellen i, i + 1, wenn beide lesbar sind.
void paarAbbilden(const Tagkarte& karte, std::vector<std::string>& teile, std::size_t i) {
    if (teile.size() <= i + 1) return;
    auto tag = alsGanz(teile[i]);
    auto segment = alsGanz(teile[i + 1]);
    if (!tag || !segment) return;
    auto [neuTag, neuSegment] = abbilden(karte, *tag, *segment);
    teile[i] = fmt::format("{}", neuTag);
    teile[i + 1] = fmt::format("{}", neuSegment);
}

std::string exZeile(const Tagkarte& karte, const Zeile& z) {
    // Nur Spannungsquellen (Typ 0 und 5) tragen Tag und Segment; bei ebenen
    // Wellen stehen dort Winkelanzahlen.
    auto typ = z.teile.size() > 1 ? alsGanz(z.teile[1]) : std::nullopt;
    if (!typ || (*typ != 0 && *typ != 5)) return std::string(z.text);
    auto teile = alsText(z.teile);
    paarAbbilden(karte, teile, 2);
    return verbunden(teile);
}

std::string leitungZeile(const Tagkarte& karte, const Zeile& z) {
    auto teile = alsText(z.teile);
    paarAbbilden(karte, teile, 1);
    paarAbbilden(karte, teile, 3);
    return verbunden(teile);
}

// LD belastet die Segmente von bis eines Tags. Liegt der Bereich auf mehreren
// neuen Drähten, gibt es je Draht eine LD-Zeile; sonst träfe die Last nach dem
// Zerlegen eines Bogens nur ein einziges Segment.
std::vector<std::string> ldZeilen(const Tagkarte& karte, const Zeile& z) {
    std::vector<std::string> eine{std::string(z.text)};
    if (z.teile.size() < 5) return eine;
    auto typ = alsGanz(z.teile[1]);
    auto tag = alsGanz(z.teile[2]);
    auto von = alsGanz(z.teile[3]);
    auto bis = alsGanz(z.teile[4]);
    if (!typ || !tag || !von || !bis || *typ < 0 || *tag == 0) return eine;
    auto it = karte.find(*tag);
    if (it == karte.end()) return eine;
    const auto& st = it->second;

    // NEC: von = bis = 0 belastet das ganze Tag, bis = 0 allein heisst bis = von.
    auto erstes = *von, letztes = *bis;
    if (erstes == 0 && letztes == 0) {
        erstes = 1;
        letztes = st.bis.back();
    } else if (letztes == 0) {
        letztes = erstes;
    }
    auto a = suchen(st, erstes);
    auto b = suchen(st, letztes);

    auto teile = alsText(z.teile);
    auto zeile = [&](std::size_t stueck, Ganz s1, Ganz s2) {
        teile[2] = fmt::format("{}", st.neu[stueck]);
        teile[3] = fmt::format("{}", s1);
        teile[4] = fmt::format("{}", s2);
        return verbunden(teile);
    };
    if (b.stueck <= a.stueck)
        return {zeile(a.stueck, a.segment, b.stueck == a.stueck ? b.segment : a.segment)};

    std::vector<std::string> ergebnis;
    for (auto i = a.stueck; i <= b.stueck; ++i) {
        auto s1 = i == a.stueck ? a.segment : 1;
        auto s2 = i == b.stueck ? b.segment : st.anzahl(i);
        if (s2 >= s1) ergebnis.push_back(zeile(i, s1, s2));
    }
    return ergebnis.empty() ? eine : ergebnis;
}

} // namespace

std::vector<double> zahlen(const std::vector<std::string_view>& teile) {
    std::vector<double> ergebnis;
    for (auto teil : teile)
        if (auto x = alsZahl(teil)) ergebnis.push_back(*x);
    return ergebnis;
}

std::string abflachen(std::string_view deck) {
    Drahtliste liste;
    std::string aus;
    bool inGeometrie = true;
    for (auto text : zeilen(deck)) {
        Zeile z{text, teile(text)};
        if (inGeometrie && Drahtliste::istGeometriekarte(z.typ())) {
            liste.karte(z);
            if (liste.zuGross()) return std::string(deck);
            continue;
        }
        if (inGeometrie && z.typ() == "GE") {
            for (const auto& d : liste.draehte())
                anfuegen(aus, gwZeile(d));
            inGeometrie = false;
        }
        anfuegen(aus, text);
    }
    return aus;
}

std::string eindeutigeTags(std::string_view deck) {
    std::vector<Zeile> deckZeilen;
    for (auto text : zeilen(deck))
        deckZeilen.push_back({text, teile(text)});
    auto karte = tagkarte(deckZeilen);

    std::string aus;
    std::size_t zusatz = 0;
    Ganz k = 0;
    for (const auto& z : deckZeilen) {
        auto typ = z.typ();
        if (typ == "GW") {
            ++k;
            if (z.teile.size() < 2) {
                anfuegen(aus, z.text);
                continue;
            }
            auto teile = alsText(z.teile);
            teile[1] = fmt::format("{}", k);
            anfuegen(aus, verbunden(teile));
        } else if (typ == "EX") {
            anfuegen(aus, exZeile(karte, z));
        } else if (typ == "TL" || typ == "NT") {
            anfuegen(aus, leitungZeile(karte, z));
        } else if (typ == "LD") {
            auto neu = ldZeilen(karte, z);
            zusatz += neu.size() - 1;
            if (zusatz > maxDraehte) return std::string(deck);
            for (const auto& zeile : neu)
                anfuegen(aus, zeile);
        } else {
            anfuegen(aus, z.text);
        }
    }
    return aus;
}

} // namespace NECKern::Geometrie
