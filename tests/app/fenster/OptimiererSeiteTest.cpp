#include "AppTestHilfen.hpp"

#include "Fenster/Seiten/KostenDiagramm.hpp"
#include "Fenster/Seiten/OptimiererSeite.hpp"
#include "Fenster/Seiten/Seitenbau.hpp"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include <fmt/printf.h>
#include <gtest/gtest.h>

using AppTestHilfen::AppTest;
using AppTestHilfen::warten;
using TestHilfen::KernAttrappe;

class OptimiererSeiteTest : public AppTest {
  protected:
    // Tippt in eine Zelle und bestätigt mit Enter.
    static void eintippen(QTableView& tabelle, int zeile, int spalte, const QString& text) {
        const auto index = tabelle.model()->index(zeile, spalte);
        tabelle.setCurrentIndex(index);
        tabelle.edit(index);
        auto* feld = qobject_cast<QLineEdit*>(tabelle.indexWidget(index));
        ASSERT_NE(feld, nullptr);
        feld->selectAll();
        QTest::keyClicks(feld, text);
        QTest::keyClick(feld, Qt::Key_Return);
        QCoreApplication::processEvents(); // der Delegat übernimmt erst in der Ereignisschleife
    }
};

TEST_F(OptimiererSeiteTest, StartAbbruchVerlaufUndUebernahmeMitEinemRueckgaengig) {
    // Kosten, die von jedem Deck anders abhängen: die Suche endet nicht von selbst.
    haupt->antwort = [](double mhz, std::string_view deck) {
        auto f = KernAttrappe::standard(mhz, deck);
        f.impedanz->re = 50.0 + static_cast<double>(std::hash<std::string_view>{}(deck) % 1000) / 10.0;
        return f;
    };
    haupt->warten = [](double) { return std::chrono::milliseconds(40); };
    // Nur „refl“ zum Optimieren markiert, ohne Rechnung.
    auto app = anwendung();
    app->setAutomatisch(false);
    auto m = app->modell();
    for (auto& v : m.variablen)
        v.optimieren = v.name == "refl";
    app->setModell(m);
    app->setAutomatisch(true);
    const auto vorher = app->modell();
    std::vector<std::size_t> punkte;
    auto seite = AppTestHilfen::seiteZeigen<OptimiererSeite>(*app);
    auto* knopf = seite->findChild<QPushButton*>("optimieren");
    auto* uebernehmen = seite->findChild<QPushButton*>("uebernehmen");
    const auto* diagramm = seite->findChild<KostenDiagramm*>();
    QObject::connect(app.get(), &AppModell::optVerlaufGeaendert, seite.get(),
                     [&] { punkte.push_back(diagramm->verlauf().size()); });

    EXPECT_FALSE(uebernehmen->isEnabled());
    QTest::mouseClick(knopf, Qt::LeftButton);
    EXPECT_EQ(knopf->text(), "Abbrechen");
    ASSERT_TRUE(warten([&] { return app->optVerlauf().size() >= 3; }));
    EXPECT_FALSE(uebernehmen->isEnabled()) << "während der Suche";
    ASSERT_TRUE(app->optimierer()) << "die Suche endete von selbst, bevor sie abgebrochen wurde";
    QTest::mouseClick(knopf, Qt::LeftButton);
    ASSERT_TRUE(warten([&] { return !app->optimierer(); }));
    EXPECT_EQ(knopf->text(), "Optimieren");
    EXPECT_TRUE(uebernehmen->isEnabled());

    // Ein Punkt je Fortschrittsmeldung, sobald sie ankommt.
    ASSERT_EQ(punkte.size(), app->optVerlauf().size());
    for (std::size_t i = 0; i < punkte.size(); ++i)
        EXPECT_EQ(punkte[i], i + 1) << i;

    const double refl = app->optWerte().at("refl");
    QTest::mouseClick(uebernehmen, Qt::LeftButton);
    for (const auto& v : app->modell().variablen)
        EXPECT_EQ(v.ausdruck == fmt::sprintf("%.5g", refl), v.name == "refl") << v.name;
    ASSERT_TRUE(fertig(*app));
    EXPECT_EQ(laeufeMit(*haupt, app->modell().deck()), 1) << "die Übernahme rechnet sofort";
    app->rueckgaengig();
    EXPECT_EQ(app->modell(), vorher);
}

TEST_F(OptimiererSeiteTest, EingabenInDenTabellen) {
    auto app = anwendung();
    auto seite = AppTestHilfen::seiteZeigen<OptimiererSeite>(*app);
    auto* variablen = seite->findChild<QTableView*>("variablen");
    auto* ziele = seite->findChild<QTableView*>("ziele");
    const auto meldungen = seite->findChildren<QLabel*>();
    auto meldung = [&] {
        for (auto* l : meldungen)
            if (l->isVisible() && l->text().startsWith("„")) return l->text().toStdString();
        return std::string();
    };
    EXPECT_FALSE(variablen->isVisible()) << "ohne markierte Variable nur der Hinweis";
    EXPECT_FALSE(seite->findChild<QPushButton*>("optimieren")->isEnabled());

    eintippen(*ziele, 0, 1, "abc");
    EXPECT_EQ(meldung(), "„abc“ ist keine Zahl – bitte eine Zahl wie 14.2 oder 14,2 eingeben.");
    EXPECT_EQ(app->ziele()[0].mhz, 14.15);
    eintippen(*ziele, 0, 1, "14,2");
    EXPECT_EQ(app->ziele()[0].mhz, 14.2);
    EXPECT_EQ(meldung(), "");
    eintippen(*ziele, 1, 2, "11.5 dBi");
    EXPECT_EQ(app->ziele()[1].sollwert, 11.5);

    auto m = app->modell();
    m.variablen.front().optimieren = true;
    app->setModell(m);
    ASSERT_TRUE(variablen->isVisible());
    eintippen(*variablen, 0, 2, "13,9");
    EXPECT_EQ(app->modell().variablen.front().minimum, 13.9);
    eintippen(*variablen, 0, 3, "13");
    EXPECT_EQ(app->modell().variablen.front().maximum, std::nullopt);
    EXPECT_TRUE(std::any_of(meldungen.begin(), meldungen.end(), [](QLabel* l) {
        return l->isVisible() && l->text() == "Das Minimum von „f“ muss kleiner als sein Maximum sein.";
    }));
    app->rueckgaengig();
    EXPECT_EQ(app->modell(), m) << "eine Eingabe, ein Schritt zurück";
}

TEST(Seitenbau, ZahlenMitKommaOderPlusAberNurEndlich) {
    const std::pair<const char*, std::optional<double>> faelle[] = {
        {" 14,2 ", 14.2},     {"+5", 5}, {"-0.5", -0.5}, {"", std::nullopt}, {"5x", std::nullopt},
        {"inf", std::nullopt}};
    for (const auto& [eingabe, zahl] : faelle)
        EXPECT_EQ(Seitenbau::zahlLesen(eingabe), zahl) << eingabe;
}
