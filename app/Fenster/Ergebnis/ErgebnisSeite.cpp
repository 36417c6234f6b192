#include "Fenster/Ergebnis/ErgebnisSeite.hpp"

#include "Fenster/Ergebnis/Abschnitt.hpp"
#include "Fenster/Ergebnis/BefundeAbschnitt.hpp"
#include "Fenster/Ergebnis/ErgebnisDetails.hpp"
#include "Fenster/Ergebnis/GegenprobeAbschnitt.hpp"
#include "Fenster/Ergebnis/GueteAbschnitt.hpp"
#include "Fenster/Ergebnis/Kennzahlen.hpp"

#include "Modell/AppModell.hpp"

#include <QFrame>
#include <QVBoxLayout>

ErgebnisSeite::ErgebnisSeite(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), kennzahlen_(new Kennzahlen(app, this)), mitErgebnis_(new QWidget(this)),
      details_(new ErgebnisDetails(app, mitErgebnis_)), guete_(new GueteAbschnitt(app, mitErgebnis_)),
      befunde_(new BefundeAbschnitt(app, mitErgebnis_)),
      gegenprobe_(new GegenprobeAbschnitt(app, mitErgebnis_)), z0_(app.modell().z0) {
    auto* teil = new QVBoxLayout(mitErgebnis_);
    teil->setContentsMargins(0, 0, 0, 0);
    teil->setSpacing(12);
    teil->addWidget(Abschnitt::trenner(mitErgebnis_));
    teil->addWidget(details_);
    teil->addWidget(Abschnitt::trenner(mitErgebnis_));
    teil->addWidget(guete_);
    teil->addWidget(Abschnitt::trenner(mitErgebnis_));
    teil->addWidget(befunde_);
    teil->addWidget(gegenprobe_);

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(12, 10, 12, 12);
    spalte->setSpacing(12);
    spalte->addWidget(kennzahlen_);
    spalte->addWidget(mitErgebnis_);
    spalte->addStretch();

    connect(&app_, &AppModell::ergebnisGeaendert, this, &ErgebnisSeite::ergebnisGeaendert);
    connect(&app_, &AppModell::aktuellGeaendert, this, &ErgebnisSeite::aktuellGeaendert);
    connect(&app_, &AppModell::modellGeaendert, this, [this] {
        // Nur z0 wirkt auf die Seite: es bestimmt das SWR.
        if (app_.modell().z0 == z0_) return;
        z0_ = app_.modell().z0;
        kennzahlen_->aktualisieren();
    });
    connect(&app_, &AppModell::gueteGeaendert, guete_, &GueteAbschnitt::aktualisieren);
    connect(&app_, &AppModell::gueteLaeuftGeaendert, guete_, &GueteAbschnitt::aktualisieren);
    connect(&app_, &AppModell::befundeGeaendert, befunde_, &BefundeAbschnitt::aktualisieren);
    connect(&app_, &AppModell::gegenprobeGeaendert, gegenprobe_, &GegenprobeAbschnitt::aktualisieren);
    mitErgebnis_->setVisible(app_.ergebnis().has_value());
}

void ErgebnisSeite::ergebnisGeaendert() {
    kennzahlen_->frequenzenSetzen();
    mitErgebnis_->setVisible(app_.ergebnis().has_value());
}

void ErgebnisSeite::aktuellGeaendert() {
    kennzahlen_->aktualisieren();
    details_->aktualisieren();
    gegenprobe_->aktualisieren();
}
