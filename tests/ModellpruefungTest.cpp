#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Json.hpp"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <numbers>

using namespace NECKern;
using nlohmann::ordered_json;
namespace MP = NECKern::Modellpruefung;

namespace {

// Wellenlänge genau 1 m.
constexpr double einMeter = 299.792458;

Segment segment(std::int64_t nummer, std::int64_t tag, Punkt3 mitte, double laenge, double radius,
                double alpha = 0, double beta = 0) {
    Segment s;
    s.nummer = nummer;
    s.tag = tag;
    s.x = mitte[0];
    s.y = mitte[1];
    s.z = mitte[2];
    s.laenge = laenge;
    s.alpha = alpha;
    s.beta = beta;
    s.radius = radius;
    return s;
}

// Ein Draht entlang x von x0 in n gleichen Segmenten, an beiden Enden frei.
std::vector<Segment> drahtX(std::int64_t ersteNummer, std::int64_t tag, double x0, double laenge, int n,
                            double y = 0, double radius = 1e-6) {
    std::vector<Segment> s;
    const double l = laenge / n;
    for (int i = 0; i < n; ++i) {
        auto g = segment(ersteNummer + i, tag, {x0 + (i + 0.5) * l, y, 0}, l, radius);
        g.vorher = i == 0 ? 0 : ersteNummer + i - 1;
        g.nachher = i == n - 1 ? 0 : ersteNummer + i + 1;
        s.push_back(g);
    }
    return s;
}

std::optional<Befund> befundMit(const std::vector<Befund>& befunde, std::string_view anfang) {
    for (const auto& b : befunde)
        if (b.text.starts_with(anfang)) return b;
    return std::nullopt;
}

Modell deck(std::string_view text) {
    return Modell::lesen(text, "Test");
}

constexpr const char* gesund = "GW 1 11 0 0 -5 0 0 5 1mm\nGE 0\nEX 0 1 6 0 1 0\nFR 0 1 0 0 14.2 0\nEN\n";

} // namespace

// ---- Stufe und Befund ----

TEST(Befund, StufeNurAusNullBisZwei) {
    EXPECT_EQ(stufeAus(0), Stufe::hinweis);
    EXPECT_EQ(stufeAus(1), Stufe::warnung);
    EXPECT_EQ(stufeAus(2), Stufe::fehler);
    EXPECT_EQ(stufeAus(3), std::nullopt);
    EXPECT_EQ(stufeAus(-1), std::nullopt);
}

TEST(Befund, GespeicherteFormMitStufeAlsZahl) {
    Befund b{Stufe::warnung, "Längstes Segment 0.060 λ"};
    EXPECT_EQ(ordered_json(b).dump(), R"({"stufe":1,"text":"Längstes Segment 0.060 λ"})");
    EXPECT_EQ(ordered_json(b).get<Befund>(), b);
    EXPECT_EQ(b.id(), b.text);
    try {
        ordered_json::parse(R"({"stufe":3,"text":"x"})").get<Befund>();
        FAIL();
    } catch (const DatenFehler& f) {
        EXPECT_STREQ(f.what(), "Befund: eine Stufe 3 gibt es nicht.");
    }
    EXPECT_THROW(ordered_json::parse(R"({"stufe":1})").get<Befund>(), DatenFehler);
}

// ---- Vorprüfung ----

TEST(Vorpruefung, GesundesModellHatKeinenEinwand) {
    EXPECT_EQ(MP::vorpruefen(deck(gesund)), std::nullopt);
}

