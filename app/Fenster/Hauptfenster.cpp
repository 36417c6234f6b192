#include "Fenster/Hauptfenster.hpp"

#include "Fenster/Ansicht3D/Ansicht3D.hpp"
#include "Fenster/Diagramme/FeldAbschnitt.hpp"
#include "Fenster/Diagramme/GangSeite.hpp"
#include "Fenster/Diagramme/PolarDiagramm.hpp"
#include "Fenster/Editor/EditorSeite.hpp"
#include "Fenster/Ergebnis/ErgebnisSeite.hpp"
#include "Fenster/Seiten/KernSeite.hpp"
#include "Fenster/Seiten/OptimiererSeite.hpp"
#include "Fenster/Seiten/SelbsttestDialog.hpp"
#include "Fenster/Symbole.hpp"
#include "Modell/AppModell.hpp"

#include "NECKern/Beispiele.hpp"

#include <QAction>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <fmt/printf.h>

namespace {

constexpr int mindestBreite = 1200;
constexpr int mindestHoehe = 760;

QString qtext(const std::string& s) {
    return QString::fromStdString(s);
}

QToolButton* schalter(const QString& text, bool an) {
    auto* b = new QToolButton;
    b->setText(text);
    b->setCheckable(true);
    b->setChecked(an);
    b->setToolButtonStyle(Qt::ToolButtonTextOnly);
    return b;
}

} // namespace

Hauptfenster::Hauptfenster(AppModell& modell, QWidget* eltern) : QMainWindow(eltern), modell_(modell) {
    setObjectName("haupt");
    setWindowTitle("Wellenwerk");
    setWindowIcon(Symbole::programm());
    setMinimumSize(mindestBreite, mindestHoehe);
    // Gross genug für alle Seiten, wo der Bildschirm es erlaubt.
    if (const auto* schirm = QGuiApplication::primaryScreen())
        resize((schirm->availableGeometry().size() * 0.9).expandedTo(minimumSize()));
    dateiwahlSetzen();
    menuesBauen();
    werkzeugleisteBauen();

    auto* teilung = new QSplitter(Qt::Horizontal);
    teilung->setObjectName("teilung");
    teilung->setChildrenCollapsible(false);
    auto* editor = new EditorSeite(modell_);
    editor->setMinimumWidth(380);
    teilung->addWidget(editor);
    teilung->addWidget(rechteSpalteBauen());
    connect(editor, &EditorSeite::drahtGewaehlt, ansicht_, &Ansicht3D::hervorheben);
    teilung->setStretchFactor(0, 0);
    teilung->setStretchFactor(1, 1);
    teilung->setSizes({460, mindestBreite - 460});
    setCentralWidget(teilung);

    status_ = new QLabel;
    statusBar()->addWidget(status_, 1);
    // Zeigt sich selbst, solange zeigeSelbsttest gilt.
    new SelbsttestDialog(modell_, this);

    connect(&modell_, &AppModell::aktuellGeaendert, this, &Hauptfenster::aktuellZeigen);
    connect(&modell_, &AppModell::fehlerGeaendert, this, &Hauptfenster::fehlerZeigen);
    connect(&modell_, &AppModell::ergebnisGeaendert, this, &Hauptfenster::statusZeigen);
    connect(&modell_, &AppModell::kernKennungGeaendert, this, &Hauptfenster::statusZeigen);
    connect(&modell_, &AppModell::kerneGeaendert, this, &Hauptfenster::statusZeigen);
    for (auto signal : {&AppModell::rechnetGeradeGeaendert, &AppModell::gueteLaeuftGeaendert,
                        &AppModell::feldLaeuftGeaendert})
        connect(&modell_, signal, this, &Hauptfenster::laufZeigen);
    // Der Fenstertitel bleibt „Wellenwerk“; Datei und ungesicherte Änderungen stehen unten.
    for (auto signal :
         {&AppModell::modellGeaendert, &AppModell::dateiGeaendert, &AppModell::geaendertGeaendert})
        connect(&modell_, signal, this, &Hauptfenster::statusZeigen);
    connect(&modell_, &AppModell::kannRueckgaengigGeaendert, this,
            [this] { rueckgaengig_->setEnabled(modell_.kannRueckgaengig()); });
    connect(&modell_, &AppModell::kannWiederholenGeaendert, this,
            [this] { wiederholen_->setEnabled(modell_.kannWiederholen()); });
    aktuellZeigen();
    fehlerZeigen();
    statusZeigen();
    laufZeigen();
}

