// Der Modelleditor, bedient wie vom Nutzer: Mausklicks und Tasten auf den Tabellen,
// dem Kartenmenü und dem Textmodus.
#include "AppTestHilfen.hpp"

#include "Fenster/Editor/EditorSeite.hpp"
#include "Fenster/Editor/Textabgleich.hpp"

#include "NECKern/Modellpruefung.hpp"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>
#include <tuple>

using AppTestHilfen::warten;
using NECKern::Karte;

namespace {

enum VariablenSpalte { name = 0, formel = 1, wert = 2 };

class Editor : public AppTestHilfen::AppTest {
  protected:
    // Das Fenster um die Seite trägt, wie das Hauptfenster, Strg+Z als Menübefehl.
    void SetUp() override {
        app = anwendung();
        auto* spalte = new QVBoxLayout(&fenster);
        seite = new EditorSeite(*app, &fenster);
        spalte->addWidget(seite);
        auto* rueck = new QAction("Rückgängig", &fenster);
        rueck->setShortcut(QKeySequence::Undo);
        fenster.addAction(rueck);
        QObject::connect(rueck, &QAction::triggered, app.get(), &AppModell::rueckgaengig);
        fenster.resize(460, 760);
        fenster.show();
        fenster.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&fenster));
    }

    QTableView* tabelle(const char* name) const { return seite->findChild<QTableView*>(name); }
    QString zelle(const char* name, int zeile, int spalte, int rolle = Qt::DisplayRole) const {
        auto* t = tabelle(name);
        return t->model()->index(zeile, spalte).data(rolle).toString();
    }
    QLabel* meldung(const char* name) const { return seite->findChild<QLabel*>(QString(name) + "Meldung"); }

    // Klickt die Zelle an, beginnt mit Enter, ersetzt den Text und schliesst mit `schluss`.
    void eintippen(const char* name, int zeile, int spalte, const QString& text,
                   Qt::Key schluss = Qt::Key_Return) {
        auto* t = tabelle(name);
        const auto index = t->model()->index(zeile, spalte);
        t->scrollTo(index);
        QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualRect(index).center());
        QTest::keyClick(t, Qt::Key_Return);
        tippen(text, schluss);
    }
    // Im offenen Zelleditor: alles markieren, Text tippen, abschliessen.
    static void tippen(const QString& text, Qt::Key schluss) {
        auto* feld = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(feld, nullptr) << "kein Zelleditor offen";
        QTest::keyClick(feld, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(feld, Qt::Key_Backspace);
        QTest::keyClicks(feld, text);
        QTest::keyClick(feld, schluss);
    }

    std::unique_ptr<AppModell> app;
    QWidget fenster;
    EditorSeite* seite = nullptr;
};

} // namespace

TEST_F(Editor, KaputteFormelZeigtIhreMeldungInIhrerZeileUndSperrtNichts) {
    eintippen("variablen", 1, formel, "foo(1)");
    EXPECT_EQ(zelle("variablen", 1, wert), "Funktion 'foo' unbekannt");
    EXPECT_EQ(tabelle("variablen")->model()->index(1, wert).data(Qt::ForegroundRole).value<QBrush>().color(),
              QColor(0xB7, 0x1C, 0x1C));
    EXPECT_EQ(zelle("variablen", 0, wert), "14.15");

    // Eine Formel wird einmal gespeichert; das Entprellen vor dem Rechnen prüft AppModellTest.
    QSignalSpy gespeichert(app.get(), &AppModell::modellGeaendert);
    auto* werte = tabelle("variablen")->model();
    QSignalSpy neuGemalt(werte, &QAbstractItemModel::dataChanged);
    eintippen("variablen", 2, formel, "10");
    // Eine Formel wirkt auf die Variablen nach ihr: die ganze Wertspalte meldet sich neu.
    EXPECT_TRUE(std::any_of(neuGemalt.begin(), neuGemalt.end(), [&](const QList<QVariant>& s) {
        const auto oben = s[0].value<QModelIndex>(), unten = s[1].value<QModelIndex>();
        return oben.row() == 0 && unten.row() == werte->rowCount() - 1 && unten.column() == wert;
    }));
    EXPECT_EQ(app->modell().variablen[2].ausdruck, "10");
    EXPECT_EQ(zelle("variablen", 2, wert), "10");
    EXPECT_EQ(zelle("variablen", 1, wert), "Funktion 'foo' unbekannt");
    QTest::qWait(400);
    EXPECT_EQ(gespeichert.count(), 1);
}

