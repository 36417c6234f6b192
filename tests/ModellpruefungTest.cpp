#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Json.hpp"

#include <array>
#include <clocale>
#include <cmath>
#include <functional>
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
    return {nummer, tag, mitte[0], mitte[1], mitte[2], laenge, alpha, beta, radius, {}, {}, {}};
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

} // namespace

TEST(Befund, StufeUndGespeicherteForm) {
    EXPECT_EQ(stufeAus(0), Stufe::hinweis);
    EXPECT_EQ(stufeAus(2), Stufe::fehler);
    EXPECT_EQ(stufeAus(3), std::nullopt);
    EXPECT_EQ(stufeAus(-1), std::nullopt);
    Befund b{Stufe::warnung, "Längstes Segment 0.060 λ"};
    EXPECT_EQ(ordered_json(b).dump(), R"({"stufe":1,"text":"Längstes Segment 0.060 λ"})");
    EXPECT_EQ(ordered_json(b).get<Befund>(), b);
    EXPECT_THAT([] { (void)ordered_json::parse(R"({"stufe":3,"text":"x"})").get<Befund>(); },
                testing::ThrowsMessage<DatenFehler>("Befund: eine Stufe 3 gibt es nicht."));
}

// ---- Vorprüfung ----

TEST(Vorpruefung, ErsterGrundJeDeck) {
    const std::string draht = "GW 1 11 0 0 -5 0 0 5 1mm\n", kurz = "GW 1 1 0 0 0 1 0 0 1mm\n";
    const std::string ex = "EX 0 1 1 0 1 0\n", fr = "FR 0 1 0 0 14 0\n", rest = "GE 0\n" + ex + fr;
    // Ein Draht mit Tag 4 vor dem Rest des Decks.
    const auto tag4 = [](const char* gw) {
        return std::string(gw) + "\nGE 0\nEX 0 4 1 0 1 0\nFR 0 1 0 0 14 0\n";
    };
    const std::string nachGE = "Eine Geometriekarte (G…) steht nach GE – Drähte gehören vor die Karte GE.";
    // Variablen vor der kaputten Formel bleiben lesbar, dahinter nicht.
    const std::string variablen = "SY l=5, f=14\nSY kaputt=quatsch\nSY spaet=1\n";
    struct Fall {
        std::string deck;
        std::optional<std::string> satz;
    };
    const Fall faelle[] = {
        {draht + rest, std::nullopt},
        // Reihenfolge der Karten; die Geometrie wird vor der Speisung geprüft.
        {"GE 0\n" + ex + fr, "Kein Draht: Füge eine Karte GW (Draht) hinzu."},
        {kurz + ex + fr, "Karte GE (Geometrie-Ende) fehlt – sie schliesst die Drähte ab."},
        {kurz + "GE 0\nGS 0 0 1\n", nachGE},
        {kurz + "GE 0\n" + fr, "Keine Speisung: Karte EX fehlt – ohne Speisung gibt es keine Impedanz."},
        {kurz + "GE 0\n" + ex, "Karte FR (Frequenz) fehlt."},
        // GN, GD (Klippe, zweites Medium) und ein zweites GE nach GE sind erlaubt.
        {kurz + "GE 1\nGN 1\nGD 0 0 0 0 5 0.001 20 -10\nGE 0\n" + ex + fr, std::nullopt},
        // Unlesbare Felder eines GA stören nicht; die Speisung darf einen erzeugten Tag nennen.
        {"GA foo 12 bar 0 180 1mm\nGE 0\nEX 0 9 1 0 1 0\n" + fr, std::nullopt},
        // Drahtfelder: unlesbar vor zu wenigen Segmenten; fehlende Felder zählen als 0.
        {tag4("GW foo 3 0 0 0 0 0 1 1mm"), "Draht: Feld nicht lesbar (Formel prüfen)."},
        {tag4("GW 4 3 0 0 0 0 0 1 r"), "Draht (Tag 4): Feld nicht lesbar (Formel prüfen)."},
        {tag4("GW 4 0 x"), "Draht (Tag 4): Feld nicht lesbar (Formel prüfen)."},
        {tag4("GW"), "Draht (Tag 0) braucht mindestens 1 Segment."},
        {tag4("GW 4 3 1 2 3 1 2 3 1mm"),
         "Draht (Tag 4) hat die Länge 0 – Anfangs- und Endpunkt sind gleich."},
        {tag4("GW 4 3 0 0 0 0 0 1 -1mm"), "Draht (Tag 4) braucht einen Radius grösser als 0."},
        {variablen + "GW 1 3 0 0 0 0 0 l 1mm\nGE 0\n" + ex + "FR 0 1 0 0 f 0\n", std::nullopt},
        {variablen + "GW 1 3 0 0 0 0 0 spaet 1mm\nGE 0\n" + ex + fr,
         "Draht (Tag 1): Feld nicht lesbar (Formel prüfen)."},
        // Ganzzahlfelder gerundet wie im Rechendeck: 11.5 wird 12, -0.5 wird -1.
        {"SY n=11\nGW 1 n 0 0 -5 0 0 5 1mm\nGE 0\nEX 0 1 n+0.5 0 1 0\n" + fr,
         "Speisung: Draht 1 hat 11 Segmente, Segment 12 gibt es nicht."},
        {"GW -0.5 0.5 0 0 -5 0 0 5 1mm\n" + rest,
         "Speisung auf Draht 1 – einen Draht mit diesem Tag gibt es nicht."},
        // Speisung: nur Spannungsquellen (0 und 5) mit lesbaren Feldern und Tag über 0.
        {draht + "GE 0\nEX 5 1 0 0 1 0\n" + fr,
         "Speisung: Draht 1 hat 11 Segmente, Segment 0 gibt es nicht."},
        {draht + "GE 0\nEX 0 7 x 0 1 0\n" + fr, std::nullopt},
        {draht + "GE 0\nEX 1 7 1 0 1 0\nEX 0 1 99 0 1 0\nEX 0 8 1 0 1 0\n" + fr,
         "Speisung: Draht 1 hat 11 Segmente, Segment 99 gibt es nicht."},
        // Ein späteres GW mit demselben Tag gilt.
        {draht + "GW 1 21 1 0 -5 1 0 5 1mm\nGE 0\nEX 0 1 15 0 1 0\n" + fr, std::nullopt},
        // Drei Kopien mit Tag-Zuwachs 0: Tag 1 hat 44 Segmente.
        {draht + "GM 0 3 0 0 0 1 0 0 0\nGE 0\nEX 0 1 44 0 1 0\n" + fr, std::nullopt},
        {draht + "GM 0 3 0 0 0 1 0 0 0\nGE 0\nEX 0 1 45 0 1 0\n" + fr,
         "Speisung: Draht 1 hat 44 Segmente, Segment 45 gibt es nicht."},
        // Frequenz; die Speisung kommt vor ihr.
        {draht + "GE 0\nEX 0 1 6 0 1 0\nFR 0 1 0 0 0 0\n", "Frequenz muss grösser als 0 MHz sein."},
        {draht + "GE 0\nEX 0 1 6 0 1 0\nFR 0 1 0 0 0.001 0\n", std::nullopt},
        {draht + "GE 0\nEX 0 1 99 0 1 0\nFR 0 1 0 0 0 0\n",
         "Speisung: Draht 1 hat 11 Segmente, Segment 99 gibt es nicht."},
    };
    for (const auto& f : faelle)
        EXPECT_EQ(MP::vorpruefen(deck(f.deck)), f.satz) << f.deck;
}

