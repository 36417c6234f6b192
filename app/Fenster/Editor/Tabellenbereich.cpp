#include "Fenster/Editor/Tabellenbereich.hpp"

#include "Fenster/Editor/Bedienelemente.hpp"
#include "Fenster/Editor/Tabelle.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

Tabellenbereich::Tabellenbereich(AppModell& app, const QString& titel, const QString& name, QWidget* eltern)
    : QWidget(eltern), app_(app), tabelle_(new Tabelle(this)), spalte_(new QVBoxLayout(this)), name_(name),
      knoepfe_(new QHBoxLayout), meldung_(Bedienelemente::meldungszeile(this)) {
    tabelle_->setObjectName(name);
    meldung_->setObjectName(name + "Meldung");
    knoepfe_->setSpacing(4);
    knoepfe_->addWidget(Bedienelemente::titel(titel, this));
    knoepfe_->addStretch();
    spalte_->setContentsMargins(0, 0, 0, 0);
    spalte_->setSpacing(4);
    spalte_->addLayout(knoepfe_);
    spalte_->addWidget(tabelle_, 1);
    spalte_->addWidget(meldung_);
    connect(tabelle_, &Tabelle::eingabeVerworfen, this, [this] { meldungSetzen({}); });
}

QToolButton* Tabellenbereich::knopf(const QString& text, const QString& hinweis, const QString& name) {
    auto* k = Bedienelemente::knopf(text, hinweis, this);
    k->setObjectName(name);
    knoepfe_->addWidget(k);
    return k;
}

void Tabellenbereich::meldungSetzen(const QString& text) {
    Bedienelemente::meldungSetzen(meldung_, text);
}