TEST(Vorpruefung, ReihenfolgeDerKarten) {
    struct Fall {
        const char* deck;
        const char* satz;
    };
    const std::string kein = "";
    for (const auto& f : std::initializer_list<Fall>{
             {"GE 0\nEX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n", "Kein Draht: Füge eine Karte GW (Draht) hinzu."},
             {"GW 1 1 0 0 0 1 0 0 1mm\nEX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n",
              "Karte GE (Geometrie-Ende) fehlt – sie schliesst die Drähte ab."},
             // GE vor „Keine Speisung“: die Geometrie wird zuerst geprüft
             {"GW 1 1 0 0 0 1 0 0 1mm\nGE 0\nGS 0 0 1\n",
              "Eine Geometriekarte (G…) steht nach GE – Drähte gehören vor die Karte GE."},
             {"GW 1 1 0 0 0 1 0 0 1mm\nGE 0\nGM 0 0 0 0 0 0 0 0 0\nEX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n",
              "Eine Geometriekarte (G…) steht nach GE – Drähte gehören vor die Karte GE."},
             {"GW 1 1 0 0 0 1 0 0 1mm\nGE 0\nGW 2 1 0 0 0 1 0 0 1mm\nEX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n",
              "Eine Geometriekarte (G…) steht nach GE – Drähte gehören vor die Karte GE."},
             {"GW 1 1 0 0 0 1 0 0 1mm\nGE 0\nFR 0 1 0 0 14 0\n",
              "Keine Speisung: Karte EX fehlt – ohne Speisung gibt es keine Impedanz."},
             {"GW 1 1 0 0 0 1 0 0 1mm\nGE 0\nEX 0 1 1 0 1 0\n", "Karte FR (Frequenz) fehlt."},
         }) {
        EXPECT_EQ(MP::vorpruefen(deck(f.deck)), f.satz) << f.deck;
    }
    // GN und ein zweites GE nach GE sind erlaubt.
    EXPECT_EQ(
        MP::vorpruefen(deck("GW 1 1 0 0 0 1 0 0 1mm\nGE 1\nGN 1\nGE 0\nEX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n")),
        std::nullopt);
}

TEST(Vorpruefung, NurBogenUndWendelWerdenNichtGelesen) {
    // Unlesbare Felder eines GA oder GH stören nicht; die Speisung darf einen erzeugten Tag nennen.
    EXPECT_EQ(MP::vorpruefen(deck("GA foo 12 bar 0 180 1mm\nGE 0\nEX 0 9 1 0 1 0\nFR 0 1 0 0 14 0\n")),
              std::nullopt);
    EXPECT_EQ(MP::vorpruefen(deck("GH 1 40 quatsch\nGE 0\nEX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n")), std::nullopt);
}

TEST(Vorpruefung, DrahtFelder) {
    struct Fall {
        Karte gw;
        const char* satz;
    };
    const auto gw = [](std::vector<std::string> ganz, std::vector<std::string> reell) {
        return Karte("GW", std::move(ganz), std::move(reell));
    };
    const std::vector<std::string> gut{"0", "0", "0", "0", "0", "1", "1mm"};
    for (const auto& f : std::initializer_list<Fall>{
             {gw({"foo", "3"}, gut), "Draht: Feld nicht lesbar (Formel prüfen)."},
             {gw({"1", "n"}, gut), "Draht: Feld nicht lesbar (Formel prüfen)."},
             {gw({"1e30", "3"}, gut), "Draht: Feld nicht lesbar (Formel prüfen)."}, // passt in keine Ganzzahl
             {gw({"4", "3"}, {"0", "0", "0", "0", "0", "1", "r"}),
              "Draht (Tag 4): Feld nicht lesbar (Formel prüfen)."},
             {gw({"4", "3"}, {"0", "1/0", "0", "0", "0", "1", "1mm"}),
              "Draht (Tag 4): Feld nicht lesbar (Formel prüfen)."},
             {gw({"4", "3"}, {"0/0", "0", "0", "0", "0", "1", "1mm"}),
              "Draht (Tag 4): Feld nicht lesbar (Formel prüfen)."},
             // unlesbare Felder vor zu wenigen Segmenten
             {gw({"4", "0"}, {"x"}), "Draht (Tag 4): Feld nicht lesbar (Formel prüfen)."},
             {gw({"4", "0"}, gut), "Draht (Tag 4) braucht mindestens 1 Segment."},
             {gw({"-2", "-1"}, gut), "Draht (Tag -2) braucht mindestens 1 Segment."},
             // leere und fehlende Felder zählen als 0
             {gw({"4", ""}, gut), "Draht (Tag 4) braucht mindestens 1 Segment."},
             {gw({}, {}), "Draht (Tag 0) braucht mindestens 1 Segment."},
             {gw({"4", "3"}, {"1", "2", "3", "1", "2", "3", "1mm"}),
              "Draht (Tag 4) hat die Länge 0 – Anfangs- und Endpunkt sind gleich."},
             {gw({"4", "3"}, {"0", "0", "0", "0", "0", "1"}),
              "Draht (Tag 4) braucht einen Radius grösser als 0."},
             {gw({"4", "3"}, {"0", "0", "0", "0", "0", "1", "-1mm"}),
              "Draht (Tag 4) braucht einen Radius grösser als 0."},
         }) {
        Modell m = deck("GE 0\nEX 0 4 1 0 1 0\nFR 0 1 0 0 14 0\n");
        m.karten.insert(m.karten.begin(), f.gw);
        EXPECT_EQ(MP::vorpruefen(m), f.satz) << f.gw.ganz.size() << " " << f.gw.reell.size();
    }
}

