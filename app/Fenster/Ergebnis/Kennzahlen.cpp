#include "Fenster/Ergebnis/Kennzahlen.hpp"

#include "Fenster/Ergebnis/Abschnitt.hpp"
#include "Fenster/Ergebnis/Ergebnistexte.hpp"
#include "Fenster/Ergebnis/Plakette.hpp"

#include "Modell/AppModell.hpp"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include <fmt/printf.h>

namespace {

QString text(const std::string& s) {
    return QString::fromStdString(s);
}

// Eine Kachel: kleine Überschrift, darunter der Wert gross, darunter eine Zusatzzeile.
QFrame* kachel(QLabel* titel, QWidget* wert, QLabel* zusatz, QWidget* eltern) {
    auto* rahmen = new QFrame(eltern);
    rahmen->setObjectName("kachel");
    rahmen->setStyleSheet(
        "QFrame#kachel { background: #f5f6f8; border: 1px solid #dfe1e5; border-radius: 6px; }");
    auto* spalte = new QVBoxLayout(rahmen);
    spalte->setContentsMargins(10, 6, 10, 8);
    spalte->setSpacing(2);
    titel->setStyleSheet("color: #5f6368;");
    spalte->addWidget(titel);
    spalte->addWidget(wert, 0, Qt::AlignLeft);
    if (zusatz) {
        zusatz->setStyleSheet("color: #5f6368;");
        spalte->addWidget(zusatz);
    }
    spalte->addStretch();
    return rahmen;
}

QLabel* wertLabel(const char* name, QWidget* eltern) {
    auto* l = Abschnitt::wert(eltern);
    l->setObjectName(name);
    auto f = l->font();
    f.setPointSizeF(f.pointSizeF() * 1.35);
    f.setBold(true);
    l->setFont(f);
    return l;
}

} // namespace

Kennzahlen::Kennzahlen(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), werte_(new QWidget(this)), leer_(new QLabel("Noch nicht gerechnet", this)),
      frequenz_(new QComboBox(this)), kopieren_(new QToolButton(this)),
      impedanz_(wertLabel("impedanz", this)), swrTitel_(new QLabel(this)), swr_(new Plakette(this)),
      gewinn_(wertLabel("gewinn", this)), richtung_(Abschnitt::wert(this)),
      vorRueck_(wertLabel("vorRueck", this)) {
    leer_->setObjectName("nochNichtGerechnet");
    leer_->setStyleSheet("color: #5f6368;");
    frequenz_->setObjectName("frequenz");
    frequenz_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    kopieren_->setObjectName("kopieren");
    kopieren_->setText("Kopieren");
    kopieren_->setToolTip("Kennzahlen als Text in die Zwischenablage");
    swr_->setObjectName("swr");
    swrTitel_->setObjectName("swrTitel");
    richtung_->setObjectName("richtung");
    auto f = swr_->font();
    f.setPointSizeF(f.pointSizeF() * 1.35);
    f.setBold(true);
    swr_->setFont(f);

    auto* frequenzZeile = new QHBoxLayout;
    frequenzZeile->addWidget(new QLabel("Frequenz", this));
    frequenzZeile->addWidget(frequenz_);
    frequenzZeile->addStretch();

    auto* kacheln = new QGridLayout;
    kacheln->setSpacing(8);
    kacheln->addWidget(kachel(new QLabel("Impedanz", this), impedanz_, nullptr, this), 0, 0);
    kacheln->addWidget(kachel(swrTitel_, swr_, nullptr, this), 0, 1);
    kacheln->addWidget(kachel(new QLabel("Max. Gewinn", this), gewinn_, richtung_, this), 1, 0);
    kacheln->addWidget(kachel(new QLabel("Vor/Rück", this), vorRueck_, nullptr, this), 1, 1);
    kacheln->setColumnStretch(0, 1);
    kacheln->setColumnStretch(1, 1);

    auto* werteSpalte = new QVBoxLayout(werte_);
    werteSpalte->setContentsMargins(0, 0, 0, 0);
    werteSpalte->setSpacing(8);
    werteSpalte->addLayout(frequenzZeile);
    werteSpalte->addLayout(kacheln);

    auto* titelZeile = new QHBoxLayout;
    titelZeile->addWidget(Abschnitt::titel("Kennzahlen", this));
    titelZeile->addStretch();
    titelZeile->addWidget(kopieren_);

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(8);
    spalte->addLayout(titelZeile);
    spalte->addWidget(leer_);
    spalte->addWidget(werte_);

    connect(frequenz_, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (i >= 0) app_.setFrequenzIndex(i);
    });
    connect(kopieren_, &QToolButton::clicked, this,
            [this] { QApplication::clipboard()->setText(alsText()); });
    frequenzenSetzen();
    aktualisieren();
}

void Kennzahlen::frequenzenSetzen() {
    std::vector<double> neu;
    if (const auto& e = app_.ergebnis())
        for (const auto& f : e->frequenzen)
            neu.push_back(f.mhz);
    if (neu == frequenzen_) return;
    frequenzen_ = std::move(neu);
    QStringList eintraege;
    eintraege.reserve(static_cast<qsizetype>(frequenzen_.size()));
    for (double mhz : frequenzen_)
        eintraege << text(fmt::sprintf("%.3f MHz", mhz));
    const QSignalBlocker still(frequenz_);
    frequenz_->clear();
    frequenz_->addItems(eintraege);
    frequenz_->setEnabled(frequenzen_.size() > 1);
}

void Kennzahlen::aktualisieren() {
    const auto* f = app_.aktuell();
    leer_->setVisible(!f);
    werte_->setVisible(f);
    kopieren_->setEnabled(f);
    if (app_.ergebnis() && !f) leer_->setText("Das Ergebnis enthält keine Frequenz.");
    if (!app_.ergebnis()) leer_->setText("Noch nicht gerechnet");
    if (!f) return;

    {
        const QSignalBlocker still(frequenz_);
        frequenz_->setCurrentIndex(static_cast<int>(f - app_.ergebnis()->frequenzen.data()));
    }
    impedanz_->setText(f->impedanz ? text(Ergebnistexte::impedanz(*f->impedanz)) : "–");
    if (const auto swr = app_.swrAnzeige()) {
        swrTitel_->setText(text(swr->titel));
        swr_->setzen(text(swr->wert), swr->farbe);
    }
    const auto max = f->maxGewinn();
    gewinn_->setText(max ? text(fmt::sprintf("%.2f dBi", max->gesamt)) : "–");
    richtung_->setText(max ? text(Ergebnistexte::richtung(*max)) : QString());
    const auto vr = f->vorRueck();
    vorRueck_->setText(vr ? text(fmt::sprintf("%.2f dB", *vr)) : "–");
}

QString Kennzahlen::alsText() const {
    if (!app_.aktuell()) return leer_->text();
    QStringList zeilen;
    zeilen << "Frequenz: " + frequenz_->currentText() << "Impedanz: " + impedanz_->text()
           << swrTitel_->text() + ": " + swr_->text();
    zeilen << "Max. Gewinn: " + gewinn_->text() +
                  (richtung_->text().isEmpty() ? "" : " (" + richtung_->text() + ")");
    zeilen << "Vor/Rück: " + vorRueck_->text();
    return zeilen.join('\n') + '\n';
}
