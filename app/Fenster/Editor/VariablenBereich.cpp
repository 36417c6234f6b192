#include "Fenster/Editor/VariablenBereich.hpp"

#include "Fenster/Editor/Bedienelemente.hpp"
#include "Fenster/Editor/Tabelle.hpp"
#include "Fenster/Editor/VariablenTabelle.hpp"

#include "Modell/AppModell.hpp"

#include "NECKern/Unicode.hpp"

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
    : Tabellenbereich(app, "Variablen", "variablen", eltern), modell_(new VariablenTabelle(app, this)) {
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
    // Meldungen des Auswerters umbrechen statt sie abzuschneiden; es sind nur wenige Zeilen.
    tabelle_->setWordWrap(true);
    tabelle_->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);

    connect(knopf("Neu", "Variable hinzufügen", "variableNeu"), &QToolButton::clicked, this,
            &VariablenBereich::hinzufuegen);
    zeilenbefehle(&NECKern::Modell::variablen);
    spalte_->addWidget(
        Bedienelemente::hinweis("Formeln: + − × / ^, sin cos (Bogenmass), sind cosd (Grad), sqr, "
                                "c0 = 299,79 (λ = c0/f), Einheiten mm cm in ft",
                                this));

    connect(modell_, &VariablenTabelle::meldung, this, &VariablenBereich::meldungSetzen);
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