TEST(Vorpruefung, FelderMitVariablenUndKaputterVariable) {
    // Variablen vor der kaputten Formel bleiben lesbar, dahinter nicht.
    const auto mit = [](const char* gwZeile) {
        return deck(std::string("SY l=5, f=14\nSY kaputt=quatsch\nSY spaet=1\n") + gwZeile +
                    "GE 0\nEX 0 1 1 0 1 0\nFR 0 1 0 0 f 0\n");
    };
    EXPECT_EQ(MP::vorpruefen(mit("GW 1 3 0 0 0 0 0 l 1mm\n")), std::nullopt);
    EXPECT_EQ(MP::vorpruefen(mit("GW 1 3 0 0 0 0 0 spaet 1mm\n")),
              "Draht (Tag 1): Feld nicht lesbar (Formel prüfen).");
}

TEST(Vorpruefung, Speisung) {
    struct Fall {
        const char* karten;
        std::optional<std::string> satz;
    };
    const std::string draht = "GW 1 11 0 0 -5 0 0 5 1mm\n";
    for (const auto& f : std::initializer_list<Fall>{
             {"EX 0 1 12 0 1 0\n", "Speisung: Draht 1 hat 11 Segmente, Segment 12 gibt es nicht."},
             {"EX 5 1 0 0 1 0\n", "Speisung: Draht 1 hat 11 Segmente, Segment 0 gibt es nicht."},
             {"EX 0 1 11 0 1 0\n", std::nullopt},
             {"EX 0 7 1 0 1 0\n", "Speisung auf Draht 7 – einen Draht mit diesem Tag gibt es nicht."},
             {"EX 5 7 1 0 1 0\n", "Speisung auf Draht 7 – einen Draht mit diesem Tag gibt es nicht."},
             // Stromquelle, Tag 0 und unlesbare Felder werden nicht geprüft
             {"EX 1 7 1 0 1 0\n", std::nullopt},
             {"EX 0 0 99 0 1 0\n", std::nullopt},
             {"EX 0 7 x 0 1 0\n", std::nullopt},
             {"EX typ 7 1 0 1 0\n", std::nullopt},
             // Reihenfolge der EX-Karten zählt
             {"EX 1 7 1 0 1 0\nEX 0 1 99 0 1 0\nEX 0 8 1 0 1 0\n",
              "Speisung: Draht 1 hat 11 Segmente, Segment 99 gibt es nicht."},
         }) {
        EXPECT_EQ(MP::vorpruefen(deck(draht + "GE 0\n" + f.karten + "FR 0 1 0 0 14 0\n")), f.satz)
            << f.karten;
    }
    // Ein späteres GW mit demselben Tag gilt.
    EXPECT_EQ(
        MP::vorpruefen(deck(draht + "GW 1 21 1 0 -5 1 0 5 1mm\nGE 0\nEX 0 1 15 0 1 0\nFR 0 1 0 0 14 0\n")),
        std::nullopt);
}