TEST(Vorpruefung, ErzeugteTagsNurOhneTagKarten) {
    // Mit einer Karte, die Tags erzeugt, darf die Speisung einen unbekannten Tag nennen, aber
    // ein bekannter Draht wird weiter auf seine Segmentzahl geprüft.
    for (const char* karte : {"GM 1 1 0 0 0 1 0 0 0\n", "GR 1 4\n", "GX 1 100\n", "GA 5 12 0.5 0 180 1mm\n",
                              "GH 5 40 1 1 1 1 1 1 1mm 0\n"}) {
        const auto mit = [&](const char* ex) {
            return MP::vorpruefen(deck(std::string("GW 1 11 0 0 -5 0 0 5 1mm\n") + karte + "GE 0\n" + ex +
                                       "FR 0 1 0 0 14 0\n"));
        };
        EXPECT_EQ(mit("EX 0 7 1 0 1 0\n"), std::nullopt) << karte;
        EXPECT_EQ(mit("EX 0 1 12 0 1 0\n"), "Speisung: Draht 1 hat 11 Segmente, Segment 12 gibt es nicht.")
            << karte;
    }
}

TEST(Vorpruefung, UmfangUndLageNachKopienUndSymmetrie) {
    const std::string zuViele =
        " – so viele lassen sich in den 5 Minuten, die ein Lauf dauern darf, nicht rechnen; "
        "höchstens 12000 ";
    const std::string zuWeit = " – mehr als 100 km ist kein Antennenmass, Masse und Einheiten prüfen.";
    struct Fall {
        std::string geometrie;
        std::optional<std::string> satz;
    };
    const Fall faelle[] = {
        {"GW 1 1 0 0 0 0 0 1 1mm\nGM 0 1000000000 0 0 0 0 0 1 0\n",
         "Die Karte GM erzeugt mehr Drähte, als sich rechnen lassen – die Zahl der Kopien oder Segmente "
         "verkleinern."},
        {"GW 1 12001 0 0 0 0 0 1200 1mm\n",
         "Das Modell hat 12001 Segmente" + zuViele + "Segmente verwenden."},
        {"GW 1 3500 1 0 0 1 0 350 1mm\nGR 1 12\n",
         "Das Modell hat 42000 Segmente – so viele lassen sich in den 5 Minuten, die ein Lauf dauern darf, "
         "nicht rechnen; höchstens 41569 Segmente verwenden (bei 12-facher Symmetrie)."},
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
        const auto m = deck(f.geometrie + "GE 0\nEX 0 1 1 0 1 0\nFR 0 1 0 0 14 0\n");
        EXPECT_EQ(MP::umfangPruefen(m), f.satz) << f.geometrie;
        EXPECT_EQ(MP::vorpruefen(m), f.satz) << f.geometrie;
    }
}