void Hauptfenster::dateiwahlSetzen() {
    modell_.setDateiwahl([this](bool speichern, const std::string& vorschlag) -> OptionalerPfad {
        const QString filter = "NEC-Decks (*.nec);;Textdateien (*.txt);;Alle Dateien (*)";
        const QString pfad =
            speichern ? QFileDialog::getSaveFileName(this, "Sichern unter", qtext(vorschlag), filter)
                      : QFileDialog::getOpenFileName(this, "Öffnen", {}, filter);
        if (pfad.isEmpty()) return std::nullopt;
        return std::filesystem::path(pfad.toStdString());
    });
}

QMenu* Hauptfenster::beispielMenue(QWidget* eltern) {
    auto* menue = new QMenu("Beispiele", eltern);
    for (const auto& b : NECKern::Beispiele::alle())
        menue->addAction(qtext(b.name), this, [this, &b] { modell_.beispiel(b.modell()); });
    return menue;
}

void Hauptfenster::menuesBauen() {
    auto* datei = menuBar()->addMenu("&Datei");
    datei->addAction(Symbole::oeffnen(), "Öffnen …", QKeySequence(Qt::CTRL | Qt::Key_O), this,
                     [this] { modell_.oeffnen(); });
    datei->addAction(Symbole::sichern(), "Sichern", QKeySequence(Qt::CTRL | Qt::Key_S), this,
                     [this] { modell_.speichern(false); });
    datei->addAction("Sichern unter …", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), this,
                     [this] { modell_.speichern(true); });
    datei->addSeparator();
    datei->addMenu(beispielMenue(datei));
    datei->addSeparator();
    datei->addAction("Beenden", QKeySequence(Qt::CTRL | Qt::Key_Q), this, &QWidget::close);

    auto* bearbeiten = menuBar()->addMenu("&Bearbeiten");
    rueckgaengig_ = bearbeiten->addAction("Rückgängig", QKeySequence(Qt::CTRL | Qt::Key_Z), this,
                                          [this] { modell_.rueckgaengig(); });
    wiederholen_ = bearbeiten->addAction("Wiederholen", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), this,
                                         [this] { modell_.wiederholen(); });
    rueckgaengig_->setEnabled(modell_.kannRueckgaengig());
    wiederholen_->setEnabled(modell_.kannWiederholen());

    auto* antenne = menuBar()->addMenu("&Antenne");
    antenne->addAction(Symbole::rechnen(), "Rechnen", QKeySequence(Qt::CTRL | Qt::Key_R), this,
                       [this] { modell_.rechnen(false); });
    antenne->addAction("Frequenzgang", QKeySequence(Qt::CTRL | Qt::Key_G), this,
                       [this] { modell_.frequenzgangRechnen(); });
    // Nur während einer Rechnung aktiv, damit Escape sonst den Eingabefeldern bleibt.
    abbrechen_ = antenne->addAction(Symbole::abbrechen(), "Abbrechen", QKeySequence(Qt::Key_Escape), this,
                                    [this] { modell_.rechnungAbbrechen(); });

    auto* hilfe = menuBar()->addMenu("&Hilfe");
    hilfe->addAction("Selbsttest der Rechenkerne …", this, [this] { modell_.selbsttestStarten(); });
    hilfe->addAction("Über Wellenwerk", this, [this] {
        QMessageBox::about(
            this, "Über Wellenwerk",
            "<b>Wellenwerk</b><br>Werkbank für Drahtantennen: NEC-2-Decks mit Formeln, gerechnet "
            "von nec2c oder einem anderen Rechenkern.<br><br>Lizenz: GPL-3.0 oder später.");
    });
}