TEST(Vorpruefung, ErzeugteTagsNurOhneTagKarten) {
    // Mit einer Karte, die Tags erzeugt, darf die Speisung einen unbekannten Tag nennen …
    for (const char* karte : {"GM 1 1 0 0 0 1 0 0 0\n", "GR 1 4\n", "GX 1 100\n", "GA 5 12 0.5 0 180 1mm\n",
                              "GH 5 40 1 1 1 1 1 1 1mm 0\n"}) {
        EXPECT_EQ(MP::vorpruefen(deck(std::string("GW 1 11 0 0 -5 0 0 5 1mm\n") + karte +
                                      "GE 0\nEX 0 7 1 0 1 0\nFR 0 1 0 0 14 0\n")),
                  std::nullopt)
            << karte;
        // … aber ein bekannter Draht wird weiter auf seine Segmentzahl geprüft.
        EXPECT_EQ(MP::vorpruefen(deck(std::string("GW 1 11 0 0 -5 0 0 5 1mm\n") + karte +
                                      "GE 0\nEX 0 1 12 0 1 0\nFR 0 1 0 0 14 0\n")),
                  "Speisung: Draht 1 hat 11 Segmente, Segment 12 gibt es nicht.")
            << karte;
    }
}

TEST(Vorpruefung, Frequenz) {
    const auto mitFR = [](Karte fr) {
        Modell m = deck("GW 1 11 0 0 -5 0 0 5 1mm\nGE 0\nEX 0 1 6 0 1 0\n");
        m.karten.push_back(std::move(fr));
        return MP::vorpruefen(m);
    };
    const std::string satz = "Frequenz muss grösser als 0 MHz sein.";
    EXPECT_EQ(mitFR(Karte("FR", {"0", "1", "0", "0"}, {"0", "0"})), satz);
    EXPECT_EQ(mitFR(Karte("FR", {"0", "1", "0", "0"}, {"-1", "0"})), satz);
    EXPECT_EQ(mitFR(Karte("FR", {"0", "1", "0", "0"}, {})), satz);
    EXPECT_EQ(mitFR(Karte("FR", {"0", "1", "0", "0"}, {""})), satz);
    EXPECT_EQ(mitFR(Karte("FR", {"0", "1", "0", "0"}, {"0.001"})), std::nullopt);
    EXPECT_EQ(mitFR(Karte("FR", {"0", "1", "0", "0"}, {"unbekannt"})), std::nullopt);
    // Die Speisung kommt vor der Frequenz.
    EXPECT_EQ(MP::vorpruefen(deck("GW 1 11 0 0 -5 0 0 5 1mm\nGE 0\nEX 0 1 99 0 1 0\nFR 0 1 0 0 0 0\n")),
              "Speisung: Draht 1 hat 11 Segmente, Segment 99 gibt es nicht.");
}

// ---- Befunde nach dem Rechnen ----

TEST(Pruefen, OhneSegmenteOderFrequenzKeineBefunde) {
    const std::vector<Segment> eins{segment(1, 1, {0, 0, 0}, 1, 0.1)};
    EXPECT_TRUE(MP::pruefen({}, 14).empty());
    EXPECT_TRUE(MP::pruefen(eins, 0).empty());
    EXPECT_TRUE(MP::pruefen(eins, -1).empty());
    EXPECT_TRUE(MP::pruefen(eins, std::nan("")).empty());
}

TEST(Pruefen, GrenzenDerSegmentlaenge) {
    struct Fall {
        double laenge;
        std::optional<Befund> laengster, kuerzester;
    };
    const double etwasUeber01 = std::nextafter(0.1, 1.0);
    for (const auto& f : std::initializer_list<Fall>{
             {0.05, {}, {}},
             {std::nextafter(0.05, 1.0),
              Befund{Stufe::warnung,
                     "Längstes Segment 0.050 λ – für genaue Impedanzen unter 0,05 λ bleiben."},
              {}},
             {0.1,
              Befund{Stufe::warnung,
                     "Längstes Segment 0.100 λ – für genaue Impedanzen unter 0,05 λ bleiben."},
              {}},
             {etwasUeber01,
              Befund{Stufe::fehler,
                     "Segment bis 0.100 λ lang – NEC verlangt unter 0,1 λ (besser unter 0,05 λ). "
                     "Mehr Segmente."},
              {}},
             {0.001, {}, {}},
             {std::nextafter(0.001, 0.0),
              {},
              Befund{Stufe::warnung,
                     "Kürzestes Segment 0.00100 λ – unter 0,001 λ wird NEC numerisch ungenau."}},
         }) {
        const std::vector<Segment> s{segment(1, 1, {0, 0, 0}, f.laenge, 0)};
        const auto b = MP::pruefen(s, einMeter);
        EXPECT_EQ(befundMit(b, "Längstes"),
                  f.laengster && f.laengster->stufe == Stufe::warnung ? f.laengster : std::nullopt);
        EXPECT_EQ(befundMit(b, "Segment bis"),
                  f.laengster && f.laengster->stufe == Stufe::fehler ? f.laengster : std::nullopt);
        EXPECT_EQ(befundMit(b, "Kürzestes"), f.kuerzester) << f.laenge;
    }
}