TEST(Vorpruefung, LangeRechnungIstEinBefund) {
    const auto dauer = [](const char* gw, const char* fr) {
        return MP::dauerBefund(deck(std::string(gw) + "GE 0\n" + fr));
    };
    EXPECT_EQ(dauer("GW 1 3000 0 0 0 0 0 300 1mm\n", "FR 0 1 0 0 14 0\n"), std::nullopt);
    EXPECT_EQ(dauer("GW 1 4500 0 0 0 0 0 450 1mm\n", "FR 0 1 0 0 14 0\n"),
              (Befund{Stufe::hinweis, "Das Modell hat 4500 Segmente – nec2c rechnet daran etwa 64 s."}));
    EXPECT_EQ(
        dauer("GW 1 4500 0 0 0 0 0 450 1mm\n", "FR 0 6 0 0 14 1\n"),
        (Befund{Stufe::warnung, "Das Modell hat 4500 Segmente – nec2c rechnet daran etwa 6 min (64 s je "
                                "Frequenz), länger als die 5 Minuten, nach denen ein Lauf abbricht – "
                                "weniger Frequenzen oder Segmente wählen."}));
}

// ---- Befunde nach dem Rechnen ----

TEST(Pruefen, OhneSegmenteOderFrequenzKeineBefunde) {
    const std::vector<Segment> eins{segment(1, 1, {0, 0, 0}, 1, 0.1)};
    EXPECT_TRUE(MP::pruefen({}, 14).empty());
    EXPECT_TRUE(MP::pruefen(eins, 0).empty());
    EXPECT_TRUE(MP::pruefen(eins, std::nan("")).empty());
}

