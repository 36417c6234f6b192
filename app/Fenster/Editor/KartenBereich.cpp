#include "Fenster/Editor/KartenBereich.hpp"

#include "Fenster/Editor/Bedienelemente.hpp"
#include "Fenster/Editor/KartenTabelle.hpp"
#include "Fenster/Editor/Tabelle.hpp"
#include "Fenster/Editor/Zeilen.hpp"

#include "Modell/AppModell.hpp"

#include "NECKern/Feldwerte.hpp"
#include "NECKern/Modellpruefung.hpp"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <charconv>

namespace {

using NECKern::Karte;

bool istDraht(const std::string& typ) {
    return typ == "GW" || typ == "GA" || typ == "GH";
}

// Ohne aktuelle Zeile: Geometrie vor die Karte GE, alles andere vor EN, sonst ans Ende.
int einfuegestelle(const std::vector<Karte>& karten, const std::string& typ) {
    const bool geometrie = typ.size() == 2 && typ[0] == 'G' && typ != "GE" && typ != "GN";
    const char* vor = geometrie ? "GE" : "EN";
    const auto stelle =
        std::find_if(karten.begin(), karten.end(), [&](const Karte& k) { return k.typ == vor; });
    return static_cast<int>(stelle - karten.begin());
}

// Menüfolge: erst die Geometrie, dann Speisung, Umgebung und Ausgabe, dann was die Bibliothek sonst kennt.
std::vector<std::string> menuefolge() {
    static constexpr std::array<const char*, 23> vorn{"GW", "GA", "GH", "GM", "GR", "GX", "GS", "GE",
                                                      "EX", "LD", "TL", "NT", "GN", "FR", "RP", "NE",
                                                      "NH", "PT", "PQ", "KH", "EK", "XQ", "EN"};
    std::vector<std::string> folge;
    const auto& bekannt = Karte::beschreibung();
    for (const char* typ : vorn)
        if (bekannt.contains(typ)) folge.emplace_back(typ);
    for (const auto& [typ, text] : bekannt)
        if (typ != "CM" && typ != "CE" && std::find(folge.begin(), folge.end(), typ) == folge.end())
            folge.push_back(typ);
    return folge;
}

} // namespace

KartenBereich::KartenBereich(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), modell_(new KartenTabelle(app, this)), tabelle_(new Tabelle(this)),
      meldung_(Bedienelemente::meldungszeile(this)), menue_(menueBauen()) {
    tabelle_->setObjectName("karten");
    meldung_->setObjectName("kartenMeldung");
    tabelle_->setModel(modell_);
    // Spalten so breit wie ihr Inhalt, damit keine Formel abgeschnitten ist; gemessen werden
    // nur die sichtbaren und einige Zeilen mehr, damit auch 2000 Karten schnell bleiben.
    auto* kopf = tabelle_->horizontalHeader();
    kopf->setResizeContentsPrecision(100);
    kopf->setSectionResizeMode(QHeaderView::ResizeToContents);
    kopf->setMinimumSectionSize(fontMetrics().horizontalAdvance("0000") + 8);

    auto* neu = Bedienelemente::knopf("Neu ▾", "Karte hinzufügen", this);
    neu->setObjectName("karteNeu");
    neu->setMenu(menue_);
    neu->setPopupMode(QToolButton::InstantPopup);
    neu->setStyleSheet("QToolButton::menu-indicator { image: none; width: 0; }");
    auto* doppel =
        Bedienelemente::knopf("Duplizieren", "Gewählte Karten verdoppeln; Drähte bekommen neue Tags", this);
    auto* weg = Bedienelemente::knopf("Löschen", "Gewählte Karten löschen (Entf)", this);
    auto* hoch = Bedienelemente::knopf("▲", "Nach oben", this);
    auto* runter = Bedienelemente::knopf("▼", "Nach unten", this);
    doppel->setObjectName("karteDuplizieren");
    weg->setObjectName("karteLoeschen");
    hoch->setObjectName("karteHoch");
    runter->setObjectName("karteRunter");

    auto* knoepfe = new QHBoxLayout;
    knoepfe->setSpacing(4);
    knoepfe->addWidget(Bedienelemente::titel("Karten", this));
    knoepfe->addStretch();
    for (auto* k : {neu, doppel, weg, hoch, runter})
        knoepfe->addWidget(k);

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(4);
    spalte->addLayout(knoepfe);
    spalte->addWidget(tabelle_, 1);
    spalte->addWidget(meldung_);

    connect(doppel, &QToolButton::clicked, this, &KartenBereich::duplizieren);
    connect(weg, &QToolButton::clicked, this, &KartenBereich::loeschen);
    connect(tabelle_, &Tabelle::loeschenGewuenscht, this, &KartenBereich::loeschen);
    connect(tabelle_, &Tabelle::eingabeVerworfen, this,
            [this] { Bedienelemente::meldungSetzen(meldung_, {}); });
    connect(hoch, &QToolButton::clicked, this, [this] { verschieben(-1); });
    connect(runter, &QToolButton::clicked, this, [this] { verschieben(1); });
    connect(modell_, &KartenTabelle::meldung, this,
            [this](const QString& text) { Bedienelemente::meldungSetzen(meldung_, text); });
    connect(&app_, &AppModell::modellGeaendert, this, [this] {
        modell_->abgleichen();
        aktuelleZeileGeaendert();
    });
    connect(tabelle_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &KartenBereich::aktuelleZeileGeaendert);
    aktuelleZeileGeaendert();
}

