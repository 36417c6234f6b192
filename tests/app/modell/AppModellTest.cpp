#include "AppTestHilfen.hpp"

#include "NECKern/Beispiele.hpp"
#include "NECKern/Modellpruefung.hpp"

#include <QSignalSpy>

#include <array>
#include <fmt/format.h>
#include <gtest/gtest.h>

using namespace NECKern;
using AppTestHilfen::AppTest;
using AppTestHilfen::warten;
using TestHilfen::KernAttrappe;

namespace {

// Das Startmodell mit einem anderen Wert der ersten Variablen.
Modell abgewandelt(Modell m, double wert) {
    m.variablen.front().ausdruck = fmt::format("{}", wert);
    return m;
}

} // namespace

class AppModellRechengang : public AppTest {};

TEST_F(AppModellRechengang, FuenfAenderungenKurzNacheinanderRechnenEinmalMitDerLetzten) {
    auto app = anwendung();
    std::vector<std::string> decks;
    for (int i = 0; i < 5; ++i) {
        auto m = abgewandelt(app->modell(), 14.0 + i * 0.01);
        decks.push_back(m.deck());
        app->setModell(m);
        QTest::qWait(100);
    }
    ASSERT_TRUE(fertig(*app));
    QTest::qWait(400);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(laeufeMit(*haupt, decks[i]), 0) << i;
    EXPECT_EQ(laeufeMit(*haupt, decks[4]), 1);
}

TEST_F(AppModellRechengang, GleichesModellRechnetNicht_OhneAutomatikNurBeispiel) {
    auto app = anwendung();
    QSignalSpy geaendert(app.get(), &AppModell::modellGeaendert);
    app->setModell(app->modell());
    app->setAutomatisch(false);
    app->setModell(abgewandelt(app->modell(), 14.2));
    QTest::qWait(500);
    EXPECT_EQ(geaendert.count(), 1);
    EXPECT_TRUE(haupt->laeufe().empty());
    EXPECT_FALSE(app->ergebnis());

    const auto beispiel = Beispiele::alle().front().modell();
    app->beispiel(beispiel);
    ASSERT_TRUE(fertig(*app));
    EXPECT_EQ(laeufeMit(*haupt, beispiel.deck()), 1);
}

TEST_F(AppModellRechengang, OhneVerfuegbarenKernRechnetNec2c) {
    kerne = {nec2c, haupt, AppTestHilfen::externerKern(temp.ordner() / "fehlt")};
    auto app = anwendung("zirkon");
    app->rechnen(false);
    ASSERT_TRUE(fertig(*app));
    EXPECT_FALSE(app->gegenprobe()) << "nec2c prüft sich nicht selbst";
    EXPECT_EQ(laeufeMit(*nec2c, app->modell().deck()), 1);
    EXPECT_TRUE(haupt->laeufe().empty());
}

TEST_F(AppModellRechengang, FrequenzwahlBleibtInnerhalbDesNeuenErgebnisses) {
    // Ohne Frequenz lehnt der Kern den Lauf mit einer Warnung ab.
    haupt->warnungen = {"NO SEGMENT HAS AN ITAG OF 7"};
    // Gewählter Index vorher, Zahl der Frequenzen, Index nachher.
    const std::array<int, 3> faelle[] = {{7, 3, 2}, {1, 3, 1}, {5, 0, 0}};
    for (const auto& [vorher, frequenzen, nachher] : faelle) {
        auto app = anwendung();
        app->setAutomatisch(false);
        app->setModell(AppTestHilfen::mitFrequenzen(app->modell(), frequenzen));
        app->setFrequenzIndex(vorher);
        app->rechnen(false);
        ASSERT_TRUE(warten([&] { return app->ergebnis() && !app->rechnetGerade(); }));
        EXPECT_EQ(app->frequenzIndex(), nachher) << vorher << " bei " << frequenzen;
        if (frequenzen == 0) {
            EXPECT_EQ(app->fehler(), Modellpruefung::necMeldung("NO SEGMENT HAS AN ITAG OF 7"));
            EXPECT_EQ(app->aktuell(), nullptr);
        }
    }
}

