#include "Fenster/Hauptfenster.hpp"
#include "Fenster/Startoptionen.hpp"

#include "AppTestHilfen.hpp"

#include "NECKern/Beispiele.hpp"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using AppTestHilfen::warten;
using namespace NECKern;

namespace {

QAction* eintrag(QMenu* menue, const QString& text) {
    for (auto* a : menue->actions()) {
        if (a->text() == text) return a;
        if (a->menu())
            if (auto* tiefer = eintrag(a->menu(), text)) return tiefer;
    }
    return nullptr;
}

} // namespace

class HauptfensterTest : public AppTestHilfen::AppTest {
  protected:
    void SetUp() override {
        kerne.push_back(AppTestHilfen::externerKern(TestHilfen::falscherKernAls(temp.ordner(), "haengen")));
        app = anwendung();
        fenster = std::make_unique<Hauptfenster>(*app);
        // Die Dateiwahl des Fensters zeigte einen Dialog; der Test antwortet selbst.
        app->setDateiwahl([this](bool speichern, const std::string& vorschlag) -> OptionalerPfad {
            gefragt.push_back((speichern ? "sichern:" : "öffnen:") + vorschlag);
            return antwort;
        });
    }

    QAction* menuepunkt(const QString& menue, const QString& text) {
        for (auto* m : fenster->menuBar()->actions())
            if (m->text().remove('&') == menue) return eintrag(m->menu(), text);
        return nullptr;
    }

    // Beantwortet die nächste Frage des Fensters mit dem Knopf dieses Texts.
    static void antworten(const QString& knopf) {
        QTimer::singleShot(0, [knopf] {
            auto* frage = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(frage, nullptr);
            for (auto* b : frage->buttons())
                if (b->text() == knopf) b->click();
        });
    }

    std::unique_ptr<AppModell> app;
    std::unique_ptr<Hauptfenster> fenster;
    std::vector<std::string> gefragt;
    OptionalerPfad antwort;
};

TEST_F(HauptfensterTest, MenuepunkteHabenIhreTexteUndKuerzel) {
    struct Punkt {
        const char* menue;
        const char* text;
        const char* kuerzel;
    };
    for (const auto& p :
         {Punkt{"Datei", "Öffnen …", "Ctrl+O"}, Punkt{"Datei", "Sichern", "Ctrl+S"},
          Punkt{"Datei", "Sichern unter …", "Ctrl+Shift+S"}, Punkt{"Datei", "Beenden", "Ctrl+Q"},
          Punkt{"Bearbeiten", "Rückgängig", "Ctrl+Z"}, Punkt{"Bearbeiten", "Wiederholen", "Ctrl+Shift+Z"},
          Punkt{"Antenne", "Rechnen", "Ctrl+R"}, Punkt{"Antenne", "Frequenzgang", "Ctrl+G"},
          Punkt{"Antenne", "Abbrechen", "Esc"}, Punkt{"Hilfe", "Selbsttest der Rechenkerne …", ""},
          Punkt{"Hilfe", "Über Wellenwerk", ""}}) {
        auto* a = menuepunkt(p.menue, p.text);
        ASSERT_NE(a, nullptr) << p.menue << " / " << p.text;
        EXPECT_EQ(a->shortcut(), QKeySequence(p.kuerzel)) << p.text;
    }
    for (const auto& b : Beispiele::alle())
        EXPECT_NE(menuepunkt("Datei", QString::fromStdString(b.name)), nullptr) << b.name;
}

TEST_F(HauptfensterTest, MenuepunkteRufenIhreOperationen) {
    menuepunkt("Antenne", "Rechnen")->trigger();
    ASSERT_TRUE(fertig(*app));
    EXPECT_EQ(laeufeMit(*haupt, app->modell().deck()), 1);

    app->setGangPunkte(3);
    menuepunkt("Antenne", "Frequenzgang")->trigger();
    ASSERT_TRUE(warten([&] { return app->gang().size() == 3; }));

    // Sichern fragt nur ohne Datei, Sichern unter immer.
    antwort = temp.ordner() / "yagi.nec";
    menuepunkt("Datei", "Sichern")->trigger();
    menuepunkt("Datei", "Sichern")->trigger();
    menuepunkt("Datei", "Sichern unter …")->trigger();
    menuepunkt("Datei", "Öffnen …")->trigger();
    EXPECT_THAT(gefragt, testing::ElementsAre("sichern:3-Element-Yagi 20 m.nec",
                                              "sichern:3-Element-Yagi 20 m.nec", "öffnen:"));

    menuepunkt("Datei", "Halbwellendipol 20 m")->trigger();
    EXPECT_EQ(app->modell().name, "Halbwellendipol 20 m");
    auto geaendert = app->modell();
    geaendert.z0 = 75;
    app->setModell(geaendert);
    EXPECT_TRUE(menuepunkt("Bearbeiten", "Rückgängig")->isEnabled());
    menuepunkt("Bearbeiten", "Rückgängig")->trigger();
    EXPECT_EQ(app->modell().z0, 50);

    menuepunkt("Hilfe", "Selbsttest der Rechenkerne …")->trigger();
    EXPECT_TRUE(app->zeigeSelbsttest());
}

