#include "Fenster/Diagramme/FeldAbschnitt.hpp"

#include "Fenster/Diagramme/Eingaben.hpp"
#include "Fenster/Diagramme/FeldKarte.hpp"
#include "Fenster/Ergebnis/Abschnitt.hpp"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

FeldAbschnitt::FeldAbschnitt(AppModell& modell, QWidget* eltern) : QWidget(eltern), modell_(modell) {
    auto* leistung = Eingaben::zahl(modell, &AppModell::feldLeistung, &AppModell::setFeldLeistung,
                                    &AppModell::feldLeistungGeaendert, {0.1, 1e7, 1, " W"}, this);
    auto* hoehe = Eingaben::zahl(modell, &AppModell::feldHoehe, &AppModell::setFeldHoehe,
                                 &AppModell::feldHoeheGeaendert, {-1e4, 1e4, 2, " m"}, this);
    auto* halb = Eingaben::zahl(modell, &AppModell::feldHalb, &AppModell::setFeldHalb,
                                &AppModell::feldHalbGeaendert, {0.01, 1e5, 2, " m"}, this);
    // Das Modell rechnet mit 3 bis 61 Punkten je Seite.
    auto* punkte = Eingaben::ganz(modell, &AppModell::feldPunkte, &AppModell::setFeldPunkte,
                                  &AppModell::feldPunkteGeaendert, 3, 61, this);
    leistung->setToolTip("Sendeleistung");
    hoehe->setToolTip("Höhe der waagrechten Ebene über dem Nullpunkt");
    halb->setToolTip("Halbe Seitenlänge des Quadrats um die Antennenmitte");
    punkte->setToolTip("Punkte je Seite (3 bis 61)");
    start_ = new QPushButton("Feldstärke rechnen", this);
    laeuft_ = new QProgressBar(this);
    laeuft_->setRange(0, 0);
    laeuft_->setMaximumWidth(120);
    hinweis_ =
        new QLabel("Ohne Ergebnis mit Segmenten gibt es keine Feldstärke; bitte zuerst rechnen.", this);
    karte_ = new FeldKarte(this);
    karte_->setMinimumHeight(380);

    // Zwei Zeilen, damit der Abschnitt auch im kleinsten Fenster ohne seitliches Rollen passt.
    auto* raster = new QGridLayout;
    const std::pair<const char*, QWidget*> felder[] = {
        {"Leistung", leistung}, {"Höhe", hoehe}, {"Halbe Seite", halb}, {"Punkte", punkte}};
    for (int i = 0; i < 4; ++i) {
        raster->addWidget(new QLabel(felder[i].first, this), i / 3, 2 * (i % 3));
        raster->addWidget(felder[i].second, i / 3, 2 * (i % 3) + 1);
    }
    raster->addWidget(start_, 1, 2, 1, 2, Qt::AlignLeft);
    raster->addWidget(laeuft_, 1, 4, 1, 2);
    raster->setColumnStretch(6, 1);
    // Ränder und Kopf wie die Abschnitte der Ergebnisseite darüber.
    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(12, 0, 12, 12);
    spalte->setSpacing(10);
    spalte->addWidget(Abschnitt::trenner(this));
    spalte->addWidget(Abschnitt::titel("Feldstärke", this));
    spalte->addLayout(raster);
    spalte->addWidget(hinweis_);
    spalte->addWidget(karte_, 1);

    connect(start_, &QPushButton::clicked, &modell_, &AppModell::feldRechnen);
    for (auto signal : {&AppModell::feldLaeuftGeaendert, &AppModell::aktuellGeaendert})
        connect(&modell_, signal, this, &FeldAbschnitt::zustandZeigen);
    for (auto signal : {&AppModell::feldGeaendert, &AppModell::aktuellGeaendert})
        connect(&modell_, signal, this, &FeldAbschnitt::karteZeigen);
    zustandZeigen();
    karteZeigen();
}

void FeldAbschnitt::zustandZeigen() {
    const auto* aktuell = modell_.aktuell();
    const bool moeglich = aktuell && !aktuell->segmente.empty();
    start_->setEnabled(moeglich && !modell_.feldLaeuft());
    laeuft_->setVisible(modell_.feldLaeuft());
    hinweis_->setVisible(!moeglich);
}

void FeldAbschnitt::karteZeigen() {
    const auto* aktuell = modell_.aktuell();
    karte_->zeigen(modell_.feld(), aktuell ? aktuell->segmente : std::vector<NECKern::Segment>{});
}
