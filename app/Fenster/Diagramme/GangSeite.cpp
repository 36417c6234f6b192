#include "Fenster/Diagramme/GangSeite.hpp"

#include "Fenster/Diagramme/Dateiausgabe.hpp"
#include "Fenster/Diagramme/Eingaben.hpp"
#include "Fenster/Diagramme/GangDiagramm.hpp"
#include "Fenster/Diagramme/SmithDiagramm.hpp"

#include "NECKern/Gangdatei.hpp"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QResizeEvent>
#include <QVBoxLayout>

namespace {

// Kleinste Frequenz der Eingabe: 1 kHz; 0 MHz und darunter bringen den Löser zum Hängen.
constexpr double kleinsteMhz = 0.001;
constexpr int meistePunkte = 2001;
// Ab dieser Breite stehen die beiden Diagramme nebeneinander.
constexpr int nebeneinanderAb = 1000;

} // namespace

GangSeite::GangSeite(AppModell& modell, QWidget* eltern) : QWidget(eltern), modell_(modell) {
    dateiwahl_ = [this](const QString& titel, const QString& vorschlag, const QString& filter) {
        return QFileDialog::getSaveFileName(this, titel, vorschlag, filter);
    };
    const Eingaben::Bereich mhz{kleinsteMhz, 1e6, 3, " MHz"};
    auto* von = Eingaben::zahl(modell, &AppModell::gangVon, &AppModell::setGangVon,
                               &AppModell::gangVonGeaendert, mhz, this);
    auto* bis = Eingaben::zahl(modell, &AppModell::gangBis, &AppModell::setGangBis,
                               &AppModell::gangBisGeaendert, mhz, this);
    auto* punkte = Eingaben::ganz(modell, &AppModell::gangPunkte, &AppModell::setGangPunkte,
                                  &AppModell::gangPunkteGeaendert, 2, meistePunkte, this);
    start_ = new QPushButton("Frequenzgang rechnen", this);
    start_->setToolTip(
        "Rechnet Impedanz, SWR, Gewinn und Vor-Rück über das Band (Strg+G im Menü „Antenne“).");
    abbrechen_ = new QPushButton("Abbrechen", this);
    fortschritt_ = new QProgressBar(this);
    fortschritt_->setFormat("%v von %m Punkten");
    fortschritt_->setMinimumWidth(170);
    hinweis_ = new QLabel(this);
    hinweis_->setStyleSheet("color: #b03020;");
    csv_ = new QPushButton("CSV sichern …", this);
    touchstone_ = new QPushButton("Touchstone sichern …", this);

    auto* band = new QHBoxLayout;
    band->addWidget(new QLabel("Von", this));
    band->addWidget(von);
    band->addWidget(new QLabel("bis", this));
    band->addWidget(bis);
    band->addWidget(new QLabel("Punkte", this));
    band->addWidget(punkte);
    band->addWidget(start_);
    band->addStretch();

    auto* lauf = new QHBoxLayout;
    lauf->addWidget(fortschritt_, 1);
    lauf->addWidget(abbrechen_);
    lauf->addStretch();
    lauf->addWidget(csv_);
    lauf->addWidget(touchstone_);

    diagramm_ = new GangDiagramm(this);
    smith_ = new SmithDiagramm(this);
    diagramm_->setMinimumHeight(320);
    smith_->setMinimumHeight(320);
    diagramme_ = new QBoxLayout(QBoxLayout::TopToBottom);
    diagramme_->addWidget(diagramm_, 3);
    diagramme_->addWidget(smith_, 2);

    auto* spalte = new QVBoxLayout(this);
    spalte->addLayout(band);
    spalte->addLayout(lauf);
    spalte->addWidget(hinweis_);
    spalte->addLayout(diagramme_, 1);

    connect(start_, &QPushButton::clicked, &modell_, &AppModell::frequenzgangRechnen);
    connect(abbrechen_, &QPushButton::clicked, &modell_, &AppModell::rechnungAbbrechen);
    connect(csv_, &QPushButton::clicked, this, [this] { sichern(false); });
    connect(touchstone_, &QPushButton::clicked, this, [this] { sichern(true); });
    for (auto signal :
         {&AppModell::gangVonGeaendert, &AppModell::gangBisGeaendert, &AppModell::gangPunkteGeaendert})
        connect(&modell_, signal, this, &GangSeite::bandGeaendert);
    for (auto signal : {&AppModell::gangFortschrittGeaendert, &AppModell::rechnetGeradeGeaendert})
        connect(&modell_, signal, this, &GangSeite::fortschrittGeaendert);
    for (auto signal : {&AppModell::gangGeaendert, &AppModell::aktuellGeaendert, &AppModell::modellGeaendert})
        connect(&modell_, signal, this, &GangSeite::diagrammeZeigen);
    bandGeaendert();
    fortschrittGeaendert();
    diagrammeZeigen();
}

