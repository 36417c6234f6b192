#include "AppTestHilfen.hpp"

#include "Fenster/Seiten/KernSeite.hpp"
#include "Fenster/Seiten/SelbsttestDialog.hpp"

#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include <gtest/gtest.h>

using AppTestHilfen::AppTest;
using AppTestHilfen::warten;

class SelbsttestDialogTest : public AppTest {
  protected:
    // Startet den Selbsttest über die Kernseite und wartet auf sein Ende; zählt
    // dabei, wie viele Zeilen das Blatt nach jeder Meldung zeigt.
    void laufen(AppModell& app) {
        fenster.resize(600, 800);
        fenster.show();
        blatt = std::make_unique<SelbsttestDialog>(app, &fenster);
        tabelle = blatt->findChild<QTableWidget*>("zeilen");
        QObject::connect(&app, &AppModell::selbsttestGeaendert, tabelle,
                         [this] { gezeigt.push_back(tabelle->rowCount()); });
        KernSeite seite(app, &fenster);
        QTest::mouseClick(seite.findChild<QPushButton*>("selbsttest"), Qt::LeftButton);
        EXPECT_TRUE(blatt->isVisible());
        EXPECT_TRUE(warten([&] { return !app.selbsttestLaeuft(); }, 120000));
    }

    std::string urteil(int zeile) const {
        return tabelle->item(zeile, SelbsttestDialog::urteil)->text().toStdString();
    }
    std::string satz(const char* name) const { return blatt->findChild<QLabel*>(name)->text().toStdString(); }

    QWidget fenster;
    std::vector<int> gezeigt;
    std::unique_ptr<SelbsttestDialog> blatt;
    QTableWidget* tabelle = nullptr;
};

TEST_F(SelbsttestDialogTest, BekannteAbweichungVonZirkon5UndDerSatzDarunter) {
    haupt->kennungWert = "zirkon5";
    haupt->antwort = [](double, std::string_view) {
        NECKern::FrequenzErgebnis f;
        f.impedanz = NECKern::Komplex{0.60, 0};
        return f;
    };
    auto app = anwendung("zirkon5");
    laufen(*app);

    const auto& zeilen = app->selbsttest();
    ASSERT_EQ(tabelle->rowCount(), static_cast<int>(zeilen.size()));
    for (std::size_t i = 0; i < gezeigt.size(); ++i)
        EXPECT_EQ(gezeigt[i], static_cast<int>(i + 1)) << "eine Zeile je fertigem Fall";
    ASSERT_EQ(zeilen[0].pruefung, "Kurzer Dipol 0,05 λ: Strahlungswiderstand (Ω)");
    EXPECT_EQ(urteil(0), "≈ bekannte Abweichung");
    EXPECT_EQ(urteil(1), "✗ nicht bestanden");
    EXPECT_EQ(satz("zusammenfassung"),
              "8 Fall/Fälle nicht bestanden – Ergebnisse dieses Kerns nicht verwenden.");
    EXPECT_EQ(satz("bekannt"), "Davon ist 1 Fall eine bekannte Abweichung von Attrappe und kein Fehler der "
                               "Kerninstallation.");

    QTest::mouseClick(blatt->findChild<QPushButton*>(), Qt::LeftButton);
    EXPECT_FALSE(app->zeigeSelbsttest());
    EXPECT_FALSE(blatt->isVisible());
}

TEST_F(SelbsttestDialogTest, Nec2cBestehtAlles) {
    kerne = {std::make_shared<const NECKern::Nec2cKern>(TestHilfen::nec2c)};
    auto app = anwendung("nec2c");
    laufen(*app);
    ASSERT_EQ(tabelle->rowCount(), 8);
    for (int i = 0; i < tabelle->rowCount(); ++i)
        EXPECT_EQ(urteil(i), "✓ bestanden") << i;
    EXPECT_EQ(satz("zusammenfassung"), "Alle prüfbaren Fälle bestanden.");
    EXPECT_FALSE(blatt->findChild<QLabel*>("bekannt")->isVisible());
}