TEST(Pruefen, LaengeZuRadiusNurUeberPositiveRadien) {
    struct Fall {
        double laenge, radius;
        std::optional<Befund> befund;
    };
    for (const auto& f : std::initializer_list<Fall>{
             {0.008, 0.001, {}},
             {std::nextafter(0.008, 0.0), 0.001,
              Befund{Stufe::warnung, "Segmentlänge 8.0 × Radius – unter 8 weicht die Impedanz ab."}},
             {0.002, 0.001,
              Befund{Stufe::warnung, "Segmentlänge 2.0 × Radius – unter 8 weicht die Impedanz ab."}},
             {std::nextafter(0.002, 0.0), 0.001,
              Befund{Stufe::fehler,
                     "Segmentlänge nur 2.0 × Radius – Dünndraht-Näherung ungültig (mindestens 2, "
                     "besser über 8)."}},
         }) {
        // Ein zweites Segment mit Radius 0 oder negativ zählt nicht mit.
        const std::vector<Segment> s{segment(1, 1, {0, 0, 0}, f.laenge, f.radius),
                                     segment(2, 1, {1, 0, 0}, 0.01, 0), segment(3, 1, {2, 0, 0}, 0.01, -1)};
        const auto b = MP::pruefen(s, einMeter);
        EXPECT_EQ(befundMit(b, "Segmentlänge"), f.befund) << f.laenge;
    }
    const std::vector<Segment> ohneRadius{segment(1, 1, {0, 0, 0}, 0.01, 0)};
    EXPECT_EQ(befundMit(MP::pruefen(ohneRadius, einMeter), "Segmentlänge"), std::nullopt);
}

TEST(Pruefen, GrenzenDesRadius) {
    struct Fall {
        double radius;
        std::optional<Befund> befund;
    };
    const std::string dick =
        " λ): verschiedene Rechenkerne weichen beim Blindanteil um einige Ω ab – Ergebnis mit "
        "einem zweiten Kern vergleichen.";
    for (const auto& f : std::initializer_list<Fall>{
             {0.002, {}},
             {std::nextafter(0.002, 1.0), Befund{Stufe::hinweis, "Dicker Draht (0.0020" + dick}},
             {0.01, Befund{Stufe::hinweis, "Dicker Draht (0.0100" + dick}},
             {std::nextafter(0.01, 1.0),
              Befund{Stufe::warnung, "Drahtradius 0.0100 λ – über 0,01 λ ist das Dünndrahtmodell grob."}},
         }) {
        const std::vector<Segment> s{segment(1, 1, {0, 0, 0}, 0.04, f.radius / 100),
                                     segment(2, 1, {1, 0, 0}, 0.04, f.radius)};
        const auto b = MP::pruefen(s, einMeter);
        const auto gefunden = befundMit(b, "Dicker") ? befundMit(b, "Dicker") : befundMit(b, "Drahtradius");
        EXPECT_EQ(gefunden, f.befund) << f.radius;
    }
}

