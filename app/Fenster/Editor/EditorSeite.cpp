#include "Fenster/Editor/EditorSeite.hpp"

#include "Fenster/Editor/Bedienelemente.hpp"
#include "Fenster/Editor/DeckTextBereich.hpp"
#include "Fenster/Editor/KartenBereich.hpp"
#include "Fenster/Editor/ModellKopf.hpp"
#include "Fenster/Editor/VariablenBereich.hpp"

#include "Modell/AppModell.hpp"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

EditorSeite::EditorSeite(AppModell& app, QWidget* eltern)
    : QWidget(eltern), kopf_(new ModellKopf(app, this)), variablen_(new VariablenBereich(app, this)),
      karten_(new KartenBereich(app, this)), text_(new DeckTextBereich(app, this)),
      stapel_(new QStackedWidget(this)),
      tabellenKnopf_(Bedienelemente::knopf("Tabellen", "Variablen und Karten als Tabellen", this)),
      textKnopf_(Bedienelemente::knopf("Text", "Das ganze Deck als Text bearbeiten", this)) {
    tabellenKnopf_->setObjectName("tabellenmodus");
    textKnopf_->setObjectName("textmodus");
    auto* gruppe = new QButtonGroup(this);
    for (auto* k : {tabellenKnopf_, textKnopf_}) {
        k->setCheckable(true);
        gruppe->addButton(k);
    }
    tabellenKnopf_->setChecked(true);

    auto* kopfzeile = new QHBoxLayout;
    kopfzeile->setSpacing(0);
    kopfzeile->addWidget(Bedienelemente::titel("Modell", this));
    kopfzeile->addStretch();
    kopfzeile->addWidget(tabellenKnopf_);
    kopfzeile->addWidget(textKnopf_);

    auto* teiler = new QSplitter(Qt::Vertical, this);
    teiler->setChildrenCollapsible(false);
    teiler->addWidget(variablen_);
    teiler->addWidget(karten_);
    teiler->setStretchFactor(0, 2);
    teiler->setStretchFactor(1, 3);

    auto* tabellen = new QWidget(this);
    auto* tabellenSpalte = new QVBoxLayout(tabellen);
    tabellenSpalte->setContentsMargins(0, 0, 0, 0);
    tabellenSpalte->setSpacing(8);
    tabellenSpalte->addWidget(kopf_);
    tabellenSpalte->addWidget(teiler, 1);

    stapel_->addWidget(tabellen);
    stapel_->addWidget(text_);

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(8, 8, 8, 8);
    spalte->setSpacing(6);
    spalte->addLayout(kopfzeile);
    spalte->addWidget(stapel_, 1);

    connect(textKnopf_, &QToolButton::toggled, this, &EditorSeite::setTextmodus);
    connect(karten_, &KartenBereich::drahtGewaehlt, this, &EditorSeite::drahtGewaehlt);
}

bool EditorSeite::textmodus() const {
    return stapel_->currentWidget() == text_;
}

void EditorSeite::setTextmodus(bool an) {
    if (an == textmodus()) return;
    if (an) {
        text_->zeigen();
        stapel_->setCurrentWidget(text_);
    } else {
        text_->verlassen();
        stapel_->setCurrentIndex(0);
    }
    textKnopf_->setChecked(an);
    tabellenKnopf_->setChecked(!an);
}