TEST(Pruefen, GrenzenVonLaengeVerhaeltnisUndRadius) {
    const auto ueber = [](double x) { return std::nextafter(x, 1.0); };
    const auto unter = [](double x) { return std::nextafter(x, 0.0); };
    const auto warnung = [](std::string t) { return Befund{Stufe::warnung, std::move(t)}; };
    const std::string ungenau = " λ – für genaue Impedanzen unter 0,05 λ bleiben.";
    const std::string abweichend = " × Radius – unter 8 weicht die Impedanz ab.";
    const std::string dick =
        " λ): verschiedene Rechenkerne weichen beim Blindanteil um einige Ω ab – Ergebnis "
        "mit einem zweiten Kern vergleichen.";
    struct Fall {
        double laenge, radius;
        const char* anfang;
        std::optional<Befund> befund;
    };
    const Fall faelle[] = {
        {0.05, 0, "Längstes", {}},
        {ueber(0.05), 0, "Längstes", warnung("Längstes Segment 0.050" + ungenau)},
        {0.1, 0, "Längstes", warnung("Längstes Segment 0.100" + ungenau)},
        {ueber(0.1), 0, "Segment bis",
         Befund{Stufe::fehler,
                "Segment bis 0.100 λ lang – NEC verlangt unter 0,1 λ (besser unter 0,05 λ). Mehr Segmente."}},
        {0.001, 0, "Kürzestes", {}},
        {unter(0.001), 0, "Kürzestes",
         warnung("Kürzestes Segment 0.00100 λ – unter 0,001 λ wird NEC numerisch ungenau.")},
        {0.008, 0.001, "Segmentlänge", {}},
        {unter(0.008), 0.001, "Segmentlänge", warnung("Segmentlänge 8.0" + abweichend)},
        {0.002, 0.001, "Segmentlänge", warnung("Segmentlänge 2.0" + abweichend)},
        {unter(0.002), 0.001, "Segmentlänge",
         Befund{Stufe::fehler, "Segmentlänge nur 2.0 × Radius – Dünndraht-Näherung ungültig (mindestens 2, "
                               "besser über 8)."}},
        {0.04, 0.002, "Dicker", {}},
        {0.04, ueber(0.002), "Dicker", Befund{Stufe::hinweis, "Dicker Draht (0.0020" + dick}},
        {0.04, 0.01, "Dicker", Befund{Stufe::hinweis, "Dicker Draht (0.0100" + dick}},
        {0.04, ueber(0.01), "Drahtradius",
         warnung("Drahtradius 0.0100 λ – über 0,01 λ ist das Dünndrahtmodell grob.")},
    };
    for (const auto& f : faelle) {
        // Vorn zwei Segmente mit Radius 0 und negativ: sie zählen beim Verhältnis nicht mit, und
        // ein späteres Segment ersetzt den grössten oder kleinsten Wert.
        const std::vector<Segment> s{segment(1, 1, {1, 0, 0}, 0.01, 0), segment(2, 1, {2, 0, 0}, 0.01, -1),
                                     segment(3, 1, {0, 0, 0}, f.laenge, f.radius)};
        EXPECT_EQ(befundMit(MP::pruefen(s, einMeter), f.anfang), f.befund) << f.anfang << " " << f.laenge;
    }
}

TEST(Pruefen, ReihenfolgeDerBefundeUndZahlenMitPunktAuchUnterDeutschemGebietsschema) {
    // Zu langes Segment, kurzes Verhältnis zum Radius, dicker Draht und ein Längensprung 10.
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
    const bool deutsch = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    const auto befunde = MP::pruefen(s, einMeter);
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(befunde, erwartet);
    if (!deutsch) GTEST_SKIP() << "Umgebung de_DE.UTF-8 fehlt";
}