TEST(Pruefen, ReihenfolgeDerBefundeUndZahlenMitPunkt) {
    // Zu langes Segment, dicker Draht, kurzes Verhältnis zum Radius und ein Längensprung 10.
    auto s = drahtX(1, 1, -0.5, 0.5, 1, 0, 0.02);
    auto kurz = drahtX(2, 2, 0, 0.05, 1, 0, 0.01);
    s.insert(s.end(), kurz.begin(), kurz.end());
    s[0].nachher = 2;
    s[1].vorher = 1;
    const std::vector<Befund> erwartet{
        {Stufe::fehler,
         "Segment bis 0.500 λ lang – NEC verlangt unter 0,1 λ (besser unter 0,05 λ). Mehr Segmente."},
        {Stufe::warnung, "Segmentlänge 5.0 × Radius – unter 8 weicht die Impedanz ab."},
        {Stufe::warnung, "Drahtradius 0.0200 λ – über 0,01 λ ist das Dünndrahtmodell grob."},
        {Stufe::warnung,
         "An einer Verbindung sind Segmente 10.0-mal so lang wie ihr Nachbar – höchstens etwa 5, "
         "besser gleich lang."},
    };
    EXPECT_EQ(MP::pruefen(s, einMeter), erwartet);
}

TEST(Pruefen, LaengensprungAnDerToleranzgrenze) {
    // Kurzes Segment von -100 bis 0 (t = 0,01 · 100 = 1 genau), langes ab x = mitte - 300.
    const auto sprung = [](double mitteLang) {
        std::vector<Segment> s{segment(1, 1, {-50, 0, 0}, 100, 0), segment(2, 2, {mitteLang, 0, 0}, 600, 0)};
        return MP::laengenSprung(s);
    };
    EXPECT_EQ(sprung(301), 1.0);                        // Abstand genau t: berührt nicht
    EXPECT_EQ(sprung(std::nextafter(301.0, 0.0)), 6.0); // knapp darunter: Verhältnis 6
    EXPECT_EQ(sprung(300), 6.0);
    // Verhältnis genau 5: keine Warnung.
    std::vector<Segment> fuenf{segment(1, 1, {-0.0625, 0, 0}, 0.125, 0),
                               segment(2, 2, {0.3125, 0, 0}, 0.625, 0)};
    EXPECT_EQ(MP::laengenSprung(fuenf), 5.0);
    EXPECT_EQ(befundMit(MP::pruefen(fuenf, 14), "An einer"), std::nullopt);
    // Gleiche Nummer zählt nicht als eigenes Segment.
    fuenf[1].nummer = 1;
    EXPECT_EQ(MP::laengenSprung(fuenf), 1.0);
}

TEST(Pruefen, EndeAufDerMitteEinesAnderenDrahts) {
    // Draht 2 endet bei (0, y, 0) über der Mitte des einzigen Segments von Draht 1.
    const auto pruefe = [](double y, double radius) {
        auto s = drahtX(1, 1, -0.5, 1, 1, 0, radius);
        s[0].vorher.reset();
        s[0].nachher.reset();
        auto zwei = drahtX(5, 2, -1, 1, 4, y, radius);
        s.insert(s.end(), zwei.begin(), zwei.end());
        return MP::verbindungenPruefen(s);
    };
    const std::vector<Befund> gefunden{
        {Stufe::fehler,
         "Draht 2 endet auf Draht 1, ist dort aber nicht verbunden (1 Stelle(n)) – NEC verbindet nur "
         "an Segmentenden. Segmentzahl so wählen, dass am Anschlusspunkt ein Segmentende liegt."}};
    EXPECT_EQ(pruefe(std::nextafter(0.0002, 0.0), 1e-6), gefunden);
    EXPECT_TRUE(pruefe(0.0002, 1e-6).empty());
    // Summe der Radien über 0,0002 ist die Grenze.
    EXPECT_EQ(pruefe(0.0005, 0.0003), gefunden);
    EXPECT_TRUE(pruefe(0.0006, 0.0003).empty());
}