TEST_F(Editor, AbgelehnteEingabeNenntDenGrundUndAendertNichts) {
    struct Fall {
        const char* tabelle;
        int zeile, spalte;
        const char* eingabe;
        const char* meldung;
    };
    const Fall faelle[] = {
        {"variablen", 0, name, "2a", "Name nicht möglich: Unerwartet: 'a' in '2a'"},
        {"variablen", 0, name, "pi",
         "„pi“ ist eine Konstante der Formeln – bitte einen anderen Namen wählen."},
        {"variablen", 0, name, "REFL", "Eine Variable „refl“ gibt es schon."},
        {"variablen", 0, formel, " ", "Die Formel ist leer – bitte eine Zahl oder eine Formel eingeben."},
        {"karten", 0, 3, "0,5",
         "Ein Komma trennt im Deck die Felder – Dezimalzahlen mit Punkt schreiben (0.5 statt 0,5)."},
    };
    const auto vorher = app->modell();
    for (const auto& f : faelle) {
        eintippen(f.tabelle, f.zeile, f.spalte, f.eingabe);
        auto* feld = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(feld, nullptr) << "der Editor bleibt mit dem Getippten offen: " << f.eingabe;
        EXPECT_EQ(feld->text(), f.eingabe);
        EXPECT_TRUE(meldung(f.tabelle)->isVisible()) << f.eingabe;
        EXPECT_EQ(meldung(f.tabelle)->text(), f.meldung);
        EXPECT_EQ(app->modell(), vorher) << f.eingabe;
        QTest::keyClick(feld, Qt::Key_Escape);
        EXPECT_FALSE(meldung(f.tabelle)->isVisible());
    }
    // Leerzeichen trennen im Deck die Felder; ein Name darf seine eigene Schreibung ändern.
    eintippen("karten", 0, 3, "- a1 * 2");
    EXPECT_FALSE(meldung("karten")->isVisible());
    EXPECT_EQ(app->modell().karten[0].reell[0], "-a1*2");
    eintippen("variablen", 0, name, "F");
    EXPECT_EQ(app->modell().variablen[0].name, "F");
}

TEST_F(Editor, KarteAusDemMenueHatDieFelderDerVorlage) {
    for (const std::string typ : {"EX", "GW"}) {
        const auto vorher = app->modell();
        auto* knopf = seite->findChild<QToolButton*>("karteNeu");
        QTimer::singleShot(0, [&] {
            auto* menue = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menue, nullptr);
            auto* aktion = menue->findChild<QAction*>(QString::fromStdString("karte" + typ));
            ASSERT_NE(aktion, nullptr);
            QTest::mouseClick(menue, Qt::LeftButton, {}, menue->actionGeometry(aktion).center());
        });
        QTest::mouseClick(knopf, Qt::LeftButton);
        ASSERT_TRUE(warten([&] { return app->modell().karten.size() == vorher.karten.size() + 1; }, 2000));

        // Ohne gewählte Zeile: Drähte vor GE, Steuerkarten vor EN.
        const auto& karten = app->modell().karten;
        const auto vor = std::find_if(karten.begin(), karten.end(),
                                      [&](const Karte& k) { return k.typ == (typ == "GW" ? "GE" : "EN"); });
        ASSERT_NE(vor, karten.begin());
        const auto& neu = *(vor - 1);
        const auto vorlage = NECKern::Modellpruefung::neueKarte(typ, vorher);
        EXPECT_EQ(neu.typ, typ);
        EXPECT_EQ(neu.ganz, vorlage.ganz) << typ;
        EXPECT_EQ(neu.reell, vorlage.reell) << typ;
        tabelle("karten")->setCurrentIndex({});
    }
}