QMenu* KartenBereich::menueBauen() {
    auto* menue = new QMenu(this);
    menue->setObjectName("kartenMenue");
    const auto& beschreibung = Karte::beschreibung();
    for (const auto& typ : menuefolge()) {
        auto* aktion = menue->addAction(QString::fromStdString(typ + " – " + beschreibung.at(typ)));
        aktion->setObjectName(QString::fromStdString("karte" + typ));
        connect(aktion, &QAction::triggered, this, [this, typ] { hinzufuegen(typ); });
        if (typ == "GE" || typ == "GN") menue->addSeparator();
    }
    return menue;
}

void KartenBereich::hinzufuegen(const std::string& typ) {
    auto m = app_.modell();
    const auto aktuell = tabelle_->currentIndex();
    const int zeile = aktuell.isValid() ? aktuell.row() + 1 : einfuegestelle(m.karten, typ);
    m.karten.insert(m.karten.begin() + zeile, NECKern::Modellpruefung::neueKarte(typ, m));
    app_.setModell(m);
    tabelle_->setFocus();
    tabelle_->zeilenWaehlen({zeile});
}

void KartenBereich::loeschen() {
    const auto zeilen = tabelle_->gewaehlteZeilen();
    if (zeilen.empty()) return;
    auto m = app_.modell();
    Zeilen::loeschen(m.karten, zeilen);
    app_.setModell(m);
    tabelle_->zeilenWaehlen({std::min(zeilen.front(), static_cast<int>(m.karten.size()) - 1)});
}

void KartenBereich::verschieben(int richtung) {
    auto m = app_.modell();
    const auto neu = Zeilen::verschieben(m.karten, tabelle_->gewaehlteZeilen(), richtung);
    app_.setModell(m);
    tabelle_->zeilenWaehlen(neu);
}

void KartenBereich::duplizieren() {
    const auto zeilen = tabelle_->gewaehlteZeilen();
    if (zeilen.empty()) return;
    auto m = app_.modell();
    // Ein zweiter Draht mit gleichem Tag liesse offen, welchen Speisung und Lasten meinen:
    // Kopien von Drähten bekommen die nächsten freien Tags.
    const auto tag = NECKern::Modellpruefung::neueKarte("GW", m).ganz.front();
    std::int64_t naechsterTag = 1;
    std::from_chars(tag.data(), tag.data() + tag.size(), naechsterTag);
    std::vector<Karte> kopien;
    for (int z : zeilen) {
        const auto& k = m.karten[Zeilen::stelle(z)];
        Karte kopie(k.typ, k.ganz, k.reell, k.text); // neue Kennung
        if (istDraht(kopie.typ) && !kopie.ganz.empty()) kopie.ganz[0] = std::to_string(naechsterTag++);
        kopien.push_back(std::move(kopie));
    }
    const int nach = zeilen.back() + 1;
    m.karten.insert(m.karten.begin() + nach, kopien.begin(), kopien.end());
    app_.setModell(m);
    std::vector<int> neu;
    for (int i = 0; i < static_cast<int>(kopien.size()); ++i)
        neu.push_back(nach + i);
    tabelle_->zeilenWaehlen(neu);
}

void KartenBereich::aktuelleZeileGeaendert() {
    const auto aktuell = tabelle_->currentIndex();
    std::optional<std::int64_t> draht;
    // Ohne aktuelle Zeile nennt der Kopf die Felder der ersten Karte.
    const int zeile = aktuell.isValid() ? aktuell.row() : 0;
    if (zeile < modell_->rowCount()) modell_->setKopfTyp(modell_->karte(zeile).typ);
    if (aktuell.isValid()) {
        const auto& k = modell_->karte(aktuell.row());
        if (k.typ == "GW") draht = NECKern::Feldwerte::ganz(k, 0, modell_->stand().werte);
    }
    if (draht == gemeldeterDraht_) return;
    gemeldeterDraht_ = draht;
    emit drahtGewaehlt(draht);
}