TEST(Pruefen, FreieEndenZaehlenUndNachbarnUeberspringen) {
    // Ein Draht aus zwei Segmenten: seine freien Enden liegen auf ihm selbst, zählen aber nicht.
    auto s = drahtX(1, 1, 0, 1, 2);
    EXPECT_TRUE(MP::verbindungenPruefen(s).empty());
    // Ein Draht, der mit beiden Enden auf Draht 7 liegt (Abstand 0): zwei Stellen.
    auto sieben = drahtX(10, 7, -1, 3, 3);
    auto drei = drahtX(20, 3, 0, 1, 1, 0);
    std::vector<Segment> alle = drei;
    alle.insert(alle.end(), sieben.begin(), sieben.end());
    auto b = MP::verbindungenPruefen(alle);
    ASSERT_EQ(b.size(), 1u);
    EXPECT_THAT(b[0].text, testing::StartsWith(
                               "Draht 3 endet auf Draht 7, ist dort aber nicht verbunden (2 Stelle(n))"));
    // Segmente der Länge 0 zählen nicht.
    for (auto& g : alle)
        if (g.tag == 7) g.laenge = 0;
    EXPECT_TRUE(MP::verbindungenPruefen(alle).empty());
    // Verbundene Enden (vorher/nachher ≠ 0 oder unbekannt) sind nicht frei.
    alle = drei;
    alle.insert(alle.end(), sieben.begin(), sieben.end());
    alle[0].vorher = 11;
    alle[0].nachher.reset();
    EXPECT_TRUE(MP::verbindungenPruefen(alle).empty());
}

TEST(BodenPruefen, UntereEndenGegenMikrometer) {
    const auto boden = [](double z, double alpha, double laenge) {
        const std::vector<Segment> s{segment(1, 1, {0, 0, z}, laenge, 0.001, alpha)};
        return MP::bodenPruefen(s, true);
    };
    const std::vector<Befund> eins{
        {Stufe::fehler, "1 Segment(e) liegen unter der Erdoberfläche (z < 0) – über Boden nicht zulässig."}};
    EXPECT_TRUE(boden(-0.5e-6, 0, 1).empty());
    EXPECT_TRUE(boden(-1e-6, 0, 1).empty());
    EXPECT_EQ(boden(-2e-6, 0, 1), eins);
    // Senkrecht: das untere Ende zählt, gleich ob alpha 90 oder -90.
    EXPECT_TRUE(boden(0.5, 90, 1).empty());
    EXPECT_EQ(boden(0.49, 90, 1), eins);
    EXPECT_EQ(boden(0.49, -90, 1), eins);
    const std::vector<Segment> drei{segment(1, 1, {0, 0, -1}, 1, 0), segment(2, 1, {0, 0, 1}, 1, 0),
                                    segment(3, 1, {0, 0, -3}, 1, 0)};
    EXPECT_EQ(MP::bodenPruefen(drei, true)[0].text.substr(0, 2), "2 ");
    EXPECT_TRUE(MP::bodenPruefen(drei, false).empty());
}

// ---- Meldungen des Kerns ----

TEST(NecMeldung, UeberschriftNachStichwort) {
    struct Fall {
        const char* text;
        const char* erwartet;
    };
    for (const auto& f : std::initializer_list<Fall>{
             {"NO SEGMENT HAS AN ITAG OF 9",
              "Fehler in den Drähten (Lage, Verbindung, Segmente). NEC meldet: NO SEGMENT HAS AN ITAG OF 9"},
             {"\n  GEOMETRY DATA CARD ERROR \n",
              "Fehler in den Drähten (Lage, Verbindung, Segmente). NEC meldet: GEOMETRY DATA CARD ERROR"},
             {"error in excitation", "Fehler bei der Speisung (EX). NEC meldet: error in excitation"},
             {"voltage Source", "Fehler bei der Speisung (EX). NEC meldet: voltage Source"},
             {"LOADING ERROR", "Fehler bei einer Last (LD). NEC meldet: LOADING ERROR"},
             {"transmission line", "Fehler bei Leitung oder Netzwerk (TL/NT). NEC meldet: transmission line"},
             {"NETWORK DATA", "Fehler bei Leitung oder Netzwerk (TL/NT). NEC meldet: NETWORK DATA"},
             {"ground parameters", "Fehler beim Boden (GN). NEC meldet: ground parameters"},
             {"memory allocation failed",
              "Das Modell ist ungültig oder zu gross. NEC meldet: memory allocation failed"},
             // Reihenfolge der Tabelle: SEGMENT vor LOAD
             {"LOAD ON SEGMENT 3",
              "Fehler in den Drähten (Lage, Verbindung, Segmente). NEC meldet: LOAD ON SEGMENT 3"},
             {"", "NEC hat das Modell nicht gerechnet. NEC meldet: "},
             {" \t\n", "NEC hat das Modell nicht gerechnet. NEC meldet: "},
             {"PIVOT(0) = 0", "NEC hat das Modell nicht gerechnet. NEC meldet: PIVOT(0) = 0"},
             // Unicode-Grossschreibung: das lange s wird zu S
             {"ſegment", "Fehler in den Drähten (Lage, Verbindung, Segmente). NEC meldet: ſegment"},
             {"\u00a0kaputt\u2003", "NEC hat das Modell nicht gerechnet. NEC meldet: kaputt"},
             {"a\xff", "NEC hat das Modell nicht gerechnet. NEC meldet: a\xef\xbf\xbd"},
         }) {
        EXPECT_EQ(MP::necMeldung(f.text), f.erwartet) << f.text;
    }
}