TEST_F(Editor, TabEnterEscapeUndEntfWirkenAufDieKarten) {
    QSignalSpy gespeichert(app.get(), &AppModell::modellGeaendert);
    eintippen("karten", 0, 1, "5", Qt::Key_Tab);
    tippen("17", Qt::Key_Return);
    EXPECT_EQ(gespeichert.count(), 2);
    EXPECT_EQ(app->modell().karten[0].ganz, (std::vector<std::string>{"5", "17"}));

    eintippen("karten", 1, 1, "99", Qt::Key_Escape);
    EXPECT_EQ(gespeichert.count(), 2);
    EXPECT_EQ(zelle("karten", 1, 1), "2");

    const auto anzahl = app->modell().karten.size();
    QTest::keyClick(tabelle("karten"), Qt::Key_Delete);
    EXPECT_EQ(app->modell().karten.size(), anzahl - 1);
    EXPECT_EQ(app->modell().karten[1].ganz[0], "3");
}

TEST_F(Editor, RueckgaengigStelltDieZelleWiederHer) {
    eintippen("karten", 0, 2, "31");
    EXPECT_EQ(zelle("karten", 0, 2), "31");
    QTest::keyClick(tabelle("karten"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(zelle("karten", 0, 2), "21");
    EXPECT_EQ(app->modell().karten[0].ganz[1], "21");
}

TEST_F(Editor, DrahtWahlMeldetDenTag) {
    std::vector<std::optional<std::int64_t>> gemeldet;
    QObject::connect(seite, &EditorSeite::drahtGewaehlt,
                     [&](std::optional<std::int64_t> tag) { gemeldet.push_back(tag); });
    auto* t = tabelle("karten");
    for (int zeile : {1, 2, 3})
        QTest::mouseClick(t->viewport(), Qt::LeftButton, {},
                          t->visualRect(t->model()->index(zeile, 0)).center());
    EXPECT_EQ(gemeldet, (std::vector<std::optional<std::int64_t>>{2, 3, std::nullopt}));
    EXPECT_EQ(t->model()->headerData(2, Qt::Horizontal).toString(), "");
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualRect(t->model()->index(0, 0)).center());
    EXPECT_EQ(t->model()->headerData(2, Qt::Horizontal).toString(), "Segm.");
}

TEST_F(Editor, TextmodusLiestEinEchtesDeckUnveraendertZurueckUndBehaeltUnlesbaresBei) {
    ASSERT_TRUE(app->oeffnen(std::filesystem::path(WW_TESTDATEN) / "decks" / "yagi_formeln.nec"));
    const auto geoeffnet = app->modell();
    QSignalSpy gespeichert(app.get(), &AppModell::modellGeaendert);
    auto* text = seite->findChild<QPlainTextEdit*>("decktext");
    auto* textKnopf = seite->findChild<QToolButton*>("textmodus");
    auto* tabellenKnopf = seite->findChild<QToolButton*>("tabellenmodus");

    QTest::mouseClick(textKnopf, Qt::LeftButton);
    EXPECT_EQ(text->toPlainText().toStdString(), geoeffnet.schreiben());
    QTest::mouseClick(text->viewport(), Qt::LeftButton);
    QTest::keyClick(text, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(text, " ");
    QTest::qWait(400);
    QTest::mouseClick(tabellenKnopf, Qt::LeftButton);
    EXPECT_EQ(gespeichert.count(), 0);
    EXPECT_EQ(app->modell(), geoeffnet);

    QTest::mouseClick(textKnopf, Qt::LeftButton);
    QTest::mouseClick(text->viewport(), Qt::LeftButton);
    QTest::keyClick(text, Qt::Key_End, Qt::ControlModifier);
    for (const char* zeile : {"123 kaputt", "LD 5 1 0 0 5.8e7"}) {
        QTest::keyClick(text, Qt::Key_Return);
        QTest::keyClicks(text, zeile);
    }
    ASSERT_TRUE(warten([&] { return gespeichert.count() == 1; }, 2000));
    EXPECT_EQ(app->modell().karten.back().typ, "LD");
    EXPECT_EQ(app->modell().karten.back().reell, std::vector<std::string>{"5.8e7"});
    EXPECT_EQ(
        seite->findChild<QLabel*>("textStatus")->text(),
        "1 Zeile wird nicht gelesen (rot unterstrichen) – sie bleibt im Text, geht aber nicht ins Modell.");

    QTest::mouseClick(tabellenKnopf, Qt::LeftButton);
    EXPECT_EQ(zelle("karten", static_cast<int>(app->modell().karten.size()) - 1, 0), "LD");
    QTest::mouseClick(textKnopf, Qt::LeftButton);
    EXPECT_TRUE(text->toPlainText().contains("\n123 kaputt\n"));
    EXPECT_EQ(gespeichert.count(), 1);
}

TEST_F(Editor, TextmodusBehaeltWasDasDeckNichtTraegt) {
    auto m = app->modell();
    m.variablen[0].optimieren = true;
    m.variablen[0].minimum = 14;
    m.karten[0].text = "Reflektor";
    app->setModell(m);
    QTest::mouseClick(seite->findChild<QToolButton*>("textmodus"), Qt::LeftButton);
    auto* text = seite->findChild<QPlainTextEdit*>("decktext");
    QTest::mouseClick(text->viewport(), Qt::LeftButton);
    QTest::keyClick(text, Qt::Key_Home, Qt::ControlModifier);
    ASSERT_TRUE(text->find("f=14.15"));
    QTest::keyClicks(text, "f=14.2");
    ASSERT_TRUE(warten([&] { return app->modell().variablen[0].ausdruck == "14.2"; }, 2000));
    EXPECT_TRUE(app->modell().variablen[0].optimieren);
    EXPECT_EQ(app->modell().variablen[0].minimum, 14);
    EXPECT_EQ(app->modell().karten, m.karten) << "Kennungen und Kartentexte bleiben";
    EXPECT_EQ(app->modell().name, m.name);
}

TEST_F(Editor, OptimiererMarkeUndGrenzen) {
    auto* t = tabelle("variablen");
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualRect(t->model()->index(0, 3)).center());
    QTest::keyClick(t, Qt::Key_Space);
    EXPECT_TRUE(app->modell().variablen[0].optimieren);
    eintippen("variablen", 0, 4, "1cm");
    eintippen("variablen", 0, 5, "2*f");
    EXPECT_EQ(app->modell().variablen[0].minimum, 0.01);
    EXPECT_DOUBLE_EQ(app->modell().variablen[0].maximum.value_or(0), 28.3);
    EXPECT_EQ(zelle("variablen", 0, 5), "28.3");
    eintippen("variablen", 0, 5, "");
    EXPECT_FALSE(app->modell().variablen[0].maximum);
    eintippen("variablen", 0, 4, "x");
    EXPECT_EQ(meldung("variablen")->text(), "Grenze nicht lesbar: Variable 'x' unbekannt");
}

TEST_F(Editor, OhneGewaehlteKarteTunDuplizierenUndLoeschenNichts) {
    auto* t = tabelle("karten");
    t->selectionModel()->clear();
    const auto vorher = app->modell().karten;
    QTest::mouseClick(seite->findChild<QToolButton*>("karteDuplizieren"), Qt::LeftButton);
    QTest::mouseClick(seite->findChild<QToolButton*>("kartenLoeschen"), Qt::LeftButton);
    EXPECT_EQ(app->modell().karten, vorher);

    // Steht nur der Cursor in einer Zeile, gilt sie als gewählt.
    t->selectionModel()->setCurrentIndex(t->model()->index(1, 0), QItemSelectionModel::NoUpdate);
    QTest::mouseClick(seite->findChild<QToolButton*>("kartenLoeschen"), Qt::LeftButton);
    ASSERT_EQ(app->modell().karten.size(), vorher.size() - 1);
    EXPECT_EQ(app->modell().karten[1].id, vorher[2].id);
}

TEST_F(Editor, DuplizierterDrahtBekommtDenNaechstenTagUndLaesstSichVerschieben) {
    auto* t = tabelle("karten");
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualRect(t->model()->index(0, 0)).center());
    const auto vorher = app->modell().karten;
    QTest::mouseClick(seite->findChild<QToolButton*>("karteDuplizieren"), Qt::LeftButton);
    const auto& karten = app->modell().karten;
    ASSERT_EQ(karten.size(), vorher.size() + 1);
    EXPECT_NE(karten[1].id, vorher[0].id);
    EXPECT_EQ(karten[1].ganz, (std::vector<std::string>{"4", "21"}));
    EXPECT_EQ(karten[1].reell, vorher[0].reell);
    EXPECT_EQ(t->currentIndex().row(), 1);

    const auto kopie = karten[1].id;
    QTest::mouseClick(seite->findChild<QToolButton*>("kartenRunter"), Qt::LeftButton);
    QTest::mouseClick(seite->findChild<QToolButton*>("kartenRunter"), Qt::LeftButton);
    EXPECT_EQ(app->modell().karten[3].id, kopie);
    EXPECT_EQ(t->currentIndex().row(), 3);
}

