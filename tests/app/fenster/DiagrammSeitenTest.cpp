// Die Seiten auf dem Anwendungsmodell: Eingaben, Start, Fortschritt, Exporte.
#include "AppTestHilfen.hpp"

#include "Fenster/Diagramme/FeldAbschnitt.hpp"
#include "Fenster/Diagramme/GangDiagramm.hpp"
#include "Fenster/Diagramme/GangSeite.hpp"

#include "NECKern/Gangdatei.hpp"

#include <QDoubleSpinBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <gmock/gmock.h>

using AppTestHilfen::warten;

namespace {

QPushButton* knopf(QWidget& seite, const QString& text) {
    for (auto* k : seite.findChildren<QPushButton*>())
        if (k->text() == text) return k;
    return nullptr;
}

} // namespace

class DiagrammSeiten : public AppTestHilfen::AppTest {};

TEST_F(DiagrammSeiten, FrequenzgangVonDerEingabeBisZurDatei) {
    auto app = anwendung();
    GangSeite seite(*app);
    const auto felder = seite.findChildren<QDoubleSpinBox*>();
    ASSERT_EQ(felder.size(), 2);
    auto* punkte = seite.findChild<QSpinBox*>();

    // Die Eingaben reichen nicht bis 0 MHz und nicht unter 2 Punkte.
    felder[0]->setValue(-1);
    punkte->setValue(1);
    EXPECT_EQ(app->gangVon(), 0.001);
    EXPECT_EQ(app->gangPunkte(), 2);
    // Was das Modell anders bekommt, zeigt die Seite und hält den Start an.
    app->setGangVon(0);
    EXPECT_EQ(seite.hinweis(), "Frequenz muss grösser als 0 MHz sein.");
    EXPECT_FALSE(knopf(seite, "Frequenzgang rechnen")->isEnabled());
    app->setGangVon(app->gangBis() + 0.1);
    EXPECT_EQ(felder[0]->value(), app->gangVon());
    EXPECT_EQ(seite.hinweis(),
              "Die obere Bandgrenze muss über der unteren liegen; bitte „bis“ grösser als „von“ wählen.");
    EXPECT_FALSE(knopf(seite, "Frequenzgang rechnen")->isEnabled());
    app->setGangVon(13.9);
    app->setGangBis(14.1);
    punkte->setValue(5);
    ASSERT_TRUE(seite.hinweis().isEmpty());

    // Die Attrappe liefert X = f − 14: Resonanz bei 14 MHz.
    knopf(seite, "Frequenzgang rechnen")->click();
    ASSERT_TRUE(warten([&] { return app->gang().size() == 5; }));
    EXPECT_THAT(seite.diagramm().resonanzen(), testing::ElementsAre(testing::DoubleNear(14.0, 1e-9)));
    EXPECT_TRUE(seite.findChild<QProgressBar*>()->isHidden());

    QTemporaryDir ordner;
    QStringList gefragt;
    seite.setDateiwahl([&](const QString&, const QString& vorschlag, const QString&) {
        gefragt << vorschlag;
        return ordner.filePath(vorschlag);
    });
    knopf(seite, "CSV sichern …")->click();
    knopf(seite, "Touchstone sichern …")->click();
    ASSERT_EQ(gefragt, (QStringList{"3-Element-Yagi 20 m.csv", "3-Element-Yagi 20 m.s1p"}));
    EXPECT_EQ(TestHilfen::dateiLesen(ordner.filePath(gefragt[0]).toStdString()),
              NECKern::Gangdatei::csv(app->gang()));
    EXPECT_EQ(TestHilfen::dateiLesen(ordner.filePath(gefragt[1]).toStdString()),
              NECKern::Gangdatei::touchstone(app->modell(), app->gang()));
}

TEST_F(DiagrammSeiten, FeldstaerkeStartetErstMitSegmentenUndZeigtDieRechnung) {
    haupt->antwort = [](double mhz, std::string_view deck) { return AppTestHilfen::mitNahfeld(mhz, deck); };
    haupt->warten = [](double) { return std::chrono::milliseconds(200); };
    auto app = anwendung();
    FeldAbschnitt abschnitt(*app);
    auto* start = knopf(abschnitt, "Feldstärke rechnen");
    auto* laeuft = abschnitt.findChild<QProgressBar*>();
    EXPECT_FALSE(start->isEnabled());

    app->rechnen(false);
    ASSERT_TRUE(fertig(*app));
    EXPECT_TRUE(start->isEnabled());
    start->click();
    EXPECT_FALSE(start->isEnabled());
    EXPECT_FALSE(laeuft->isHidden());
    ASSERT_TRUE(warten([&] { return !app->feldLaeuft(); }));
    EXPECT_TRUE(app->feld());
    EXPECT_TRUE(laeuft->isHidden());
    EXPECT_TRUE(start->isEnabled());
}
