#include "Fenster/Seiten/OptimiererSeite.hpp"

#include "Fenster/Seiten/KostenDiagramm.hpp"
#include "Fenster/Seiten/MarkierteVariablen.hpp"
#include "Fenster/Seiten/Seitenbau.hpp"
#include "Fenster/Seiten/ZielArtDelegat.hpp"
#include "Fenster/Seiten/ZielTabelle.hpp"

#include "Modell/AppModell.hpp"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QVBoxLayout>

#include <fmt/printf.h>

using Seitenbau::melden;
using Seitenbau::meldung;
using Seitenbau::text;

namespace {

// Tabellen in der scrollenden Seite: so hoch wie ihre Zeilen, Spalten über die ganze Breite.
void einrichten(QTableView& t) {
    t.verticalHeader()->hide();
    t.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    t.verticalHeader()->setDefaultSectionSize(t.fontMetrics().height() + 14);
    t.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    t.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    t.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Seitenbau::hoeheAnpassen(t);
}

void mitZeilenHoehe(QTableView& t) {
    auto anpassen = [&t] { Seitenbau::hoeheAnpassen(t); };
    QObject::connect(t.model(), &QAbstractItemModel::modelReset, &t, anpassen);
    QObject::connect(t.model(), &QAbstractItemModel::rowsInserted, &t, anpassen);
    QObject::connect(t.model(), &QAbstractItemModel::rowsRemoved, &t, anpassen);
}

QString fuenfStellen(double x) {
    return text(fmt::sprintf("%.5g", x));
}

} // namespace

OptimiererSeite::OptimiererSeite(AppModell& app, QWidget* eltern) : QWidget(eltern), app_(app) {
    auto* spalte = new QVBoxLayout(this);
    spalte->setSpacing(12);
    spalte->addWidget(variablenTeil());
    spalte->addWidget(zieleTeil());
    spalte->addWidget(sucheTeil());
    spalte->addStretch(1);

    connect(&app_, &AppModell::modellGeaendert, this, [this] {
        variablenZeigen();
        werteZeigen();
        sucheZeigen();
    });
    connect(&app_, &AppModell::zieleGeaendert, this, &OptimiererSeite::sucheZeigen);
    connect(&app_, &AppModell::optimiererGeaendert, this, &OptimiererSeite::sucheZeigen);
    connect(&app_, &AppModell::kernKennungGeaendert, this, &OptimiererSeite::sucheZeigen);
    connect(&app_, &AppModell::kerneGeaendert, this, &OptimiererSeite::sucheZeigen);
    connect(&app_, &AppModell::optVerlaufGeaendert, this, [this] {
        diagramm_->setVerlauf(app_.optVerlauf());
        sucheZeigen();
    });
    connect(&app_, &AppModell::optWerteGeaendert, this, [this] {
        werteZeigen();
        sucheZeigen();
    });
    diagramm_->setVerlauf(app_.optVerlauf());
    variablenZeigen();
    werteZeigen();
    sucheZeigen();
}

QWidget* OptimiererSeite::variablenTeil() {
    auto [kasten, spalte] = Seitenbau::kasten("Variablen zum Optimieren", this);
    variablen_ = new MarkierteVariablen(app_, this);
    variablenTabelle_ = new QTableView(kasten);
    variablenTabelle_->setObjectName("variablen");
    variablenTabelle_->setModel(variablen_);
    einrichten(*variablenTabelle_);
    mitZeilenHoehe(*variablenTabelle_);
    spalte->addWidget(variablenTabelle_);
    keineVariable_ = Seitenbau::hinweis("Keine Variable ist zum Optimieren markiert. Im Editor bei einer "
                                        "Variablen „optimieren“ ankreuzen; hier erscheinen dann ihre Formel "
                                        "und ihre Grenzen.",
                                        kasten);
    spalte->addWidget(keineVariable_);
    variablenMeldung_ = meldung(kasten);
    spalte->addWidget(variablenMeldung_);
    spalte->addWidget(Seitenbau::hinweis(
        "Ohne Grenzen sucht der Optimierer zwischen 80 % und 120 % des Startwerts.", kasten));
    connect(variablen_, &MarkierteVariablen::ungueltig, this,
            [this](const QString& satz) { melden(*variablenMeldung_, satz); });
    return kasten;
}