void Hauptfenster::werkzeugleisteBauen() {
    auto* leiste = addToolBar("Werkzeuge");
    leiste->setObjectName("werkzeuge");
    leiste->setMovable(false);
    leiste->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    auto* beispiele = new QToolButton;
    beispiele->setText("Beispiele");
    beispiele->setIcon(Symbole::beispiele());
    beispiele->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    beispiele->setPopupMode(QToolButton::InstantPopup);
    beispiele->setMenu(beispielMenue(beispiele));
    leiste->addWidget(beispiele);
    leiste->addAction(Symbole::oeffnen(), "Öffnen", this, [this] { modell_.oeffnen(); });
    leiste->addAction(Symbole::sichern(), "Sichern", this, [this] { modell_.speichern(false); });
    leiste->addAction(Symbole::rechnen(), "Rechnen", this, [this] { modell_.rechnen(false); });
}

QWidget* Hauptfenster::rechteSpalteBauen() {
    auto* spalte = new QSplitter(Qt::Vertical);
    spalte->setObjectName("rechts");
    spalte->setMinimumWidth(480);
    spalte->setChildrenCollapsible(false);
    spalte->addWidget(ansichtBauen());

    auto* polar = new QWidget;
    auto* polarZeile = new QHBoxLayout(polar);
    polarZeile->setContentsMargins(0, 0, 0, 0);
    elevation_ = new PolarDiagramm(PolarDiagramm::Schnitt::elevation);
    azimut_ = new PolarDiagramm(PolarDiagramm::Schnitt::azimut);
    polarZeile->addWidget(elevation_);
    polarZeile->addWidget(azimut_);
    spalte->addWidget(polar);

    spalte->addWidget(seitenBauen());
    spalte->setStretchFactor(0, 3);
    spalte->setStretchFactor(1, 2);
    spalte->setStretchFactor(2, 3);
    return spalte;
}

QWidget* Hauptfenster::ansichtBauen() {
    auto* bereich = new QWidget;
    auto* spalte = new QVBoxLayout(bereich);
    spalte->setContentsMargins(4, 4, 4, 0);
    ansicht_ = new Ansicht3D;
    auto* zeile = new QHBoxLayout;
    auto* diagramm = schalter("3D-Diagramm", Ansicht3D::startDiagramm3D);
    auto* strom = schalter("Stromverteilung", Ansicht3D::startStrom);
    auto* animation = schalter("Strom-Animation", Ansicht3D::startAnimation);
    connect(diagramm, &QToolButton::toggled, ansicht_, &Ansicht3D::setDiagramm3D);
    connect(strom, &QToolButton::toggled, ansicht_, &Ansicht3D::setStrom);
    connect(animation, &QToolButton::toggled, ansicht_, &Ansicht3D::setAnimation);
    zeile->addWidget(diagramm);
    zeile->addWidget(strom);
    zeile->addWidget(animation);
    zeile->addStretch(1);
    laeuft_ = new QProgressBar;
    laeuft_->setRange(0, 0);
    laeuft_->setFixedSize(72, 12);
    laeuft_->setTextVisible(false);
    laeuft_->setToolTip("Es wird gerechnet");
    zeile->addWidget(laeuft_);
    stopp_ = new QToolButton;
    stopp_->setDefaultAction(abbrechen_);
    stopp_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    zeile->addWidget(stopp_);
    spalte->addLayout(zeile);
    spalte->addWidget(ansicht_, 1);
    return bereich;
}

