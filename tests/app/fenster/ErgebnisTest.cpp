// Die Ergebnisseite mit Ergebnissen, die ein Attrappen-Kern von Hand liefert.
#include "AppTestHilfen.hpp"

#include "Fenster/Ergebnis/ErgebnisSeite.hpp"

#include "NECKern/Guetetest.hpp"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QToolButton>

#include <atomic>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

using AppTestHilfen::warten;
using NECKern::FrequenzErgebnis;
using NECKern::Richtung;
using TestHilfen::KernAttrappe;

namespace {

// Das Gitter, das die RP-Karte des Decks verlangt, überall mit demselben Gewinn.
std::vector<Richtung> kugel(std::string_view deck, double gewinn) {
    const auto rp = TestHilfen::kartenzahlen(deck, "RP");
    std::vector<Richtung> r;
    for (int t = 0; t < static_cast<int>(rp[1]); ++t)
        for (int p = 0; p < static_cast<int>(rp[2]); ++p)
            r.push_back({rp[4] + t * rp[6], rp[5] + p * rp[7], 0, 0, gewinn});
    return r;
}

bool istGuetedeck(std::string_view deck) {
    return TestHilfen::kartenzahlen(deck, "RP").at(2) == 72;
}

// Impedanz R + j0 und ein Diagramm mit dem grössten Gewinn g nach vorn, 10 dB weniger nach hinten.
FrequenzErgebnis antwort(double mhz, double r, double g) {
    FrequenzErgebnis f;
    f.mhz = mhz;
    f.impedanz = NECKern::Komplex{r, 0};
    f.diagramm = {{90, 0, 0, 0, g}, {90, 180, 0, 0, g - 10}};
    return f;
}

class Ergebnis : public AppTestHilfen::AppTest {
  protected:
    void SetUp() override {
        app = anwendung();
        app->setAutomatisch(false);
        seite = AppTestHilfen::seiteZeigen<ErgebnisSeite>(*app);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(seite.get()));
    }

    // Rechnet und wartet auf Gütetest und Gegenprobe.
    void rechnen() {
        QSignalSpy anAus(app.get(), &AppModell::rechnetGeradeGeaendert);
        app->rechnen(false);
        ASSERT_TRUE(
            warten([&] { return anAus.count() >= 2 && !app->rechnetGerade() && !app->gueteLaeuft(); }));
    }

    template <typename T = QLabel> T* teil(const char* name) const {
        auto* t = seite->findChild<T*>(name);
        EXPECT_NE(t, nullptr) << name;
        return t;
    }
    bool sichtbar(const char* name) const { return teil<QWidget>(name)->isVisibleTo(seite.get()); }
    QString farbe(const char* name) const { return teil(name)->property("farbe").toString(); }

    std::unique_ptr<AppModell> app;
    std::unique_ptr<ErgebnisSeite> seite;
};

} // namespace

TEST_F(Ergebnis, VorDemErstenErgebnisNurDerHinweis) {
    EXPECT_TRUE(sichtbar("nochNichtGerechnet"));
    EXPECT_EQ(teil("nochNichtGerechnet")->text(), "Noch nicht gerechnet");
    EXPECT_FALSE(sichtbar("swr"));
    EXPECT_FALSE(sichtbar("details"));
    rechnen();
    EXPECT_FALSE(sichtbar("nochNichtGerechnet"));
    EXPECT_TRUE(sichtbar("swr"));
    EXPECT_TRUE(sichtbar("details"));
}

TEST_F(Ergebnis, SwrZeigtWasDieBibliothekUrteilt) {
    // Werte, Farben und Grenzen prüft UrteileTest, die Namen aller Farben die Gegenprobe.
    haupt->antwort = [](double mhz, std::string_view) { return antwort(mhz, 99.5, 5); };
    rechnen();
    EXPECT_EQ(teil("swrTitel")->text(), "SWR (50 Ω)");
    EXPECT_EQ(teil("swr")->text(), "1.99");
    EXPECT_EQ(farbe("swr"), "gelb");
    auto m = app->modell();
    m.z0 = 75;
    app->setModell(m);
    EXPECT_EQ(teil("swrTitel")->text(), "SWR (75 Ω)");
}

TEST_F(Ergebnis, GueteZeigtWertUndUrteil) {
    // Ein gleichmässiges Diagramm, das im Mittel +0,1001 dB ergibt; die Klassen prüft UrteileTest.
    haupt->antwort = [](double mhz, std::string_view deck) {
        auto e = KernAttrappe::standard(mhz, deck);
        if (!istGuetedeck(deck)) return e;
        const double einfach = NECKern::Guetetest::mittlererGewinn(kugel(deck, 0)).value_or(1);
        e.diagramm = kugel(deck, 0.1001 - 10 * std::log10(einfach));
        return e;
    };
    rechnen();
    EXPECT_TRUE(sichtbar("gueteWert"));
    EXPECT_EQ(teil("gueteWert")->text(), "1.023 (+0.10 dB)");
    EXPECT_EQ(teil("gueteUrteil")->text(), "brauchbar");
    EXPECT_EQ(farbe("gueteUrteil"), "gelb");
}