TEST_F(AppModellRechengang, BefundeStammenVonDerLetztenFrequenz) {
    haupt->antwort = [](double mhz, std::string_view deck) {
        auto f = KernAttrappe::standard(mhz, deck);
        // Erst die letzte Frequenz hat zu lange Segmente.
        f.segmente = AppTestHilfen::draht(mhz > 14.15 ? 5.0 : 0.5);
        return f;
    };
    auto app = anwendung();
    app->setAutomatisch(false);
    app->setModell(AppTestHilfen::mitFrequenzen(app->modell(), 3));
    app->rechnen(false);
    ASSERT_TRUE(fertig(*app));
    const auto& letzte = app->ergebnis()->frequenzen.back();
    auto erwartet = Modellpruefung::pruefen(letzte.segmente, letzte.mhz);
    auto boden = Modellpruefung::bodenPruefen(letzte.segmente, letzte.mitBoden);
    erwartet.insert(erwartet.end(), boden.begin(), boden.end());
    EXPECT_FALSE(erwartet.empty());
    EXPECT_EQ(app->befunde(), erwartet);
    EXPECT_NE(app->befunde(), Modellpruefung::pruefen(app->ergebnis()->frequenzen.front().segmente, 14.0));
}

TEST_F(AppModellRechengang, GegenprobeNurMitAnderemKernUndNieAlsMeldung) {
    struct Fall {
        const char* kennung;
        bool nec2cScheitert;
        bool gegenprobe;
    };
    for (const auto& f :
         {Fall{"nec2c", false, false}, Fall{"attrappe", true, false}, Fall{"attrappe", false, true}}) {
        nec2c->fehler = [=](double, int) { return std::string(f.nec2cScheitert ? "nec2c: kaputt" : ""); };
        auto app = anwendung(f.kennung);
        app->rechnen(false);
        ASSERT_TRUE(fertig(*app));
        EXPECT_FALSE(app->fehler()) << f.kennung;
        EXPECT_EQ(app->gegenprobe().has_value(), f.gegenprobe) << f.kennung << " " << f.nec2cScheitert;
    }
}

TEST_F(AppModellRechengang, VorpruefungRaeumtDasErgebnisAb) {
    auto app = anwendung();
    app->rechnen(false);
    ASSERT_TRUE(fertig(*app));
    auto m = app->modell();
    m.karten.clear();
    app->setModell(m);
    ASSERT_TRUE(warten([&] { return !app->ergebnis(); }));
    EXPECT_EQ(app->fehler(), Modellpruefung::vorpruefen(m));
    EXPECT_TRUE(app->befunde().empty());
    EXPECT_FALSE(app->rechnetGerade());
}

TEST_F(AppModellRechengang, KernfehlerLaesstDasVorigeErgebnisStehen) {
    auto app = anwendung();
    app->rechnen(false);
    ASSERT_TRUE(fertig(*app));
    const auto vorher = app->ergebnis();
    haupt->fehler = [](double, int) { return std::string("Attrappe: kaputt"); };
    app->rechnen(false);
    ASSERT_TRUE(warten([&] { return app->fehler().has_value(); }));
    EXPECT_EQ(app->fehler(), "Attrappe: kaputt");
    EXPECT_EQ(app->ergebnis(), vorher);
}

class AppModellDokument : public AppTest {};

TEST_F(AppModellDokument, BeispielSetztBandUndZieleNachSeinerStartfrequenz) {
    auto app = anwendung();
    auto m = Beispiele::alle().front().modell();
    m.variablen.front().ausdruck = "14.0";
    app->beispiel(m);
    EXPECT_DOUBLE_EQ(app->gangVon(), 13.44);
    EXPECT_DOUBLE_EQ(app->gangBis(), 14.56);
    for (const auto& z : app->ziele())
        EXPECT_EQ(z.mhz, 14.0);
    EXPECT_EQ(app->beispielVorlage(), m);
    EXPECT_FALSE(app->geaendert());
    EXPECT_FALSE(app->kannRueckgaengig());
}