QWidget* OptimiererSeite::zieleTeil() {
    auto [kasten, spalte] = Seitenbau::kasten("Ziele", this);
    ziele_ = new ZielTabelle(app_, this);
    zieleTabelle_ = new QTableView(kasten);
    zieleTabelle_->setObjectName("ziele");
    zieleTabelle_->setModel(ziele_);
    zieleTabelle_->setItemDelegateForColumn(ZielTabelle::art, new ZielArtDelegat(zieleTabelle_));
    zieleTabelle_->setSelectionBehavior(QAbstractItemView::SelectRows);
    zieleTabelle_->setSelectionMode(QAbstractItemView::SingleSelection);
    einrichten(*zieleTabelle_);
    zieleTabelle_->horizontalHeader()->setSectionResizeMode(ZielTabelle::art, QHeaderView::ResizeToContents);
    mitZeilenHoehe(*zieleTabelle_);
    // Die Auswahlliste der Art steht in jeder Zeile offen.
    auto listenOeffnen = [this] {
        for (int i = 0; i < ziele_->rowCount(); ++i)
            zieleTabelle_->openPersistentEditor(ziele_->index(i, ZielTabelle::art));
    };
    connect(ziele_, &QAbstractItemModel::modelReset, this, listenOeffnen);
    listenOeffnen();
    spalte->addWidget(zieleTabelle_);

    auto* knoepfe = new QHBoxLayout;
    auto* hinzu = new QPushButton("Ziel hinzufügen", kasten);
    loeschen_ = new QPushButton("Ziel löschen", kasten);
    knoepfe->addWidget(hinzu);
    knoepfe->addWidget(loeschen_);
    knoepfe->addStretch(1);
    spalte->addLayout(knoepfe);
    zieleMeldung_ = meldung(kasten);
    spalte->addWidget(zieleMeldung_);

    connect(hinzu, &QPushButton::clicked, ziele_, &ZielTabelle::hinzufuegen);
    connect(loeschen_, &QPushButton::clicked, this, &OptimiererSeite::zielLoeschen);
    connect(ziele_, &ZielTabelle::ungueltig, this,
            [this](const QString& satz) { melden(*zieleMeldung_, satz); });
    connect(&app_, &AppModell::zieleGeaendert, this, [this] { melden(*zieleMeldung_, {}); });
    auto auswahl = [this] { loeschen_->setEnabled(zieleTabelle_->selectionModel()->hasSelection()); };
    connect(zieleTabelle_->selectionModel(), &QItemSelectionModel::selectionChanged, this, auswahl);
    connect(ziele_, &QAbstractItemModel::modelReset, this, auswahl);
    auswahl();
    return kasten;
}

QWidget* OptimiererSeite::sucheTeil() {
    auto [kasten, spalte] = Seitenbau::kasten("Suche", this);
    auto* zeile = new QHBoxLayout;
    optimieren_ = new QPushButton("Optimieren", kasten);
    optimieren_->setObjectName("optimieren");
    // Breit genug für jede Aufschrift, damit der Knopf beim Wechsel nicht springt.
    optimieren_->setMinimumWidth(optimieren_->fontMetrics().horizontalAdvance("Wird abgebrochen …") + 32);
    stand_ = new QLabel(kasten);
    stand_->setWordWrap(true);
    zeile->addWidget(optimieren_);
    zeile->addWidget(stand_, 1);
    spalte->addLayout(zeile);
    connect(optimieren_, &QPushButton::clicked, this, &OptimiererSeite::startenOderAbbrechen);

    diagramm_ = new KostenDiagramm(kasten);
    spalte->addWidget(diagramm_);

    werte_ = new QTableWidget(0, 3, kasten);
    werte_->setObjectName("werte");
    werte_->setHorizontalHeaderLabels({"Variable", "jetzt", "gefunden"});
    werte_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    werte_->setSelectionMode(QAbstractItemView::NoSelection);
    werte_->setFocusPolicy(Qt::NoFocus);
    einrichten(*werte_);
    spalte->addWidget(werte_);

    auto* unten = new QHBoxLayout;
    uebernehmen_ = new QPushButton("Übernehmen", kasten);
    uebernehmen_->setObjectName("uebernehmen");
    unten->addWidget(uebernehmen_);
    unten->addWidget(Seitenbau::hinweis("Schreibt die gefundenen Werte mit fünf Stellen in die Variablen und "
                                        "rechnet; „Rückgängig“ nimmt es zurück.",
                                        kasten),
                     1);
    spalte->addLayout(unten);
    connect(uebernehmen_, &QPushButton::clicked, &app_, &AppModell::optimierungUebernehmen);
    return kasten;
}