void GangSeite::resizeEvent(QResizeEvent* ereignis) {
    QWidget::resizeEvent(ereignis);
    diagramme_->setDirection(ereignis->size().width() >= nebeneinanderAb ? QBoxLayout::LeftToRight
                                                                         : QBoxLayout::TopToBottom);
}

QString GangSeite::hinweis() const {
    if (!(modell_.gangVon() > 0) || !(modell_.gangBis() > 0)) return "Frequenz muss grösser als 0 MHz sein.";
    if (modell_.gangPunkte() < 2) return "Der Frequenzgang braucht mindestens 2 Punkte (beide Bandgrenzen).";
    if (!(modell_.gangVon() < modell_.gangBis()))
        return "Die obere Bandgrenze muss über der unteren liegen; bitte „bis“ grösser als „von“ wählen.";
    return {};
}

void GangSeite::bandGeaendert() {
    const QString satz = hinweis();
    hinweis_->setText(satz);
    hinweis_->setVisible(!satz.isEmpty());
    start_->setEnabled(satz.isEmpty());
}

void GangSeite::fortschrittGeaendert() {
    const auto& f = modell_.gangFortschritt();
    const bool laeuft = modell_.rechnetGerade() && f.gesamt > 0 && f.fertig < f.gesamt;
    fortschritt_->setRange(0, std::max(f.gesamt, 1));
    fortschritt_->setValue(f.fertig);
    fortschritt_->setVisible(laeuft);
    abbrechen_->setVisible(laeuft);
}

void GangSeite::diagrammeZeigen() {
    const auto& gang = modell_.gang();
    const double z0 = modell_.modell().z0;
    diagramm_->zeigen(gang, z0);
    const auto* aktuell = modell_.aktuell();
    smith_->zeigen(gang, z0, aktuell ? std::optional<double>(aktuell->mhz) : std::nullopt,
                   aktuell ? aktuell->impedanz : std::nullopt);
    csv_->setEnabled(!gang.empty());
    touchstone_->setEnabled(!gang.empty());
}

void GangSeite::sichern(bool touchstone) {
    const auto& gang = modell_.gang();
    const QString name =
        QString::fromStdString(modell_.modell().name.empty() ? "Frequenzgang" : modell_.modell().name);
    const QString pfad = touchstone
                             ? dateiwahl_("Touchstone sichern", name + ".s1p", "Touchstone-Datei (*.s1p)")
                             : dateiwahl_("CSV sichern", name + ".csv", "CSV-Datei (*.csv)");
    if (pfad.isEmpty()) return;
    const std::string inhalt =
        touchstone ? NECKern::Gangdatei::touchstone(modell_.modell(), gang) : NECKern::Gangdatei::csv(gang);
    if (const auto fehler = Dateiausgabe::schreiben(pfad, QByteArray::fromStdString(inhalt), "Die Datei"))
        QMessageBox::warning(this, "Nicht gesichert", *fehler);
}