QWidget* Hauptfenster::seitenBauen() {
    auto* bereich = new QWidget;
    auto* spalte = new QVBoxLayout(bereich);
    spalte->setContentsMargins(4, 0, 4, 0);

    fehler_ = new QLabel;
    fehler_->setObjectName("fehler");
    fehler_->setWordWrap(true);
    fehler_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    fehler_->setStyleSheet("background: #fdeee9; color: #8c2a1d; border: 1px solid #e7b3a8; "
                           "border-radius: 3px; padding: 4px 6px;");
    spalte->addWidget(fehler_);

    auto* wahl = new QHBoxLayout;
    wahl->setSpacing(0);
    wahl->addStretch(1);
    seitenwahl_ = new QButtonGroup(this);
    seitenwahl_->setExclusive(true);
    for (auto s : alleSeiten) {
        auto* knopf = new QToolButton;
        knopf->setText(titel(s));
        knopf->setCheckable(true);
        knopf->setChecked(s == seite_);
        knopf->setMinimumWidth(110);
        seitenwahl_->addButton(knopf, static_cast<int>(s));
        wahl->addWidget(knopf);
    }
    wahl->addStretch(1);
    spalte->addLayout(wahl);

    seiten_ = new QStackedWidget;
    auto* ergebnis = new QWidget;
    auto* ergebnisSpalte = new QVBoxLayout(ergebnis);
    ergebnisSpalte->setContentsMargins(0, 0, 0, 0);
    ergebnisSpalte->addWidget(new ErgebnisSeite(modell_));
    ergebnisSpalte->addWidget(new FeldAbschnitt(modell_));
    seiten_->addWidget(ergebnis);
    seiten_->addWidget(new GangSeite(modell_));
    seiten_->addWidget(new OptimiererSeite(modell_));
    seiten_->addWidget(new KernSeite(modell_));
    auto* rollen = new QScrollArea;
    rollen->setWidgetResizable(true);
    rollen->setFrameShape(QFrame::NoFrame);
    rollen->setWidget(seiten_);
    spalte->addWidget(rollen, 1);
    connect(seitenwahl_, &QButtonGroup::idClicked, this,
            [this](int id) { seiteWaehlen(static_cast<Seite>(id)); });
    return bereich;
}

void Hauptfenster::seiteWaehlen(Seite s) {
    seite_ = s;
    seitenwahl_->button(static_cast<int>(s))->setChecked(true);
    // Nur die gezeigte Seite bestimmt die Höhe im Rollbereich.
    for (int i = 0; i < seiten_->count(); ++i) {
        const auto politik = i == static_cast<int>(s) ? QSizePolicy::Preferred : QSizePolicy::Ignored;
        seiten_->widget(i)->setSizePolicy(politik, politik);
    }
    seiten_->setCurrentIndex(static_cast<int>(s));
    seiten_->adjustSize();
}

void Hauptfenster::aktuellZeigen() {
    const auto* f = modell_.aktuell();
    // Die Lasten kommen aus dem Modell; nach einer Bearbeitung folgt das neue Ergebnis ohnehin gleich.
    const auto frequenz = f ? std::optional(*f) : std::nullopt;
    ansicht_->zeigen(frequenz, modell_.modell());
    elevation_->zeigen(frequenz);
    azimut_->zeigen(frequenz);
}

void Hauptfenster::fehlerZeigen() {
    const auto& f = modell_.fehler();
    fehler_->setVisible(f.has_value());
    fehler_->setText(f ? qtext(*f) : QString());
}

void Hauptfenster::statusZeigen() {
    const auto& e = modell_.ergebnis();
    const auto kern = e ? e->kern : modell_.kernWaehlen()->name();
    const auto& datei = modell_.datei();
    QString text = datei ? qtext(datei->filename().string()) : qtext(modell_.modell().name);
    if (modell_.geaendert()) text += " (geändert)";
    text += "   ·   Rechenkern: " + qtext(kern);
    if (e) text += qtext(fmt::sprintf("   ·   letzte Rechnung %.2f s", e->dauer));
    status_->setText(text);
}

void Hauptfenster::laufZeigen() {
    laeuft_->setVisible(modell_.rechnetGerade());
    abbrechen_->setEnabled(modell_.rechnungLaeuft());
    stopp_->setVisible(modell_.rechnungLaeuft());
}

void Hauptfenster::closeEvent(QCloseEvent* ereignis) {
    if (!modell_.geaendert()) {
        ereignis->accept();
        return;
    }
    QMessageBox frage(QMessageBox::Question, "Wellenwerk",
                      "Änderungen an „" + qtext(modell_.modell().name) + "“ sichern?", QMessageBox::NoButton,
                      this);
    auto* sichern = frage.addButton("Sichern", QMessageBox::AcceptRole);
    auto* verwerfen = frage.addButton("Verwerfen", QMessageBox::DestructiveRole);
    frage.addButton("Abbrechen", QMessageBox::RejectRole);
    frage.setDefaultButton(sichern);
    frage.exec();
    if (frage.clickedButton() == sichern) modell_.speichern(false);
    const bool schliessen =
        frage.clickedButton() == verwerfen || (frage.clickedButton() == sichern && !modell_.geaendert());
    if (schliessen)
        ereignis->accept();
    else
        ereignis->ignore();
}
