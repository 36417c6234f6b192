#include "Fenster/Seiten/KernSeite.hpp"

#include "NECKern/Systemgrund.hpp"

#include "Fenster/Seiten/KernEintrag.hpp"
#include "Fenster/Seiten/Seitenbau.hpp"

#include "Modell/AppModell.hpp"
#include "Modell/ZirkonInstallation.hpp"

#include "NECKern/Rechenkerne/Kernliste.hpp"

#include <QButtonGroup>
#include <QDesktopServices>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QUrl>
#include <QVBoxLayout>

#include <filesystem>

using Seitenbau::faerben;
using Seitenbau::text;

KernSeite::KernSeite(AppModell& app, QWidget* eltern) : QWidget(eltern), app_(app) {
    auto* spalte = new QVBoxLayout(this);
    spalte->setSpacing(12);
    spalte->addWidget(kerneTeil());
    spalte->addWidget(ordnerTeil());
    spalte->addWidget(zirkonTeil());
    spalte->addWidget(selbsttestTeil());
    spalte->addStretch(1);

    connect(&app_, &AppModell::kerneGeaendert, this, &KernSeite::listeAufbauen);
    connect(&app_, &AppModell::kernKennungGeaendert, this, &KernSeite::wahlZeigen);
    connect(&app_, &AppModell::installationGeaendert, this, &KernSeite::installationZeigen);
    listeAufbauen();
    installationZeigen();
}

QWidget* KernSeite::kerneTeil() {
    auto [kasten, spalte] = Seitenbau::kasten("Kern wählen", this);
    liste_ = new QVBoxLayout;
    liste_->setSpacing(6);
    spalte->addLayout(liste_);
    ersatz_ = new QLabel(kasten);
    ersatz_->setWordWrap(true);
    faerben(*ersatz_, Seitenbau::Farbe::bekannt());
    spalte->addWidget(ersatz_);

    gruppe_ = new QButtonGroup(this);
    connect(gruppe_, &QButtonGroup::idClicked, this, &KernSeite::gewaehlt);
    return kasten;
}

QWidget* KernSeite::ordnerTeil() {
    auto [kasten, spalte] = Seitenbau::kasten("Eigene Kernprogramme", this);
    const auto ordner = NECKern::Kernliste::kernordner();
    auto* pfad = new QLabel(text(ordner.string()), kasten);
    pfad->setObjectName("kernordner");
    pfad->setWordWrap(true);
    pfad->setTextInteractionFlags(Qt::TextSelectableByMouse);
    spalte->addWidget(pfad);

    auto* zeile = new QHBoxLayout;
    auto* oeffnen = new QPushButton("Ordner öffnen", kasten);
    auto* pruefen = new QPushButton("Neu prüfen", kasten);
    pruefen->setToolTip("Sieht nach, welche Kernprogramme jetzt vorhanden sind.");
    zeile->addWidget(oeffnen);
    zeile->addWidget(pruefen);
    zeile->addStretch(1);
    spalte->addLayout(zeile);
    connect(oeffnen, &QPushButton::clicked, this, &KernSeite::ordnerOeffnen);
    connect(pruefen, &QPushButton::clicked, this, &KernSeite::listeAufbauen);

    ordnerMeldung_ = Seitenbau::meldung(kasten);
    spalte->addWidget(ordnerMeldung_);
    spalte->addWidget(Seitenbau::hinweis(
        "Ein Kern ist ein ausführbares Programm in diesem Ordner, benannt nach seiner Kennung: zirkon, "
        "zirkon5, zirkon-klinge oder arcanum. Wellenwerk startet es als „Programm {ein} {aus}“: {ein} ist "
        "das NEC-2-Deck, das es lesen soll, {aus} die Datei, in die es seinen Bericht im NEC-2-Format "
        "schreibt. Danach „Neu prüfen“.",
        kasten));
    return kasten;
}