TEST(Pruefen, LaengensprungGenauFuenfIstKeinBefund) {
    const std::vector<Segment> fuenf{segment(1, 1, {-0.0625, 0, 0}, 0.125, 0),
                                     segment(2, 2, {0.3125, 0, 0}, 0.625, 0)};
    EXPECT_EQ(MP::laengenSprung(fuenf), 5.0);
    EXPECT_EQ(befundMit(MP::pruefen(fuenf, 14), "An einer"), std::nullopt);
}

TEST(Pruefen, EndeAufDerMitteEinesAnderenDrahts) {
    // Draht 2 endet bei (0, y, 0) über der Mitte des einzigen Segments von Draht 1.
    const auto pruefe = [](double y) {
        auto s = drahtX(1, 1, -0.5, 1, 1);
        s[0].vorher.reset();
        s[0].nachher.reset();
        auto zwei = drahtX(5, 2, -1, 1, 4, y);
        s.insert(s.end(), zwei.begin(), zwei.end());
        return MP::verbindungenPruefen(s);
    };
    const std::vector<Befund> gefunden{
        {Stufe::fehler,
         "Draht 2 endet auf Draht 1, ist dort aber nicht verbunden (1 Stelle(n)) – NEC verbindet nur "
         "an Segmentenden. Segmentzahl so wählen, dass am Anschlusspunkt ein Segmentende liegt."}};
    EXPECT_EQ(pruefe(std::nextafter(0.0002, 0.0)), gefunden);
    EXPECT_TRUE(pruefe(0.0002).empty());
}

TEST(BodenPruefen, UntereEndenGegenMikrometer) {
    const auto boden = [](double z, double alpha) {
        const std::vector<Segment> s{segment(1, 1, {0, 0, z}, 1, 0.001, alpha)};
        return MP::bodenPruefen(s, true).size();
    };
    EXPECT_EQ(boden(-1e-6, 0), 0u);
    // Senkrecht: das untere Ende zählt, gleich ob alpha 90 oder -90.
    EXPECT_EQ(boden(0.49, 90), 1u);
    EXPECT_EQ(boden(0.49, -90), 1u);
    const std::vector<Segment> drei{segment(1, 1, {0, 0, -1}, 1, 0), segment(2, 1, {0, 0, 1}, 1, 0),
                                    segment(3, 1, {0, 0, -3}, 1, 0)};
    EXPECT_EQ(MP::bodenPruefen(drei, true),
              (std::vector<Befund>{{Stufe::fehler, "2 Segment(e) liegen unter der Erdoberfläche (z < 0) – "
                                                   "über Boden nicht zulässig."}}));
    EXPECT_TRUE(MP::bodenPruefen(drei, false).empty());
}

// ---- Meldungen des Kerns ----

TEST(NecMeldung, UeberschriftNachStichwort) {
    const std::string draehte = "Fehler in den Drähten (Lage, Verbindung, Segmente). NEC meldet: ";
    const std::string nicht = "NEC hat das Modell nicht gerechnet. NEC meldet: ";
    struct Fall {
        const char* text;
        std::string erwartet;
    };
    const Fall faelle[] = {
        {"\n  GEOMETRY DATA CARD ERROR \n", draehte + "GEOMETRY DATA CARD ERROR"},
        {"error in excitation", "Fehler bei der Speisung (EX). NEC meldet: error in excitation"},
        {"LOADING ERROR", "Fehler bei einer Last (LD). NEC meldet: LOADING ERROR"},
        {"transmission line", "Fehler bei Leitung oder Netzwerk (TL/NT). NEC meldet: transmission line"},
        {"ground parameters", "Fehler beim Boden (GN). NEC meldet: ground parameters"},
        {"memory allocation failed",
         "Das Modell ist ungültig oder zu gross. NEC meldet: memory allocation failed"},
        // Reihenfolge der Tabelle: SEGMENT vor LOAD
        {"LOAD ON SEGMENT 3", draehte + "LOAD ON SEGMENT 3"},
        {" \t\n", nicht},
        // Unicode-Grossschreibung: das lange s wird zu S
        {"ſegment", draehte + "ſegment"},
        {"\u00a0kaputt\u2003", nicht + "kaputt"},
        {"a\xff", nicht + "a\xef\xbf\xbd"},
    };
    for (const auto& f : faelle)
        EXPECT_EQ(MP::necMeldung(f.text), f.erwartet) << f.text;
}

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

