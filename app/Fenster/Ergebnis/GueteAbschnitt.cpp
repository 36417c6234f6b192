#include "Fenster/Ergebnis/GueteAbschnitt.hpp"

#include "Fenster/Ergebnis/Abschnitt.hpp"
#include "Fenster/Ergebnis/Plakette.hpp"

#include "Modell/AppModell.hpp"

#include "NECKern/Guetetest.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

GueteAbschnitt::GueteAbschnitt(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), wert_(Abschnitt::wert(this)), urteil_(new Plakette(this)),
      laeuft_(new QProgressBar(this)), nichtBerechnet_(new QLabel("nicht berechnet", this)) {
    wert_->setObjectName("gueteWert");
    urteil_->setObjectName("gueteUrteil");
    laeuft_->setObjectName("gueteLaeuft");
    nichtBerechnet_->setObjectName("gueteNichtBerechnet");
    nichtBerechnet_->setStyleSheet("color: #5f6368; font-style: italic;");
    laeuft_->setRange(0, 0);
    laeuft_->setTextVisible(false);
    laeuft_->setFixedSize(120, 8);
    laeuft_->setToolTip("Der Gütetest läuft");

    auto* zeile = new QHBoxLayout;
    zeile->setSpacing(10);
    zeile->addWidget(wert_);
    zeile->addWidget(urteil_);
    zeile->addWidget(laeuft_);
    zeile->addWidget(nichtBerechnet_);
    zeile->addStretch();

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(6);
    spalte->addWidget(Abschnitt::titel("Modellgüte (mittlerer Gewinn)", this));
    spalte->addWidget(Abschnitt::erklaerung(NECKern::Guetetest::erklaerung, this));
    spalte->addLayout(zeile);
    aktualisieren();
}

void GueteAbschnitt::aktualisieren() {
    const auto urteil = app_.gueteUrteil();
    wert_->setVisible(urteil.has_value());
    urteil_->setVisible(urteil.has_value());
    laeuft_->setVisible(!urteil && app_.gueteLaeuft());
    nichtBerechnet_->setVisible(!urteil && !app_.gueteLaeuft());
    if (!urteil) return;
    wert_->setText(QString::fromStdString(urteil->wert));
    urteil_->setzen(QString::fromStdString(urteil->wort), urteil->farbe);
}