TEST_F(HauptfensterTest, SchliessenFragtNurBeiUngesichertenAenderungen) {
    fenster->show();
    fenster->close();
    EXPECT_FALSE(fenster->isVisible());

    fenster->show();
    auto m = app->modell();
    m.z0 = 75;
    app->setModell(m);
    antworten("Abbrechen");
    fenster->close();
    EXPECT_TRUE(fenster->isVisible());
    // Sichern ohne gewählte Datei: das Fenster bleibt, sonst wäre die Arbeit verloren.
    antwort.reset();
    antworten("Sichern");
    fenster->close();
    EXPECT_TRUE(fenster->isVisible());

    antwort = temp.ordner() / "gesichert.nec";
    antworten("Sichern");
    fenster->close();
    EXPECT_FALSE(fenster->isVisible());
    EXPECT_EQ(TestHilfen::dateiLesen(*antwort), app->modell().schreiben());

    fenster->show();
    app->setModell(NECKern::Beispiele::alle().front().modell());
    antworten("Verwerfen");
    fenster->close();
    EXPECT_FALSE(fenster->isVisible());
}

TEST_F(HauptfensterTest, KeineSeiteRolltSeitwaertsBeiKleinsterFenstergroesse) {
    fenster->resize(fenster->minimumSize());
    fenster->show();
    QScrollArea* rollen = nullptr;
    for (auto* r : fenster->findChildren<QScrollArea*>())
        if (qobject_cast<QStackedWidget*>(r->widget())) rollen = r;
    ASSERT_NE(rollen, nullptr);
    for (const auto s : alleSeiten) {
        fenster->seiteWaehlen(s);
        QApplication::processEvents();
        EXPECT_FALSE(rollen->horizontalScrollBar()->isVisible()) << static_cast<int>(s);
    }
}

TEST_F(HauptfensterTest, EscapeBeendetEineLaufendeRechnung) {
    fenster->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(fenster.get()));
    auto* abbrechen = menuepunkt("Antenne", "Abbrechen");
    EXPECT_FALSE(abbrechen->isEnabled());
    app->setKernKennung("zirkon");
    app->rechnen(false);
    ASSERT_TRUE(warten([&] { return app->rechnetGerade() && AppTestHilfen::kinder() > 0; }));
    EXPECT_TRUE(abbrechen->isEnabled());
    QTest::keyClick(fenster.get(), Qt::Key_Escape);
    EXPECT_FALSE(abbrechen->isEnabled());
}

class StartoptionenTest : public AppTestHilfen::AppTest {
  protected:
    Befehlszeile lesen(QStringList argumente) {
        argumente.prepend("wellenwerk");
        return Befehlszeile::lesen(argumente);
    }
};

TEST_F(StartoptionenTest, BeispielNachTeilDesNamensUndDateiVorBeispiel) {
    const auto pfad = temp.ordner() / "Eigene.nec";
    std::ofstream(pfad)
        << "CM Eigene\nCE\nGW 1 21 0 -5 10 0 5 10 0.001\nGE 0\nEX 0 1 11 0 1 0\nFR 0 1 0 0 14 0\nEN\n";
    const QString datei = QString::fromStdString(pfad.string());
    const std::pair<QStringList, std::string> faelle[] = {
        {{"--beispiel", "DIPOL"}, "Halbwellendipol 20 m"}, // das erste passende, Gross-/Kleinschreibung egal
        {{"--datei", datei, "--beispiel", "dipol"}, "Eigene"},
        {{datei}, "Eigene"},
        {{"--beispiel", "gibt es nicht"}, "3-Element-Yagi 20 m"}};
    for (const auto& [argumente, name] : faelle) {
        const auto lesung = lesen(argumente);
        ASSERT_TRUE(lesung.optionen) << lesung.ausgabe.toStdString();
        auto app = anwendung();
        lesung.optionen->anwenden(*app, [](Seite) {});
        EXPECT_EQ(app->modell().name, name) << argumente.join(' ').toStdString();
        ASSERT_TRUE(fertig(*app));
    }
}

TEST_F(StartoptionenTest, KernSeiteUndFalscheAufrufe) {
    const auto lesung = lesen({"--kern", "nec2c", "--seite", "frequenzgang"});
    ASSERT_TRUE(lesung.optionen);
    std::optional<Seite> gewaehlt;
    auto app = anwendung();
    lesung.optionen->anwenden(*app, [&](Seite s) { gewaehlt = s; });
    EXPECT_EQ(app->kernKennung(), "nec2c");
    EXPECT_EQ(gewaehlt, Seite::gang);

    const std::pair<QStringList, std::string> faelle[] = {
        {{"--seite", "Foo"},
         "Die Seite „Foo“ gibt es nicht; möglich sind Ergebnis, Frequenzgang, Optimierer, Rechenkern."},
        {{"a.nec", "b.nec"}, "Nur eine Datei kann geöffnet werden, nicht a.nec b.nec."}};
    for (const auto& [argumente, satz] : faelle) {
        const auto falsch = lesen(argumente);
        EXPECT_FALSE(falsch.optionen);
        EXPECT_EQ(falsch.status, 2);
        EXPECT_EQ(falsch.ausgabe.toStdString(), satz + "\nHilfe: wellenwerk --help\n");
    }
    const auto hilfe = lesen({"--help"});
    EXPECT_EQ(hilfe.status, 0);
    EXPECT_THAT(hilfe.ausgabe.toStdString(), testing::HasSubstr("--schnappschuss <pfad>"));
}
