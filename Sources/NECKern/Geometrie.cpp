#include "NECKern/Geometrie.hpp"

#include "NECKern/GeometrieZeile.hpp"
#include "NECKern/Modell.hpp"

#include <array>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <numbers>

namespace NECKern::Geometrie {

using namespace intern;

namespace {

using Vektor = std::array<double, 3>;
using Matrix = std::array<Vektor, 3>;

std::size_t malGroesse(std::size_t a, std::size_t b) {
    std::size_t r = 0;
    if (!__builtin_mul_overflow(a, b, &r)) return r;
    return std::numeric_limits<std::size_t>::max();
}

Ganz tagPlus(Ganz tag, Ganz zuwachs) {
    return tag == 0 ? 0 : plus(tag, zuwachs);
}

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
    std::vector<Draht> nehmen() { return std::move(liste); }
    Ganz flaechen() const { return stuecke; }
    Ganz symmetrie() const { return ordnung; }
    bool zuGross() const { return ueberlauf; }

    void karte(const Zeile& z) {
        if (ueberlauf) return;
        auto typ = z.typ();
        if (typ == "SP" || typ == "SM" || typ == "GW" || typ == "GA" || typ == "GH") ordnung = 1;
        if (typ == "SP") return vervielfachen(1, 1);
        if (typ == "SM") return sm(z.ganz());
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
    Ganz stuecke = 0;
    Ganz ordnung = 1;

    // Flächen werden nur gezählt: Kopien vervielfachen sie, dazu kommen neue.
    void vervielfachen(Ganz faktor, Ganz neu) {
        stuecke = plus(faktor == 1 ? stuecke : mal(stuecke, faktor), neu);
    }

    void sm(const std::vector<Ganz>& ganz) {
        if (ganz.size() == 2 && ganz[0] > 0 && ganz[1] > 0) vervielfachen(1, mal(ganz[0], ganz[1]));
    }

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
        // Nur eine Kopie des ganzen Aufbaus (ab Tag 0) nimmt die Flächen mit.
        if (ab == 0 && kopien > 0) vervielfachen(plus(kopien, 1), 0);
        if (ab != 0 || kopien > 0) ordnung = 1;
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
        vervielfachen(anzahl, 0);
        ordnung = anzahl; // eine Spiegelung davor nutzt NEC dann nicht mehr
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
            vervielfachen(2, 0);
            ordnung = mal(ordnung, 2);
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

std::string gwZeile(const Draht& d) {
    auto z = [](double x) { return Modell::zahl(x); };
    return fmt::format("GW {} {} {} {} {} {} {} {} {}", d.tag, d.segmente, z(d.a[0]), z(d.a[1]), z(d.a[2]),
                       z(d.b[0]), z(d.b[1]), z(d.b[2]), z(d.radius));
}

} // namespace

std::vector<double> zahlen(const std::vector<std::string_view>& teile) {
    std::vector<double> ergebnis;
    for (auto teil : teile)
        if (auto x = alsZahl(teil)) ergebnis.push_back(*x);
    return ergebnis;
}

std::int64_t Struktur::segmente() const {
    Ganz summe = 0;
    for (const auto& d : draehte)
        summe = plus(summe, d.segmente);
    return summe;
}

Struktur struktur(std::string_view deck) {
    Drahtliste liste;
    for (auto text : zeilen(deck)) {
        Zeile z{text, teile(text)};
        if (z.typ() == "GE") break;
        liste.karte(z);
        if (liste.zuGross()) return {{}, liste.flaechen(), 1, std::string(z.typ())};
    }
    const auto flaechen = liste.flaechen();
    const auto symmetrie = liste.symmetrie();
    return {liste.nehmen(), flaechen, symmetrie, {}};
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

} // namespace NECKern::Geometrie