TEST_F(AppModellDokument, OeffnenBenenntNachDerDateiUndSichernSchlaegtDenNamenVor) {
    auto app = anwendung();
    const auto pfad = temp.ordner() / "Dipol.nec";
    std::ofstream(pfad)
        << "CM Dipol\nCE\nGW 1 21 0 -5 10 0 5 10 0.001\nGE 0\nEX 0 1 11 0 1 0\nFR 0 1 0 0 14 0\nEN\n";
    EXPECT_FALSE(app->oeffnen(temp.ordner() / "fehlt.nec"));
    EXPECT_TRUE(app->beispielVorlage());

    ASSERT_TRUE(app->oeffnen(pfad));
    EXPECT_EQ(app->modell().name, "Dipol");
    EXPECT_FALSE(app->beispielVorlage());
    EXPECT_EQ(app->datei(), pfad);
    ASSERT_TRUE(fertig(*app));

    std::vector<std::string> vorschlaege;
    OptionalerPfad antwort = temp.ordner() / "neu.nec";
    app->setDateiwahl([&](bool speichern, const std::string& vorschlag) {
        EXPECT_TRUE(speichern);
        vorschlaege.push_back(vorschlag);
        return antwort;
    });
    app->speichern(false); // die geöffnete Datei, ohne zu fragen
    app->speichern(true);
    EXPECT_EQ(vorschlaege, std::vector<std::string>{"Dipol.nec"});
    EXPECT_EQ(app->datei(), antwort);
    EXPECT_EQ(TestHilfen::dateiLesen(*antwort), app->modell().schreiben());

    // Ein misslungenes Schreiben ändert nichts und meldet nichts.
    auto m = app->modell();
    m.z0 = 75;
    app->setModell(m);
    antwort = temp.ordner() / "gibt-es-nicht" / "x.nec";
    app->speichern(true);
    EXPECT_EQ(app->datei(), temp.ordner() / "neu.nec");
    EXPECT_TRUE(app->geaendert());
    EXPECT_FALSE(app->fehler());
}

TEST_F(AppModellDokument, RueckgaengigUndWiederholenRechnenWieJedeAenderung) {
    auto app = anwendung();
    const auto a = app->modell();
    const auto b = abgewandelt(a, 14.1);
    const auto c = abgewandelt(a, 14.2);
    app->setModell(b);
    app->setModell(c);
    EXPECT_TRUE(app->geaendert());
    QSignalSpy wiederholbar(app.get(), &AppModell::kannWiederholenGeaendert);
    app->rueckgaengig();
    EXPECT_EQ(app->modell(), b);
    EXPECT_TRUE(app->kannWiederholen());
    EXPECT_EQ(wiederholbar.count(), 1);
    app->rueckgaengig();
    EXPECT_EQ(app->modell(), a);
    EXPECT_FALSE(app->kannRueckgaengig());
    EXPECT_FALSE(app->geaendert());
    app->wiederholen();
    EXPECT_EQ(app->modell(), b);
    ASSERT_TRUE(fertig(*app));
    EXPECT_EQ(laeufeMit(*haupt, b.deck()), 1);
    EXPECT_EQ(laeufeMit(*haupt, a.deck()), 0);

    app->setModell(c); // eine neue Änderung verwirft das Wiederholbare
    EXPECT_FALSE(app->kannWiederholen());
    EXPECT_EQ(wiederholbar.count(), 2);
    app->beispiel(a);
    EXPECT_FALSE(app->kannRueckgaengig());
}

class AppModellNeben : public AppTest {};