TEST_F(Ergebnis, GueteZeigtDenLaufUndSonstNichtBerechnet) {
    std::atomic<bool> weiter{false};
    haupt->antwort = [&](double mhz, std::string_view deck) {
        while (istGuetedeck(deck) && !weiter)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return KernAttrappe::standard(mhz, deck);
    };
    app->rechnen(false);
    ASSERT_TRUE(warten([&] { return app->gueteLaeuft(); }));
    EXPECT_TRUE(teil<QProgressBar>("gueteLaeuft")->isVisibleTo(seite.get()));
    EXPECT_FALSE(sichtbar("gueteNichtBerechnet"));
    weiter = true;
    ASSERT_TRUE(warten([&] { return !app->gueteLaeuft(); }));
    EXPECT_FALSE(teil<QProgressBar>("gueteLaeuft")->isVisibleTo(seite.get()));
    EXPECT_TRUE(sichtbar("gueteNichtBerechnet"));
    EXPECT_FALSE(sichtbar("gueteWert"));
}

TEST_F(Ergebnis, GegenprobeMitUrteilUndFarbeJeStufe) {
    // Die Grenzen prüft UrteileTest; hier je Stufe ein Fall für die Farbe des Abschnitts.
    const std::pair<double, const char*> faelle[] = {{115, "gelb"}, {116, "orange"}, {100, "gruen"}};
    nec2c->antwort = [](double mhz, std::string_view) { return antwort(mhz, 100, 0); };
    for (const auto& [r, farbname] : faelle) {
        haupt->antwort = [&](double mhz, std::string_view) { return antwort(mhz, r, 0.3); };
        rechnen();
        ASSERT_TRUE(sichtbar("gegenprobeUrteil"));
        EXPECT_EQ(farbe("gegenprobeUrteil"), farbname) << r;
    }
    EXPECT_EQ(teil("gegenprobeNec2c")->text(), "nec2c: 100.00 + j0.00 Ω");
    EXPECT_EQ(teil("gegenprobeAbweichung")->text(), "Abweichung: Wirkwiderstand 0 %, Gewinn 0.30 dB");
    EXPECT_EQ(teil("gegenprobeUrteil")->text(), "Stimmt mit nec2c überein.");
}

TEST_F(Ergebnis, BefundeInIhrerReihenfolgeMitStufe) {
    // Fünf Segmente von 5 m (über 0,1 λ) aus dickem Draht (über 0,002 λ).
    haupt->antwort = [](double mhz, std::string_view deck) {
        auto f = KernAttrappe::standard(mhz, deck);
        f.segmente = AppTestHilfen::draht(5.0, 0.05);
        return f;
    };
    rechnen();
    const auto zeilen = seite->findChildren<QLabel*>("befund");
    ASSERT_EQ(zeilen.size(), 2);
    ASSERT_EQ(app->befunde().size(), 2u);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(zeilen[i]->text().toStdString(), app->befunde()[static_cast<std::size_t>(i)].text);
    EXPECT_EQ(zeilen[0]->property("stufe").toString(), "fehler");
    EXPECT_EQ(zeilen[1]->property("stufe").toString(), "hinweis");

    haupt->antwort = KernAttrappe::standard;
    rechnen();
    const auto leer = seite->findChildren<QLabel*>("befund");
    ASSERT_EQ(leer.size(), 1);
    EXPECT_EQ(leer[0]->text(), "Segmentierung und Drähte nach den NEC-Regeln in Ordnung");
    EXPECT_EQ(leer[0]->property("stufe").toString(), "ok");
}

TEST_F(Ergebnis, FrequenzwahlUndKopieren) {
    app->setModell(AppTestHilfen::mitFrequenzen(app->modell(), 3));
    rechnen();
    auto* wahl = teil<QComboBox>("frequenz");
    ASSERT_EQ(wahl->count(), 3);
    EXPECT_EQ(wahl->itemText(2), "14.200 MHz");

    wahl->setFocus();
    QTest::keyClick(wahl, Qt::Key_Down);
    EXPECT_EQ(app->frequenzIndex(), 1);
    EXPECT_EQ(teil("impedanz")->text(), "64.10 + j0.10 Ω");
    app->setFrequenzIndex(2);
    EXPECT_EQ(wahl->currentIndex(), 2);

    QTest::mouseClick(teil<QToolButton>("kopieren"), Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "Frequenz: 14.200 MHz\n"
              "Impedanz: 64.20 + j0.20 Ω\n"
              "SWR (50 Ω): 1.28\n"
              "Max. Gewinn: 7.10 dBi (Elevation 0°, Azimut 0°)\n"
              "Vor/Rück: 7.10 dB\n");
}