// ---- Neue Karten ----

TEST(NeueKarte, VorgabenJeTyp) {
    const Modell m = deck("GW 3 5 0 0 0 0 0 1 1mm\nGA 7 12 0.5 0 180 1mm\nGW x 5 0 0 0 0 0 1 1mm\nGE 0\n");
    using Felder = std::vector<std::string>;
    const Karte gw = MP::neueKarte("GW", m);
    EXPECT_EQ(gw.ganz, (Felder{"8", "11"}));
    EXPECT_EQ(gw.reell, (Felder{"4", "-0.5", "1", "4", "0.5", "1", "1mm"}));
    EXPECT_EQ(MP::neueKarte("EX", m).ganz, (Felder{"0", "3", "3", "0"}));
    // Übrige Typen: so viele Nullen, wie die Karte Felder hat.
    const Karte ne = MP::neueKarte("NE", m);
    EXPECT_EQ(ne.ganz, Felder(4, "0"));
    EXPECT_EQ(ne.reell, Felder(6, "0"));
    const auto ex = [](const char* text) { return MP::neueKarte("EX", deck(text)).ganz; };
    // Ohne Draht Tag 1; der erste Draht zählt, auch wenn er unlesbar ist; Segmentmitte bei
    // gerader Zahl nach unten; negative Tags: der nächste ist trotzdem 1.
    EXPECT_EQ(MP::neueKarte("GW", Modell{}).ganz, (Felder{"1", "11"}));
    EXPECT_EQ(ex(""), (Felder{"0", "1", "1", "0"}));
    EXPECT_EQ(ex("GW foo 5\nGW 2 5\n"), (Felder{"0", "1", "1", "0"}));
    EXPECT_EQ(ex("GW 4 10\n"), (Felder{"0", "4", "5", "0"}));
    EXPECT_EQ(ex("GW 4 n\n"), (Felder{"0", "4", "1", "0"}));
    EXPECT_EQ(MP::neueKarte("GH", deck("GW -3 5\n")).ganz[0], "1");
}

// ---- Raster gegen den Vergleich aller Paare ----

