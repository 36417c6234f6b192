#include "AppTestHilfen.hpp"

#include "Fenster/Seiten/KernSeite.hpp"

#include "Modell/ZirkonInstallation.hpp"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>

using AppTestHilfen::AppTest;
using AppTestHilfen::warten;
namespace fs = std::filesystem;

class KernSeiteTest : public AppTest {
  protected:
    KernSeiteTest() { kerne.push_back(AppTestHilfen::externerKern(fehlt)); }

    static QRadioButton* wahl(const KernSeite& seite, const std::string& kennung) {
        return seite.findChild<QRadioButton*>(QString::fromStdString("kern-" + kennung));
    }

    fs::path fehlt = temp.ordner() / "fehlt" / "zirkon";
};

TEST_F(KernSeiteTest, WahlSetztDenKernUndRechnetEinmal) {
    auto app = anwendung("nec2c");
    auto seite = AppTestHilfen::seiteZeigen<KernSeite>(*app);
    ASSERT_TRUE(wahl(*seite, "nec2c")->isChecked());

    QTest::mouseClick(wahl(*seite, "attrappe"), Qt::LeftButton);
    EXPECT_EQ(app->kernKennung(), "attrappe");
    EXPECT_TRUE(wahl(*seite, "attrappe")->isChecked());
    ASSERT_TRUE(fertig(*app));
    QTest::qWait(400);
    EXPECT_EQ(laeufeMit(*haupt, app->modell().deck()), 1);
}

TEST_F(KernSeiteTest, FehlendesProgrammSperrtDieWahlUndSagtWarum) {
    auto app = anwendung("nec2c");
    auto seite = AppTestHilfen::seiteZeigen<KernSeite>(*app);
    auto* zirkon = wahl(*seite, "zirkon");
    EXPECT_FALSE(zirkon->isEnabled());
    QTest::mouseClick(zirkon, Qt::LeftButton);
    QTest::qWait(400);
    EXPECT_EQ(app->kernKennung(), "nec2c");
    EXPECT_FALSE(zirkon->isChecked());
    EXPECT_TRUE(haupt->laeufe().empty() && nec2c->laeufe().empty());
    EXPECT_EQ(seite->findChild<QLabel*>("status-zirkon")->text().toStdString(),
              "Programm fehlt: " + fehlt.string());
}

TEST_F(KernSeiteTest, InstallationMachtDieZirkonKerneOhneNeustartWaehlbar) {
    if (AppModell::zirkonEingebettet())
        GTEST_SKIP() << "zirkon ist eingebettet; es gibt nichts zu installieren";
    AppModell app(
        mitKernordner({AppTestHilfen::skript(temp.ordner() / "python3", AppTestHilfen::stillesPython)}));
    auto seite = AppTestHilfen::seiteZeigen<KernSeite>(app);
    for (const char* k : {"zirkon", "zirkon5", "zirkon-klinge"})
        ASSERT_FALSE(wahl(*seite, k)->isEnabled()) << k;

    auto* knopf = seite->findChild<QPushButton*>("zirkonInstallieren");
    auto* stand = seite->findChild<QLabel*>("installation");
    QTest::mouseClick(knopf, Qt::LeftButton);
    EXPECT_FALSE(knopf->isEnabled());
    EXPECT_EQ(stand->text().toStdString(), ZirkonInstallation::laeuft);
    ASSERT_TRUE(warten([&] { return app.installation() != ZirkonInstallation::laeuft; }));

    EXPECT_TRUE(knopf->isEnabled());
    EXPECT_EQ(stand->text().toStdString(), ZirkonInstallation::fertig);
    for (const char* k : {"zirkon", "zirkon5", "zirkon-klinge"})
        EXPECT_TRUE(wahl(*seite, k)->isEnabled()) << k;
    EXPECT_FALSE(wahl(*seite, "arcanum")->isEnabled());
}

TEST_F(KernSeiteTest, KernordnerDerSichNichtAnlegenLaesstSagtDenGrundAufDeutsch) {
    const auto datei = temp.ordner() / "daten";
    std::ofstream(datei) << "keine Ordner";
    TestHilfen::Umgebung xdg("XDG_DATA_HOME", datei.c_str());
    auto app = anwendung("nec2c");
    auto seite = AppTestHilfen::seiteZeigen<KernSeite>(*app);
    for (auto* knopf : seite->findChildren<QPushButton*>())
        if (knopf->text() == "Ordner öffnen") QTest::mouseClick(knopf, Qt::LeftButton);
    const auto meldungen = seite->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(meldungen.begin(), meldungen.end(), [](const QLabel* l) {
        return l->isVisible() && l->text() == "Der Kernordner lässt sich nicht anlegen: kein Verzeichnis.";
    }));
}