void OptimiererSeite::variablenZeigen() {
    const bool keine = variablen_->rowCount() == 0;
    variablenTabelle_->setVisible(!keine);
    keineVariable_->setVisible(keine);
    melden(*variablenMeldung_, {});
}

void OptimiererSeite::sucheZeigen() {
    const bool laeuft = app_.optimierer() != nullptr;
    if (!laeuft) abbruchGewuenscht_ = false;
    const bool bereit = variablen_->rowCount() > 0 && !app_.ziele().empty();
    optimieren_->setText(!laeuft ? "Optimieren" : abbruchGewuenscht_ ? "Wird abgebrochen …" : "Abbrechen");
    optimieren_->setEnabled(laeuft ? !abbruchGewuenscht_ : bereit);
    optimieren_->setToolTip(laeuft || bereit ? QString()
                                             : "Braucht mindestens eine markierte Variable und ein Ziel.");
    uebernehmen_->setEnabled(!laeuft && !app_.optWerte().empty());

    const auto& verlauf = app_.optVerlauf();
    const auto kern = text(app_.kernWaehlen()->name());
    if (verlauf.empty())
        stand_->setText(laeuft ? "Startet mit " + kern + " …"
                               : "Rechnet mit dem gewählten Kern: " + kern + ".");
    else
        stand_->setText(text(fmt::sprintf(laeuft ? "Schritt %d, beste Kosten %.4g"
                                                 : "Beendet nach Schritt %d, "
                                                   "beste Kosten %.4g",
                                          verlauf.back().schritt, verlauf.back().kosten)));
}

void OptimiererSeite::werteZeigen() {
    const auto& gefunden = app_.optWerte();
    NECKern::Werte jetzt;
    try {
        jetzt = app_.modell().variablenWerte();
    } catch (const std::exception&) {
        // Eine Formel, die nicht aufgeht, zeigt „–“; die Meldung dazu kommt aus dem Rechengang.
    }
    werte_->setRowCount(static_cast<int>(gefunden.size()));
    int zeile = 0;
    for (const auto& [name, wert] : gefunden) {
        const auto aktuell = jetzt.find(name);
        werte_->setItem(zeile, 0, new QTableWidgetItem(text(name)));
        werte_->setItem(zeile, 1,
                        new QTableWidgetItem(aktuell == jetzt.end() ? "–" : fuenfStellen(aktuell->second)));
        werte_->setItem(zeile, 2, new QTableWidgetItem(fuenfStellen(wert)));
        ++zeile;
    }
    werte_->setVisible(!gefunden.empty());
    Seitenbau::hoeheAnpassen(*werte_);
}

void OptimiererSeite::startenOderAbbrechen() {
    if (app_.optimierer()) {
        abbruchGewuenscht_ = true;
        app_.optimierungAbbrechen();
        sucheZeigen();
        return;
    }
    app_.optimieren();
}

void OptimiererSeite::zielLoeschen() {
    const auto zeilen = zieleTabelle_->selectionModel()->selectedRows();
    if (!zeilen.isEmpty()) ziele_->loeschen(zeilen.front().row());
}
