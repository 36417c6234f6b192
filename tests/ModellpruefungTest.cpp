#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Json.hpp"

#include <clocale>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <numbers>
#include <random>

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
    // GN, GD (Klippe, zweites Medium) und ein zweites GE nach GE sind erlaubt.
    EXPECT_EQ(MP::vorpruefen(deck("GW 1 1 0 0 0 1 0 0 1mm\nGE 1\nGN 1\nGD 0 0 0 0 5 0.001 20 -10\nGE 0\n"
                                  "EX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n")),
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

TEST(Vorpruefung, GanzzahlfelderGerundetWieImRechendeck) {
    // Der Kern bekommt 11.5 als 12 und -0.5 als -1; die Prüfung sieht dieselben Zahlen.
    EXPECT_EQ(
        MP::vorpruefen(deck("SY n=11\nGW 1 n 0 0 -5 0 0 5 1mm\nGE 0\nEX 0 1 n+0.5 0 1 0\nFR 0 1 0 0 14 0\n")),
        "Speisung: Draht 1 hat 11 Segmente, Segment 12 gibt es nicht.");
    EXPECT_EQ(MP::vorpruefen(deck("GW -0.5 0.5 0 0 -5 0 0 5 1mm\nGE 0\nEX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n")),
              "Speisung auf Draht 1 – einen Draht mit diesem Tag gibt es nicht.");
    EXPECT_EQ(
        MP::vorpruefen(deck("SY l=c0/14/2\nGW 2*1 sqr(121) 0 0 -l/2 0 0 l/2 2mm/2\nGE 0\nEX 0 2 6 0 1 0\n"
                            "FR 0 1 0 0 c0/l/2 0\n")),
        std::nullopt);
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

TEST(Vorpruefung, KopienMitZuwachsNullVerlaengernDenTag) {
    // Drei Kopien eines 11-Segment-Drahts mit Tag-Zuwachs 0: Tag 1 hat 44 Segmente.
    const auto mit = [](const char* ex) {
        return MP::vorpruefen(deck(std::string("GW 1 11 0 0 -5 0 0 5 1mm\nGM 0 3 0 0 0 1 0 0 0\nGE 0\n") +
                                   ex + "FR 0 1 0 0 14 0\n"));
    };
    EXPECT_EQ(mit("EX 0 1 44 0 1 0\n"), std::nullopt);
    EXPECT_EQ(mit("EX 0 1 45 0 1 0\n"), "Speisung: Draht 1 hat 44 Segmente, Segment 45 gibt es nicht.");
}

TEST(Vorpruefung, UmfangUndLageNachKopienUndSymmetrie) {
    struct Fall {
        std::string geometrie;
        std::optional<std::string> satz;
    };
    const std::string zuViele =
        " – so viele lassen sich in den 5 Minuten, die ein Lauf dauern darf, nicht rechnen; "
        "höchstens 12000 ";
    const std::string zuWeit = " – mehr als 100 km ist kein Antennenmass, Masse und Einheiten prüfen.";
    const std::string rest = "GE 0\nEX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n";
    const Fall faelle[] = {
        {"GW 1 1 0 0 0 0 0 1 1mm\nGM 0 1000000000 0 0 0 0 0 1 0\n",
         "Die Karte GM erzeugt mehr Drähte, als sich rechnen lassen – die Zahl der Kopien oder Segmente "
         "verkleinern."},
        {"GW 1 12001 0 0 0 0 0 1200 1mm\n",
         "Das Modell hat 12001 Segmente" + zuViele + "Segmente verwenden."},
        // Eine Karte nach GR hebt die Symmetrie auf, die nec2c sonst nutzte.
        {"GW 1 1000 1 0 0 1 0 100 1mm\nGR 1 12\nGW 99 1 5 0 0 5 0 1 1mm\n",
         "Das Modell hat 12001 Segmente" + zuViele + "Segmente verwenden."},
        {"GW 1 3500 1 0 0 1 0 350 1mm\nGR 1 12\n",
         "Das Modell hat 42000 Segmente – so viele lassen sich in den 5 Minuten, die ein Lauf dauern darf, "
         "nicht "
         "rechnen; höchstens 41569 Segmente verwenden (bei 12-facher Symmetrie)."},
        {"SM 100 100 0 0 0 1 0 0\nSC 0 0 1 1 0\nGW 1 1 0 0 1 0 0 2 1mm\n",
         "Das Modell hat 1 Segment und 10000 Flächenstücke" + zuViele +
             "Unbekannte (Segmente plus zwei je Flächenstück) verwenden."},
        {"GW 1 1 0 0 0 0 0 1e300 1mm\n", "Draht (Tag 1) hat eine Koordinate von 1e+300 m" + zuWeit},
        {"SP 0 0 0 0 1e9 90 0 0.01\nGW 1 1 0 0 0 0 0 1 1mm\n",
         "Die Karte SP hat eine Koordinate von 1e+09 m" + zuWeit},
        {"GW 1 1 0 0 0 0 0 1 1mm\nGS 0 0 1e308\nGS 0 0 10\n",
         "Draht (Tag 1) hat eine Koordinate, die keine endliche Zahl ist – Formeln und Kopien (GM, GS) "
         "prüfen."},
        {"GA 1 8 1 0 90 1e-12\nGW 1 1 0 0 0 0 0 1 1mm\n",
         "Draht (Tag 1) hat den Radius 1e-12 m – sinnvoll sind 1 nm bis 1 km, Masse und Einheiten prüfen."},
        // An der Grenze wird gerechnet: 12000 Segmente, mit zwölffacher Symmetrie 12000·√12.
        {"GW 1 12000 0 0 0 0 0 1200 1mm\n", std::nullopt},
        {"GW 1 3464 1 0 0 1 0 346 1mm\nGR 1 12\n", std::nullopt},
    };
    for (const auto& f : faelle) {
        const auto m = deck(f.geometrie + rest);
        EXPECT_EQ(MP::umfangPruefen(m), f.satz) << f.geometrie;
        EXPECT_EQ(MP::vorpruefen(m), f.satz) << f.geometrie;
    }
}

TEST(Vorpruefung, LangeRechnungIstEinBefund) {
    struct Fall {
        const char* karten;
        std::optional<Befund> befund;
    };
    for (const auto& f : std::initializer_list<Fall>{
             {"GW 1 3000 0 0 0 0 0 300 1mm\nGE 0\nFR 0 1 0 0 14 0\n", std::nullopt},
             {"GW 1 4500 0 0 0 0 0 450 1mm\nGE 0\nFR 0 1 0 0 14 0\n",
              Befund{Stufe::hinweis, "Das Modell hat 4500 Segmente – nec2c rechnet daran etwa 64 s."}},
             {"GW 1 4500 0 0 0 0 0 450 1mm\nGE 0\nFR 0 6 0 0 14 1\n",
              Befund{Stufe::warnung,
                     "Das Modell hat 4500 Segmente – nec2c rechnet daran etwa 6 min (64 s je "
                     "Frequenz), länger als die 5 Minuten, nach denen ein Lauf abbricht – weniger "
                     "Frequenzen oder Segmente wählen."}},
         })
        EXPECT_EQ(MP::dauerBefund(deck(f.karten)), f.befund) << f.karten;
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

TEST(Pruefen, ZahlenMitPunktAuchUnterDeutschemGebietsschema) {
    const std::vector<Segment> s{segment(1, 1, {0, 0, 0}, 0.0625, 0)};
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) GTEST_SKIP() << "Umgebung de_DE.UTF-8 fehlt";
    const auto b = MP::pruefen(s, einMeter);
    std::setlocale(LC_ALL, "C");
    ASSERT_EQ(b.size(), 1u);
    EXPECT_EQ(b[0].text, "Längstes Segment 0.062 λ – für genaue Impedanzen unter 0,05 λ bleiben.");
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

TEST(Pruefen, ErsteStelleNenntDasErsteSegmentInListenfolge) {
    // Zwei Drähte treffen sich bei x = 2, ein dritter endet frei genau dort. Draht 5
    // steht in der Liste vorn, liegt aber nur rechts der Stelle.
    std::vector<Segment> s{segment(1, 5, {2.5, 0, 0}, 1, 0), segment(2, 6, {1.5, 0, 0}, 1, 0),
                           segment(3, 7, {2, 0.5, 0}, 1, 0, 0, -90)};
    s[2].nachher = 0;
    const auto b = MP::verbindungenPruefen(s);
    ASSERT_EQ(b.size(), 1u);
    EXPECT_THAT(b[0].text,
                testing::StartsWith("Draht 7 endet auf Draht 5, ist dort aber nicht verbunden (1 "));
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

TEST(NecMeldung, AbgelehnterLaufOhneFrequenzOderOhneImpedanzMitFehler) {
    const auto lauf = [](std::vector<std::optional<Komplex>> impedanzen, std::vector<std::string> warnungen) {
        NECErgebnis e;
        for (const auto& z : impedanzen) {
            FrequenzErgebnis f;
            f.impedanz = z;
            e.frequenzen.push_back(f);
        }
        e.warnungen = std::move(warnungen);
        return MP::laufAbgelehnt(e);
    };
    const std::string last = "LOADING DATA CARD ERROR, NO SEGMENT HAS AN ITAG = 7";
    EXPECT_EQ(lauf({}, {}), MP::necMeldung("keine Ausgabe"));
    EXPECT_EQ(lauf({std::nullopt}, {"WARNING: GROUND", last, "nec2c beendet mit 255: " + last}),
              MP::necMeldung(last));
    EXPECT_EQ(lauf({std::nullopt}, {"nec2c beendet mit 1: kaputt"}),
              MP::necMeldung("nec2c beendet mit 1: kaputt"));
    // Eine ebene Welle als Anregung hat keine Impedanz und ist doch gerechnet.
    EXPECT_EQ(lauf({std::nullopt}, {"WARNING: GROUND"}), std::nullopt);
    EXPECT_EQ(lauf({std::nullopt, Komplex{50, 0}}, {last}), std::nullopt);
}

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

// ---- Raster gegen den Vergleich aller Paare ----

namespace {

// Beide Prüfungen wörtlich über alle Paare, quadratisch, als Massstab.
double abstandRef(const Punkt3& a, const Punkt3& b) {
    const double dx = a[0] - b[0], dy = a[1] - b[1], dz = a[2] - b[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

double abstandZurStreckeRef(const Punkt3& p, const Segment& s) {
    const auto [a, b] = s.enden();
    const Punkt3 v{b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const Punkt3 w{p[0] - a[0], p[1] - a[1], p[2] - a[2]};
    const double vv = v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
    const double wv = w[0] * v[0] + w[1] * v[1] + w[2] * v[2];
    const double t = vv > 0 ? std::clamp(wv / vv, 0.0, 1.0) : 0.0;
    return abstandRef(p, Punkt3{a[0] + t * v[0], a[1] + t * v[1], a[2] + t * v[2]});
}

double sprungRef(const std::vector<Segment>& s) {
    std::vector<std::pair<Punkt3, Punkt3>> enden;
    for (const auto& g : s)
        enden.push_back(g.enden());
    double r = 1;
    for (std::size_t i = 0; i < s.size(); ++i)
        for (std::size_t j = 0; j < s.size(); ++j) {
            const auto &a = s[i], &b = s[j];
            if (a.nummer == b.nummer) continue;
            const auto& [as, ae] = enden[i];
            const auto& [bs, be] = enden[j];
            const double lmin = std::min(a.laenge, b.laenge), lmax = std::max(a.laenge, b.laenge);
            const double t = 0.01 * lmin;
            if (abstandRef(as, bs) < t || abstandRef(ae, be) < t || abstandRef(ae, bs) < t ||
                abstandRef(as, be) < t)
                r = std::max(r, lmax / lmin);
        }
    return r;
}

std::vector<Befund> verbindungenRef(const std::vector<Segment>& s) {
    std::optional<std::pair<std::int64_t, std::int64_t>> erste;
    std::int64_t k = 0;
    for (const auto& f : s) {
        for (int ende = 0; ende < 2; ++ende) {
            if ((ende == 0 ? f.vorher : f.nachher) != 0) continue;
            const Punkt3 p = ende == 0 ? f.enden().first : f.enden().second;
            for (const auto& g : s) {
                if (g.tag == f.tag &&
                    std::abs(static_cast<double>(g.nummer) - static_cast<double>(f.nummer)) < 2)
                    continue;
                if (g.laenge == 0) continue;
                double grenze = f.radius + g.radius;
                if (grenze < 0.0002) grenze = 0.0002;
                if (abstandZurStreckeRef(p, g) < grenze) {
                    if (!erste) erste = {f.tag, g.tag};
                    ++k;
                    break;
                }
            }
        }
    }
    if (!erste) return {};
    return {{Stufe::fehler,
             "Draht " + std::to_string(erste->first) + " endet auf Draht " + std::to_string(erste->second) +
                 ", ist dort aber nicht verbunden (" + std::to_string(k) +
                 " Stelle(n)) – NEC verbindet nur an Segmentenden. Segmentzahl so wählen, dass am "
                 "Anschlusspunkt ein Segmentende liegt."}};
}

// Zufällige Geometrien mit vielen Berührungen, Punkten genau auf den Toleranzgrenzen,
// doppelten Punkten und allerlei kaputten Werten.
class Zufallsmodell {
  public:
    explicit Zufallsmodell(std::uint64_t saat) : zufall_(saat) {}

    std::vector<Segment> erzeugen() {
        s_.clear();
        massstab_ = std::pow(10.0, gleich(-3, 3));
        if (ganz(3) == 0) {
            massstab_ = std::ldexp(1.0, static_cast<int>(ganz(12)) - 6); // Zweierpotenz: Gitterpunkte genau
            gitter();
        } else {
            const int draehte = 1 + static_cast<int>(ganz(12));
            for (int i = 0; i < draehte; ++i)
                draht();
        }
        const int grenzfaelle = static_cast<int>(ganz(12));
        for (int i = 0; i < grenzfaelle && !s_.empty(); ++i)
            ganz(2) == 0 ? sprungGrenze() : endeGrenze();
        const int sonderfaelle = static_cast<int>(ganz(4));
        for (int i = 0; i < sonderfaelle && !s_.empty(); ++i)
            sonderfall();
        return s_;
    }

  private:
    double gleich(double a, double b) { return std::uniform_real_distribution<double>(a, b)(zufall_); }
    std::uint64_t ganz(std::uint64_t n) { return zufall_() % n; }

    Punkt3 punkt() {
        // Auf einem groben Gitter, damit sich Enden oft genau treffen.
        const auto k = [&] {
            return ganz(3) == 0 ? std::round(gleich(0, 4)) * massstab_ : gleich(0, 4) * massstab_;
        };
        return {k(), k(), k()};
    }

    Segment zwischen(const Punkt3& p, const Punkt3& q, std::int64_t tag, double radius) {
        const double dx = q[0] - p[0], dy = q[1] - p[1], dz = q[2] - p[2];
        const double l = std::sqrt(dx * dx + dy * dy + dz * dz);
        Segment g;
        g.nummer = static_cast<std::int64_t>(s_.size()) + 1;
        g.tag = tag;
        g.x = (p[0] + q[0]) / 2;
        g.y = (p[1] + q[1]) / 2;
        g.z = (p[2] + q[2]) / 2;
        g.laenge = l;
        g.alpha = l > 0 ? std::asin(dz / l) * 180 / std::numbers::pi : 0;
        g.beta = std::atan2(dy, dx) * 180 / std::numbers::pi;
        g.radius = radius;
        return g;
    }

    double radius() {
        switch (ganz(6)) {
        case 0:
            return 0;
        case 1:
            return gleich(0, 0.0003);
        default:
            return massstab_ * gleich(0, 0.01);
        }
    }

    // Ein Draht aus n Segmenten, oft an einem vorhandenen Ende beginnend.
    void draht() {
        Punkt3 p = punkt();
        if (!s_.empty() && ganz(2) == 0) {
            const auto& g = s_[ganz(s_.size())];
            p = ganz(2) == 0 ? g.enden().first : g.enden().second;
        }
        const Punkt3 q = punkt();
        const int n = 1 + static_cast<int>(ganz(ganz(4) == 0 ? 40 : 6));
        const std::int64_t tag = static_cast<std::int64_t>(ganz(8)) + 1;
        const double r = radius();
        const std::size_t erstes = s_.size();
        for (int i = 0; i < n; ++i) {
            const auto ort = [&](double u) {
                return Punkt3{p[0] + u * (q[0] - p[0]), p[1] + u * (q[1] - p[1]), p[2] + u * (q[2] - p[2])};
            };
            s_.push_back(zwischen(ort(double(i) / n), ort(double(i + 1) / n), tag, r));
        }
        for (std::size_t i = erstes; i < s_.size(); ++i) {
            s_[i].vorher = i == erstes ? verbindung(0) : std::optional<std::int64_t>(s_[i - 1].nummer);
            s_[i].nachher =
                i + 1 == s_.size() ? verbindung(0) : std::optional<std::int64_t>(s_[i + 1].nummer);
        }
    }

    // Achsenparallele Einzelsegmente auf einem Gitter: Enden und Zellgrenzen fallen oft zusammen,
    // und an einem Punkt treffen sich Drähte mit verschiedenen Tags.
    void gitter() {
        const int kanten = 5 + static_cast<int>(ganz(60));
        for (int i = 0; i < kanten; ++i) {
            const auto k = [&] { return static_cast<double>(ganz(5)) * massstab_; };
            const Punkt3 p{k(), k(), k()};
            Punkt3 q = p;
            q[ganz(3)] += ganz(2) == 0 ? massstab_ : -massstab_;
            const double r = ganz(2) == 0 ? 0 : radius();
            Segment g = ganz(2) == 0 ? zwischen(p, q, static_cast<std::int64_t>(ganz(6)) + 1, r)
                                     : zwischen(q, p, static_cast<std::int64_t>(ganz(6)) + 1, r);
            g.vorher = verbindung(0);
            g.nachher = verbindung(0);
            s_.push_back(g);
        }
    }

    std::optional<std::int64_t> verbindung(std::int64_t frei) {
        if (ganz(5) == 0) return std::nullopt;
        if (ganz(5) == 0) return static_cast<std::int64_t>(ganz(s_.size() + 1) + 1);
        return frei;
    }

    // Verschiebt die Mitte des Segments in Schritten von einem ulp, bis das Prädikat
    // kippt, und bleibt zufällig auf der einen oder anderen Seite.
    template <typename Praedikat> void anGrenze(Segment& g, int achse, Praedikat nah) {
        double& m = achse == 0 ? g.x : achse == 1 ? g.y : g.z;
        const bool anfang = nah(g);
        double richtung = anfang ? INFINITY : -INFINITY;
        for (int schritt = 0; schritt < 200; ++schritt) {
            const double vorher = m;
            m = std::nextafter(m, richtung);
            if (nah(g) != anfang) {
                if (ganz(2) == 0) m = vorher;
                return;
            }
        }
    }

    // Ein Segment, dessen Anfang fast genau t = 0,01·Lmin von einem vorhandenen Ende entfernt ist.
    void sprungGrenze() {
        const Segment a = s_[ganz(s_.size())];
        const Punkt3 p = ganz(2) == 0 ? a.enden().first : a.enden().second;
        const double lb = a.laenge * (ganz(2) == 0 ? gleich(0.1, 10) : std::round(gleich(1, 8)));
        if (!(a.laenge > 0) || !(lb > 0)) return;
        const double t = 0.01 * std::min(a.laenge, lb);
        const int achse = static_cast<int>(ganz(3));
        Punkt3 start = p;
        start[achse] += t;
        Punkt3 ende = start;
        ende[(achse + 1) % 3] += lb;
        Segment b = zwischen(start, ende, a.tag + 1, radius());
        b.vorher = 0;
        b.nachher = 0;
        anGrenze(b, achse, [&](const Segment& g) { return abstandRef(p, g.enden().first) < t; });
        s_.push_back(b);
    }

    // Ein Draht, dessen freies Ende fast genau an der Abstandsgrenze eines Segments liegt.
    void endeGrenze() {
        const Segment ziel = s_[ganz(s_.size())];
        const auto [a, b] = ziel.enden();
        const double u = std::array<double, 4>{0, 0.5, 1, gleich(0, 1)}[ganz(4)];
        Punkt3 p{a[0] + u * (b[0] - a[0]), a[1] + u * (b[1] - a[1]), a[2] + u * (b[2] - a[2])};
        const double rf = radius();
        double grenze = rf + ziel.radius;
        if (grenze < 0.0002) grenze = 0.0002;
        const int achse = static_cast<int>(ganz(3));
        p[achse] += grenze;
        Punkt3 q = p;
        q[achse] += massstab_ * gleich(0.1, 1);
        Segment f = zwischen(p, q, ziel.tag + 3, rf);
        f.vorher = 0;
        f.nachher = ganz(2) == 0 ? std::optional<std::int64_t>(0) : std::nullopt;
        if (!std::isfinite(grenze)) {
            s_.push_back(f);
            return;
        }
        anGrenze(f, achse,
                 [&](const Segment& g) { return abstandZurStreckeRef(g.enden().first, ziel) < grenze; });
        s_.push_back(f);
    }

    void sonderfall() {
        Segment g = s_[ganz(s_.size())];
        g.tag += static_cast<std::int64_t>(ganz(2)) * 10;
        switch (ganz(11)) {
        case 0:
            break; // genaue Kopie, gleiche Nummer
        case 1:
            g.nummer = static_cast<std::int64_t>(s_.size()) + 1;
            break;
        case 2:
            g.laenge = 0;
            break;
        case 3:
            g.laenge = -g.laenge;
            break;
        case 4:
            g.x = NAN;
            break;
        case 5:
            g.radius = ganz(2) == 0 ? INFINITY : -INFINITY;
            break;
        case 6:
            g.radius = massstab_ * 1e4;
            break;
        case 7:
            g.x = 1e300;
            break;
        case 8:
            g.laenge *= 1e5;
            break; // sehr lang gegen die anderen
        case 9:
            g.laenge = 1e-300;
            break;
        case 10: { // gleiche Nummer, siebenmal so lang, vom selben Anfang aus
            const auto [a, b] = g.enden();
            g = zwischen(a, {a[0] + 7 * (b[0] - a[0]), a[1] + 7 * (b[1] - a[1]), a[2] + 7 * (b[2] - a[2])},
                         g.tag, g.radius);
            g.nummer = s_.front().nummer;
            break;
        }
        }
        g.vorher = ganz(2) == 0 ? std::optional<std::int64_t>(0) : g.vorher;
        // An beliebiger Stelle: die Listenfolge ist nicht die Folge der Nummern.
        s_.insert(s_.begin() + static_cast<std::ptrdiff_t>(ganz(s_.size() + 1)), g);
    }

    std::mt19937_64 zufall_;
    std::vector<Segment> s_;
    double massstab_ = 1;
};

} // namespace

TEST(Pruefen, RasterFindetGenauDieBefundeAllerPaare) {
    int mitSprung = 0, mitStelle = 0;
    for (std::uint64_t saat = 1; saat <= 400; ++saat) {
        const auto s = Zufallsmodell(saat).erzeugen();
        const double r = MP::laengenSprung(s);
        ASSERT_EQ(r, sprungRef(s)) << "Saat " << saat;
        const auto v = MP::verbindungenPruefen(s);
        ASSERT_EQ(v, verbindungenRef(s)) << "Saat " << saat;
        mitSprung += r > 1;
        mitStelle += !v.empty();
    }
    // Die Modelle sollen die Prüfungen auch auslösen, nicht nur leer durchlaufen.
    EXPECT_GT(mitSprung, 100);
    EXPECT_GT(mitStelle, 100);
}
