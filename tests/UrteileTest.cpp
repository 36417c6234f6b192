#include "NECKern/Urteile.hpp"

#include <cmath>
#include <gtest/gtest.h>

using namespace NECKern;
using Urteile::Abweichung;
using Urteile::Farbe;

namespace {

FrequenzErgebnis frequenz(std::optional<Komplex> z, std::optional<double> gewinn) {
    FrequenzErgebnis f;
    f.mhz = 14.2;
    f.impedanz = z;
    if (gewinn) f.diagramm = {{90, 0, 0, 0, *gewinn - 3}, {90, 90, 0, 0, *gewinn}};
    return f;
}

} // namespace

TEST(Urteile, GegenprobeMitStrengenGrenzen) {
    struct Fall {
        double r, g;
        Abweichung stufe;
        const char* abweichung;
    };
    // nec2c: 100 Ω und 0 dBi.
    const Fall faelle[] = {
        {105, 0.3, Abweichung::keine, "Abweichung: Wirkwiderstand 5 %, Gewinn 0.30 dB"},
        {106, 0, Abweichung::merklich, "Abweichung: Wirkwiderstand 6 %, Gewinn 0.00 dB"},
        {100, -0.31, Abweichung::merklich, "Abweichung: Wirkwiderstand 0 %, Gewinn 0.31 dB"},
        {115, 1.0, Abweichung::merklich, "Abweichung: Wirkwiderstand 15 %, Gewinn 1.00 dB"},
        {84, 0, Abweichung::stark, "Abweichung: Wirkwiderstand 16 %, Gewinn 0.00 dB"},
        {100, 1.01, Abweichung::stark, "Abweichung: Wirkwiderstand 0 %, Gewinn 1.01 dB"},
    };
    for (const auto& f : faelle) {
        auto u = Urteile::gegenprobe(frequenz(Komplex{f.r, 3}, f.g), {Komplex{100, -12.5}, 0.0});
        EXPECT_EQ(u.stufe, f.stufe) << f.r << " " << f.g;
        EXPECT_EQ(u.abweichung, f.abweichung);
        EXPECT_EQ(u.nec2c, "nec2c: 100.00 − j12.50 Ω");
    }
    EXPECT_EQ(Urteile::gegenprobe(frequenz(Komplex{84, 0}, 0), {Komplex{100, 0}, 0.0}).urteil,
              "Die Kerne weichen stark ab – diesem Ergebnis nicht trauen, Modell oder Kern prüfen.");
    EXPECT_EQ(Urteile::gegenprobe(frequenz(Komplex{94, 0}, 0), {Komplex{100, 0}, 0.0}).urteil,
              "Merkliche Abweichung zwischen den Kernen – Ergebnis mit Vorsicht verwenden.");
}

TEST(Urteile, GegenprobeOhneVergleichswerteZaehltAlsUebereinstimmung) {
    // Ohne Wirkwiderstand von nec2c, ohne eigenen Gewinn, ohne gezeigte Frequenz.
    auto nullWiderstand = Urteile::gegenprobe(frequenz(Komplex{500, 0}, std::nullopt), {Komplex{0, 40}, 9.0});
    EXPECT_EQ(nullWiderstand.stufe, Abweichung::keine);
    EXPECT_EQ(nullWiderstand.nec2c, "nec2c: 0.00 + j40.00 Ω");
    EXPECT_EQ(nullWiderstand.abweichung, "Abweichung: Wirkwiderstand 0 %, Gewinn 0.00 dB");
    auto ohne = Urteile::gegenprobe(std::nullopt, {std::nullopt, std::nullopt});
    EXPECT_FALSE(ohne.nec2c.has_value());
    EXPECT_EQ(ohne.urteil, "Stimmt mit nec2c überein.");
}

TEST(Urteile, GegenprobeAusDemNec2cLaufAnDerGezeigtenFrequenz) {
    NECErgebnis e;
    EXPECT_FALSE(Urteile::gegenprobeAus(e, 0).has_value());
    e.frequenzen = {frequenz(Komplex{50, 1}, 2.0), frequenz(Komplex{60, 2}, std::nullopt)};
    EXPECT_EQ(Urteile::gegenprobeAus(e, 0), (Urteile::Gegenprobe{Komplex{50, 1}, 2.0}));
    EXPECT_EQ(Urteile::gegenprobeAus(e, 7), (Urteile::Gegenprobe{Komplex{60, 2}, std::nullopt}));
}

TEST(Urteile, GueteWertzeileUndKlassenMitGrenzenBeiDerBesserenKlasse) {
    struct Fall {
        double guete;
        const char* wert;
        const char* wort;
        Farbe farbe;
    };
    const Fall faelle[] = {
        {1.0, "1.000 (+0.00 dB)", "gut", Farbe::gruen},
        {0.9, "0.900 (-0.46 dB)", "brauchbar", Farbe::gelb},
        {0, "0.000 (-120.00 dB)", "Modell prüfen", Farbe::orange},
    };
    for (const auto& f : faelle) {
        auto u = Urteile::guete(f.guete);
        EXPECT_EQ(u.wert, f.wert);
        EXPECT_EQ(u.wort, f.wort);
        EXPECT_EQ(u.farbe, f.farbe);
    }
    EXPECT_EQ(Urteile::guete(std::nan("")).wort, "Modell prüfen");
    EXPECT_EQ(Urteile::gueteKlasse(-0.1).wort, "gut");
    EXPECT_EQ(Urteile::gueteKlasse(0.1000001).wort, "brauchbar");
    EXPECT_EQ(Urteile::gueteKlasse(-0.5).wort, "brauchbar");
    EXPECT_EQ(Urteile::gueteKlasse(0.5000001).wort, "Modell prüfen");
}

TEST(Urteile, SwrTitelWertUndFarbe) {
    EXPECT_EQ(Urteile::swr(frequenz(Komplex{50, 0}, std::nullopt), 75).titel, "SWR (75 Ω)");
    struct Fall {
        std::optional<Komplex> z;
        const char* wert;
        Farbe farbe;
    };
    const Fall faelle[] = {
        {Komplex{50, 0}, "1.00", Farbe::gruen},
        {std::nullopt, "–", Farbe::orange},
        {Komplex{-50, 0}, "∞", Farbe::orange},
    };
    for (const auto& f : faelle) {
        auto a = Urteile::swr(frequenz(f.z, std::nullopt), 50);
        EXPECT_EQ(a.wert, f.wert);
        EXPECT_EQ(a.farbe, f.farbe);
    }
    EXPECT_EQ(Urteile::swrFarbe(1.4999), Farbe::gruen);
    EXPECT_EQ(Urteile::swrFarbe(1.5), Farbe::gelb);
    EXPECT_EQ(Urteile::swrFarbe(1.9999), Farbe::gelb);
    EXPECT_EQ(Urteile::swrFarbe(2.0), Farbe::orange);
}