QWidget* KernSeite::zirkonTeil() {
    auto [kasten, spalte] = Seitenbau::kasten("zirkon", this);
    if (const auto eingebettet = AppModell::zirkonEingebettet()) {
        spalte->addWidget(Seitenbau::hinweis(
            "zirkon ist in Wellenwerk enthalten (" + text(eingebettet->string()) +
                "). Die drei zirkon-Kerne rechnen damit; eine Installation ist nicht nötig.",
            kasten));
        return kasten;
    }
    auto* zeile = new QHBoxLayout;
    installieren_ = new QPushButton("zirkon installieren", kasten);
    installieren_->setObjectName("zirkonInstallieren");
    installiert_ = new QProgressBar(kasten);
    installiert_->setRange(0, 0);
    installiert_->setTextVisible(false);
    installiert_->setMaximumWidth(120);
    zeile->addWidget(installieren_);
    zeile->addWidget(installiert_);
    zeile->addStretch(1);
    spalte->addLayout(zeile);
    installation_ = new QLabel(kasten);
    installation_->setObjectName("installation");
    installation_->setWordWrap(true);
    installation_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    spalte->addWidget(installation_);
    spalte->addWidget(Seitenbau::hinweis(
        "Lädt das Paket zirkon mit pip aus dem Python-Paketindex in eine eigene Python-Umgebung neben dem "
        "Kernordner und legt dort die Programme der drei zirkon-Kerne ab. Braucht Python 3, zsh und eine "
        "Verbindung zum Internet; ein Neustart ist danach nicht nötig.",
        kasten));
    connect(installieren_, &QPushButton::clicked, &app_, &AppModell::zirkonInstallieren);
    return kasten;
}

QWidget* KernSeite::selbsttestTeil() {
    auto [kasten, spalte] = Seitenbau::kasten("Selbsttest", this);
    auto* zeile = new QHBoxLayout;
    auto* starten = new QPushButton("Selbsttest der Rechenkerne …", kasten);
    starten->setObjectName("selbsttest");
    zeile->addWidget(starten);
    zeile->addStretch(1);
    spalte->addLayout(zeile);
    selbsttestKern_ = Seitenbau::hinweis({}, kasten);
    spalte->addWidget(selbsttestKern_);
    connect(starten, &QPushButton::clicked, &app_, &AppModell::selbsttestStarten);
    return kasten;
}

void KernSeite::showEvent(QShowEvent* ereignis) {
    listeAufbauen();
    QWidget::showEvent(ereignis);
}

void KernSeite::listeAufbauen() {
    for (auto* e : eintraege_)
        delete e;
    eintraege_.clear();
    int nummer = 0;
    for (const auto& kern : app_.kerne()) {
        auto* e = new KernEintrag(kern, this);
        gruppe_->addButton(e->wahl(), nummer++);
        liste_->addWidget(e);
        eintraege_.push_back(e);
    }
    wahlZeigen();
}

void KernSeite::wahlZeigen() {
    const auto& kennung = app_.kernKennung();
    // Ist der gewählte Kern nicht da, ist keiner angekreuzt.
    gruppe_->setExclusive(false);
    for (auto* e : eintraege_) {
        e->wahl()->setChecked(e->kennung() == kennung);
        e->markieren(e->kennung() == kennung);
    }
    gruppe_->setExclusive(true);

    const auto kern = app_.kernWaehlen();
    const bool ersetzt = kern->kennung() != kennung;
    ersatz_->setVisible(ersetzt);
    if (ersetzt)
        ersatz_->setText("„" + text(kennung) + "“ ist nicht verfügbar – gerechnet wird mit " +
                         text(kern->name()) + ".");
    selbsttestKern_->setText("Rechnet kleine Fälle mit bekannter Lösung (Dipole, Monopol über idealem "
                             "Boden, Nahfeld) auf dem gewählten Kern – " +
                             text(kern->name()) + " – und vergleicht mit Theorie und Referenz.");
}

void KernSeite::gewaehlt(int nummer) {
    if (nummer < 0 || nummer >= static_cast<int>(eintraege_.size())) return;
    app_.setKernKennung(eintraege_[static_cast<std::size_t>(nummer)]->kennung());
    app_.rechnen(false);
}

void KernSeite::installationZeigen() {
    if (!installieren_) return;
    const auto& stand = app_.installation();
    const bool laeuft = stand == ZirkonInstallation::laeuft;
    installieren_->setEnabled(!laeuft);
    installiert_->setVisible(laeuft);
    installation_->setVisible(stand.has_value());
    installation_->setText(stand ? text(*stand) : QString());
    faerben(*installation_, laeuft                                ? Seitenbau::Farbe::neutral()
                            : stand == ZirkonInstallation::fertig ? Seitenbau::Farbe::gut()
                                                                  : Seitenbau::Farbe::schlecht());
}

void KernSeite::ordnerOeffnen() {
    const auto ordner = NECKern::Kernliste::kernordner();
    std::error_code fehler;
    std::filesystem::create_directories(ordner, fehler);
    QString meldung;
    if (fehler)
        meldung = "Der Kernordner lässt sich nicht anlegen: " + text(NECKern::systemgrund(fehler)) + ".";
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(text(ordner.string()))))
        meldung = "Kein Dateimanager hat den Ordner geöffnet; bitte den Pfad oben von Hand öffnen.";
    Seitenbau::melden(*ordnerMeldung_, meldung);
}