TEST_F(AppModellNeben, FeldkarteKlemmtDiePunktzahlUndBrauchtNahfelder) {
    bool nahfelder = true;
    haupt->antwort = [&](double mhz, std::string_view deck) {
        return AppTestHilfen::mitNahfeld(mhz, deck, nahfelder);
    };
    auto app = anwendung();
    app->feldRechnen(); // ohne Ergebnis geschieht nichts
    EXPECT_FALSE(app->feldLaeuft());
    app->rechnen(false);
    ASSERT_TRUE(fertig(*app));

    for (auto [punkte, n] : {std::pair{2, 3}, std::pair{100, 61}}) {
        app->setFeldPunkte(punkte);
        app->feldRechnen();
        ASSERT_TRUE(warten([&] { return !app->feldLaeuft(); }));
        ASSERT_TRUE(app->feld());
        EXPECT_EQ(app->feld()->n, n);
        const auto ne = TestHilfen::kartenzahlen(haupt->laeufe().back().deck, "NE");
        EXPECT_EQ(ne[1], n);
        EXPECT_EQ(ne[2], n);
    }

    nahfelder = false;
    app->rechnen(false);
    ASSERT_TRUE(warten([&] { return !app->feld(); }));
    ASSERT_TRUE(fertig(*app));
    app->feldRechnen();
    ASSERT_TRUE(warten([&] { return !app->feldLaeuft(); }));
    EXPECT_EQ(app->fehler(), "Der Kern hat keine Nahfelder geliefert");
    EXPECT_FALSE(app->feld());
}

TEST_F(AppModellNeben, FrequenzgangMeldetFortschritt) {
    auto app = anwendung();
    app->setGangPunkte(5);
    QSignalSpy fortschritt(app.get(), &AppModell::gangFortschrittGeaendert);
    app->frequenzgangRechnen();
    ASSERT_TRUE(warten([&] { return !app->gang().empty(); }));
    EXPECT_EQ(app->gang().size(), 5u);
    EXPECT_EQ(app->gangFortschritt(), (Fortschritt{5, 5}));
    EXPECT_EQ(fortschritt.count(), 3); // 0 von 5, dann je Lauf einer der zwei Teile
}

// Ein Löser, der nie endet: Abbrechen und Programmende beenden ihn samt Ordner.
class AppModellHaengenderKern : public AppTest {
  protected:
    void SetUp() override {
        kerne = {nec2c, haupt,
                 AppTestHilfen::externerKern(TestHilfen::falscherKernAls(temp.ordner(), "haengen"))};
    }

    bool arbeitsordnerDa() const {
        return std::ranges::any_of(temp.eintraege(),
                                   [](const std::string& n) { return n.starts_with("nec-"); });
    }
    bool nichtsUebrig() const { return !arbeitsordnerDa() && AppTestHilfen::kinder() == 0; }
};

TEST_F(AppModellHaengenderKern, AbbrechenBeendetDenLoeserUndBehaeltDasErgebnis) {
    auto app = anwendung();
    app->rechnen(false);
    ASSERT_TRUE(fertig(*app));
    const auto vorher = app->ergebnis();
    app->setKernKennung("zirkon");
    app->rechnen(false);
    ASSERT_TRUE(warten([&] { return arbeitsordnerDa() && AppTestHilfen::kinder() > 0; }));
    EXPECT_TRUE(app->rechnungLaeuft());
    app->rechnungAbbrechen();
    EXPECT_FALSE(app->rechnetGerade());
    EXPECT_EQ(app->fehler(), "Rechnung abgebrochen.");
    ASSERT_TRUE(warten([&] { return nichtsUebrig(); }));
    EXPECT_EQ(app->ergebnis(), vorher);
    EXPECT_EQ(app->fehler(), "Rechnung abgebrochen.");
}

TEST_F(AppModellHaengenderKern, ProgrammendeHinterlaesstKeinenLoeserUndKeinenOrdner) {
    auto app = anwendung("zirkon");
    app->rechnen(false);
    app->setGangPunkte(4);
    app->frequenzgangRechnen();
    ASSERT_TRUE(warten([&] { return AppTestHilfen::kinder() >= 3; }));
    app.reset();
    EXPECT_TRUE(nichtsUebrig());
}
