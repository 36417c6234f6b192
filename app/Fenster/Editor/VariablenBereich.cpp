#include "Fenster/Editor/VariablenBereich.hpp"

#include "Fenster/Editor/Bedienelemente.hpp"
#include "Fenster/Editor/Tabelle.hpp"
#include "Fenster/Editor/VariablenTabelle.hpp"
#include "Fenster/Editor/Zeilen.hpp"

#include "Modell/AppModell.hpp"

#include "NECKern/Unicode.hpp"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include <fmt/format.h>

namespace {

// v1, v2, …: der erste Name, den es noch nicht gibt.
std::string freierName(const std::vector<NECKern::Variable>& variablen) {
    for (int n = 1;; ++n) {
        auto name = fmt::format("v{}", n);
        if (std::none_of(variablen.begin(), variablen.end(),
                         [&](const auto& v) { return NECKern::Unicode::klein(v.name) == name; }))
            return name;
    }
}

} // namespace

VariablenBereich::VariablenBereich(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), modell_(new VariablenTabelle(app, this)), tabelle_(new Tabelle(this)),
      meldung_(Bedienelemente::meldungszeile(this)) {
    tabelle_->setObjectName("variablen");
    meldung_->setObjectName("variablenMeldung");
    tabelle_->setModel(modell_);
    auto* kopf = tabelle_->horizontalHeader();
    kopf->setSectionResizeMode(QHeaderView::Interactive);
    kopf->setStretchLastSection(false);
    const int em = fontMetrics().horizontalAdvance('M');
    tabelle_->setColumnWidth(VariablenTabelle::name, 5 * em);
    tabelle_->setColumnWidth(VariablenTabelle::formel, 8 * em);
    tabelle_->setColumnWidth(VariablenTabelle::optimieren, 3 * em);
    tabelle_->setColumnWidth(VariablenTabelle::minimum, 4 * em);
    tabelle_->setColumnWidth(VariablenTabelle::maximum, 4 * em);
    kopf->setSectionResizeMode(VariablenTabelle::wert, QHeaderView::Stretch);

    auto* neu = Bedienelemente::knopf("Neu", "Variable hinzufügen", this);
    auto* weg = Bedienelemente::knopf("Löschen", "Gewählte Variablen löschen (Entf)", this);
    auto* hoch = Bedienelemente::knopf("▲", "Nach oben", this);
    auto* runter = Bedienelemente::knopf("▼", "Nach unten", this);
    neu->setObjectName("variableNeu");
    weg->setObjectName("variableLoeschen");
    hoch->setObjectName("variableHoch");
    runter->setObjectName("variableRunter");

    auto* knoepfe = new QHBoxLayout;
    knoepfe->setSpacing(4);
    knoepfe->addWidget(Bedienelemente::titel("Variablen", this));
    knoepfe->addStretch();
    for (auto* k : {neu, weg, hoch, runter})
        knoepfe->addWidget(k);

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(4);
    spalte->addLayout(knoepfe);
    spalte->addWidget(tabelle_, 1);
    spalte->addWidget(meldung_);
    spalte->addWidget(
        Bedienelemente::hinweis("Formeln: + − × / ^, sin cos (Bogenmass), sind cosd (Grad), sqr, "
                                "c0 = 299,79 (λ = c0/f), Einheiten mm cm in ft",
                                this));

    connect(neu, &QToolButton::clicked, this, &VariablenBereich::hinzufuegen);
    connect(weg, &QToolButton::clicked, this, &VariablenBereich::loeschen);
    connect(tabelle_, &Tabelle::loeschenGewuenscht, this, &VariablenBereich::loeschen);
    connect(tabelle_, &Tabelle::eingabeVerworfen, this,
            [this] { Bedienelemente::meldungSetzen(meldung_, {}); });
    connect(hoch, &QToolButton::clicked, this, [this] { verschieben(-1); });
    connect(runter, &QToolButton::clicked, this, [this] { verschieben(1); });
    connect(modell_, &VariablenTabelle::meldung, this,
            [this](const QString& text) { Bedienelemente::meldungSetzen(meldung_, text); });
    connect(&app_, &AppModell::modellGeaendert, modell_, &VariablenTabelle::abgleichen);
}

void VariablenBereich::hinzufuegen() {
    auto m = app_.modell();
    const auto aktuell = tabelle_->currentIndex();
    const auto zeile = aktuell.isValid() ? aktuell.row() + 1 : static_cast<int>(m.variablen.size());
    m.variablen.insert(m.variablen.begin() + zeile, NECKern::Variable(freierName(m.variablen), "1"));
    app_.setModell(m);
    tabelle_->setFocus();
    const auto ziel = modell_->index(zeile, VariablenTabelle::name);
    tabelle_->selectionModel()->setCurrentIndex(ziel, QItemSelectionModel::ClearAndSelect);
    tabelle_->edit(ziel);
}

void VariablenBereich::loeschen() {
    const auto zeilen = tabelle_->gewaehlteZeilen();
    if (zeilen.empty()) return;
    auto m = app_.modell();
    Zeilen::loeschen(m.variablen, zeilen);
    app_.setModell(m);
    tabelle_->zeilenWaehlen({std::min(zeilen.front(), static_cast<int>(m.variablen.size()) - 1)});
}

void VariablenBereich::verschieben(int richtung) {
    auto m = app_.modell();
    const auto neu = Zeilen::verschieben(m.variablen, tabelle_->gewaehlteZeilen(), richtung);
    app_.setModell(m);
    tabelle_->zeilenWaehlen(neu);
}