TEST_F(Editor, KopfNimmtNameKommentarUndZ0) {
    auto* z0 = seite->findChild<QLineEdit*>("z0");
    auto* name = seite->findChild<QLineEdit*>("name");
    const auto ersetzen = [](QLineEdit* feld, const QString& text) {
        QTest::mouseClick(feld, Qt::LeftButton);
        QTest::keyClick(feld, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(feld, text);
        QTest::keyClick(feld, Qt::Key_Return);
    };
    ersetzen(z0, "75");
    EXPECT_EQ(app->modell().z0, 75);
    ersetzen(z0, "0");
    EXPECT_EQ(app->modell().z0, 75);
    auto* meldung = seite->findChild<QLabel*>("kopfMeldung");
    EXPECT_EQ(meldung->text(), "z0 muss eine Zahl grösser als 0 sein, etwa 50 (Ω).");
    ersetzen(name, " ");
    EXPECT_EQ(meldung->text(), "Das Modell braucht einen Namen.");
    ersetzen(name, "Meine Yagi");
    EXPECT_EQ(app->modell().name, "Meine Yagi");
    EXPECT_FALSE(meldung->isVisible());

    QSignalSpy gespeichert(app.get(), &AppModell::modellGeaendert);
    auto* kommentar = seite->findChild<QPlainTextEdit*>("kommentar");
    QTest::mouseClick(kommentar->viewport(), Qt::LeftButton);
    QTest::keyClick(kommentar, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(kommentar, Qt::Key_Return);
    QTest::keyClicks(kommentar, "Zweite Zeile");
    ASSERT_TRUE(warten([&] { return gespeichert.count() == 1; }, 2000));
    EXPECT_EQ(app->modell().kommentar.back(), "Zweite Zeile");
}

TEST(Textabgleich, JedesFeldImDeckZaehltKennungUndTextBleiben) {
    auto alt = NECKern::Modell::lesen("GW 1 5 0 0 0 0 0 1 0.001\nGE 0\nEN\n", "a");
    alt.karten[0].text = "Strahler";
    for (const auto& [gw, tag, x] : {std::tuple{"GW 2 5 0 0 0 0 0 1 0.001", "2", "0"},
                                     std::tuple{"GW 1 5 9 0 0 0 0 1 0.001", "1", "9"}}) {
        const auto gelesen = NECKern::Modell::lesen(std::string(gw) + "\nGE 0\nEN\n", "a");
        const auto neu = Textabgleich::zusammenfuehren(alt, gelesen).karten[0];
        EXPECT_EQ(neu.ganz[0], tag) << gw;
        EXPECT_EQ(neu.reell[0], x) << gw;
        EXPECT_EQ(neu.id, alt.karten[0].id);
        EXPECT_EQ(neu.text, "Strahler");
    }
}