// ---- Neue Karten ----

TEST(NeueKarte, VorgabenJeTyp) {
    const Modell m = deck("GW 3 5 0 0 0 0 0 1 1mm\nGA 7 12 0.5 0 180 1mm\nGW x 5 0 0 0 0 0 1 1mm\nGE 0\n");
    struct Fall {
        const char* typ;
        std::vector<std::string> ganz, reell;
    };
    for (const auto& f : std::initializer_list<Fall>{
             {"GW", {"8", "11"}, {"4", "-0.5", "1", "4", "0.5", "1", "1mm"}},
             {"gw", {"8", "11"}, {"4", "-0.5", "1", "4", "0.5", "1", "1mm"}},
             {"GA", {"8", "12"}, {"0.5", "0", "180", "1mm"}},
             {"GH", {"8", "40"}, {"0.05", "0.5", "0.05", "0.05", "0.05", "0.05", "1mm", "0"}},
             {"GE", {"0"}, {}},
             {"GN", {"2", "0", "0", "0"}, {"13", "0.005"}},
             {"LD", {"5", "0", "0", "0"}, {"5.8e7"}},
             {"FR", {"0", "1", "0", "0"}, {"14.2", "0"}},
             {"RP", {"0", "19", "37", "1000"}, {"0", "0", "5", "5"}},
             {"EX", {"0", "3", "3", "0"}, {"1", "0"}},
             {"GS", {"0", "0"}, {"1"}},
             {"GR", {"0", "1"}, {}},
             {"XQ", {"0"}, {}},
             {"EN", {}, {}},
         }) {
        const Karte k = MP::neueKarte(f.typ, m);
        EXPECT_EQ(k.typ, Karte(f.typ, {}, {}).typ);
        EXPECT_EQ(k.ganz, f.ganz) << f.typ;
        EXPECT_EQ(k.reell, f.reell) << f.typ;
    }
    EXPECT_NE(MP::neueKarte("GW", m).id, MP::neueKarte("GW", m).id);
}

TEST(NeueKarte, OhneDrahtTagEinsUndSpeisungAufTagEins) {
    const Modell leer;
    EXPECT_EQ(MP::neueKarte("GW", leer).ganz, (std::vector<std::string>{"1", "11"}));
    EXPECT_EQ(MP::neueKarte("GW", leer).reell[0], "1");
    EXPECT_EQ(MP::neueKarte("EX", leer).ganz, (std::vector<std::string>{"0", "1", "1", "0"}));
    // Der erste Draht zählt, auch wenn er unlesbar ist; Segmentmitte bei gerader Zahl nach unten.
    EXPECT_EQ(MP::neueKarte("EX", deck("GW foo 5\nGW 2 5\n")).ganz,
              (std::vector<std::string>{"0", "1", "1", "0"}));
    EXPECT_EQ(MP::neueKarte("EX", deck("GW 4 10\n")).ganz, (std::vector<std::string>{"0", "4", "5", "0"}));
    EXPECT_EQ(MP::neueKarte("EX", deck("GW 4 n\n")).ganz, (std::vector<std::string>{"0", "4", "1", "0"}));
    // Negative Tags: der nächste ist trotzdem 1.
    EXPECT_EQ(MP::neueKarte("GH", deck("GW -3 5\n")).ganz[0], "1");
}