namespace {

// Beide Prüfungen wörtlich über alle Paare, quadratisch, als Massstab.
double abstandRef(const Punkt3& a, const Punkt3& b) {
    const double dx = a[0] - b[0], dy = a[1] - b[1], dz = a[2] - b[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

// p + u·(q − p), mit genau diesen Rechenschritten.
Punkt3 aufGerade(const Punkt3& p, const Punkt3& q, double u) {
    return {p[0] + u * (q[0] - p[0]), p[1] + u * (q[1] - p[1]), p[2] + u * (q[2] - p[2])};
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
                const double grenze = std::max(f.radius + g.radius, 0.0002);
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
        massstab_ = std::pow(10.0, gleich(-3, 3));
        if (ganz(3) == 0) {
            massstab_ = std::ldexp(1.0, static_cast<int>(ganz(12)) - 6); // Zweierpotenz: Gitterpunkte genau
            for (int i = 5 + static_cast<int>(ganz(60)); i > 0; --i)
                gitterkante();
        } else {
            for (int i = 1 + static_cast<int>(ganz(12)); i > 0; --i)
                draht();
        }
        for (int i = static_cast<int>(ganz(12)); i > 0 && !s_.empty(); --i)
            ganz(2) == 0 ? sprungGrenze() : endeGrenze();
        for (int i = static_cast<int>(ganz(4)); i > 0 && !s_.empty(); --i)
            sonderfall();
        return s_;
    }

  private:
    using Verbindung = std::optional<std::int64_t>;

    double gleich(double a, double b) { return std::uniform_real_distribution<double>(a, b)(zufall_); }
    std::uint64_t ganz(std::uint64_t n) { return zufall_() % n; }
    std::int64_t tag(std::uint64_t n) { return static_cast<std::int64_t>(ganz(n)) + 1; }
    const Segment& irgendeins() { return s_[ganz(s_.size())]; }
    Punkt3 irgendeinEnde(const Segment& g) { return ganz(2) == 0 ? g.enden().first : g.enden().second; }

    Segment zwischen(const Punkt3& p, const Punkt3& q, std::int64_t tag, double radius) {
        const double dx = q[0] - p[0], dy = q[1] - p[1], dz = q[2] - p[2];
        const double l = std::sqrt(dx * dx + dy * dy + dz * dz);
        Segment g = segment(static_cast<std::int64_t>(s_.size()) + 1, tag,
                            {(p[0] + q[0]) / 2, (p[1] + q[1]) / 2, (p[2] + q[2]) / 2}, l, radius);
        g.alpha = l > 0 ? std::asin(dz / l) * 180 / std::numbers::pi : 0;
        g.beta = std::atan2(dy, dx) * 180 / std::numbers::pi;
        return g;
    }

    double radius() {
        const auto art = ganz(6);
        return art == 0 ? 0 : art == 1 ? gleich(0, 0.0003) : massstab_ * gleich(0, 0.01);
    }

    // Frei (0), unbekannt oder auf ein beliebiges Segment.
    Verbindung verbindung() {
        if (ganz(5) == 0) return std::nullopt;
        if (ganz(5) == 0) return static_cast<std::int64_t>(ganz(s_.size() + 1) + 1);
        return 0;
    }

    // Ein Draht aus n Segmenten zwischen Punkten eines groben Gitters, oft an einem vorhandenen Ende.
    void draht() {
        const auto k = [&] { return (ganz(3) == 0 ? std::round(gleich(0, 4)) : gleich(0, 4)) * massstab_; };
        const auto punkt = [&] { return Punkt3{k(), k(), k()}; };
        const Punkt3 p = !s_.empty() && ganz(2) == 0 ? irgendeinEnde(irgendeins()) : punkt();
        const Punkt3 q = punkt();
        const int n = 1 + static_cast<int>(ganz(ganz(4) == 0 ? 40 : 6));
        const std::int64_t t = tag(8);
        const double r = radius();
        const std::size_t erstes = s_.size();
        for (int i = 0; i < n; ++i)
            s_.push_back(zwischen(aufGerade(p, q, double(i) / n), aufGerade(p, q, double(i + 1) / n), t, r));
        for (std::size_t i = erstes; i < s_.size(); ++i) {
            s_[i].vorher = i == erstes ? verbindung() : Verbindung(s_[i - 1].nummer);
            s_[i].nachher = i + 1 == s_.size() ? verbindung() : Verbindung(s_[i + 1].nummer);
        }
    }

    // Ein achsenparalleles Einzelsegment auf einem Gitter: Enden und Zellgrenzen fallen oft
    // zusammen, und an einem Punkt treffen sich Drähte mit verschiedenen Tags.
    void gitterkante() {
        const auto k = [&] { return static_cast<double>(ganz(5)) * massstab_; };
        const Punkt3 p{k(), k(), k()};
        Punkt3 q = p;
        q[ganz(3)] += ganz(2) == 0 ? massstab_ : -massstab_;
        const double r = ganz(2) == 0 ? 0 : radius();
        Segment g = ganz(2) == 0 ? zwischen(p, q, tag(6), r) : zwischen(q, p, tag(6), r);
        g.vorher = verbindung();
        g.nachher = verbindung();
        s_.push_back(g);
    }

    // Verschiebt die Mitte des Segments in Schritten von einem ulp, bis das Prädikat
    // kippt, und bleibt zufällig auf der einen oder anderen Seite.
    template <typename Praedikat> void anGrenze(Segment& g, int achse, Praedikat nah) {
        double& m = achse == 0 ? g.x : achse == 1 ? g.y : g.z;
        const bool anfang = nah(g);
        for (int schritt = 0; schritt < 200; ++schritt) {
            const double vorher = m;
            m = std::nextafter(m, anfang ? INFINITY : -INFINITY);
            if (nah(g) != anfang) {
                if (ganz(2) == 0) m = vorher;
                return;
            }
        }
    }

    // Ein Segment, dessen Anfang fast genau t = 0,01·Lmin von einem vorhandenen Ende entfernt ist.
    void sprungGrenze() {
        const Segment a = irgendeins();
        const Punkt3 p = irgendeinEnde(a);
        const double lb = a.laenge * (ganz(2) == 0 ? gleich(0.1, 10) : std::round(gleich(1, 8)));
        if (!(a.laenge > 0) || !(lb > 0)) return;
        const double t = 0.01 * std::min(a.laenge, lb);
        const int achse = static_cast<int>(ganz(3));
        Punkt3 start = p, ende;
        start[achse] += t;
        ende = start;
        ende[(achse + 1) % 3] += lb;
        Segment b = zwischen(start, ende, a.tag + 1, radius());
        b.vorher = b.nachher = 0;
        anGrenze(b, achse, [&](const Segment& g) { return abstandRef(p, g.enden().first) < t; });
        s_.push_back(b);
    }

    // Ein Draht, dessen freies Ende fast genau an der Abstandsgrenze eines Segments liegt.
    void endeGrenze() {
        const Segment ziel = irgendeins();
        const auto [a, b] = ziel.enden();
        const double u = std::array<double, 4>{0, 0.5, 1, gleich(0, 1)}[ganz(4)];
        Punkt3 p = aufGerade(a, b, u);
        const double rf = radius();
        const double grenze = std::max(rf + ziel.radius, 0.0002);
        const int achse = static_cast<int>(ganz(3));
        p[achse] += grenze;
        Punkt3 q = p;
        q[achse] += massstab_ * gleich(0.1, 1);
        Segment f = zwischen(p, q, ziel.tag + 3, rf);
        f.vorher = 0;
        f.nachher = ganz(2) == 0 ? Verbindung(0) : std::nullopt;
        if (std::isfinite(grenze))
            anGrenze(f, achse,
                     [&](const Segment& g) { return abstandZurStreckeRef(g.enden().first, ziel) < grenze; });
        s_.push_back(f);
    }

    // Eine veränderte Kopie an beliebiger Stelle: die Listenfolge ist nicht die Folge der Nummern.
    void sonderfall() {
        Segment g = irgendeins();
        g.tag += static_cast<std::int64_t>(ganz(2)) * 10;
        const auto neu = static_cast<std::int64_t>(s_.size()) + 1;
        const std::function<void(Segment&)> arten[] = {
            [](Segment&) {}, // genaue Kopie, gleiche Nummer
            [&](Segment& k) { k.nummer = neu; },
            [](Segment& k) { k.laenge = 0; },
            [](Segment& k) { k.laenge = -k.laenge; },
            [](Segment& k) { k.x = NAN; },
            [&](Segment& k) { k.radius = ganz(2) == 0 ? INFINITY : -INFINITY; },
            [&](Segment& k) { k.radius = massstab_ * 1e4; },
            [](Segment& k) { k.x = 1e300; },
            [](Segment& k) { k.laenge *= 1e5; }, // sehr lang gegen die anderen
            [](Segment& k) { k.laenge = 1e-300; },
            [&](Segment& k) { // gleiche Nummer, siebenmal so lang, vom selben Anfang aus
                const auto [a, b] = k.enden();
                k = zwischen(a, aufGerade(a, b, 7), k.tag, k.radius);
                k.nummer = s_.front().nummer;
            },
        };
        arten[ganz(std::size(arten))](g);
        g.vorher = ganz(2) == 0 ? Verbindung(0) : g.vorher;
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
