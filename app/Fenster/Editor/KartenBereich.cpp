#include "Fenster/Editor/KartenBereich.hpp"

#include "Fenster/Editor/KartenTabelle.hpp"
#include "Fenster/Editor/Tabelle.hpp"
#include "Fenster/Editor/Zeilen.hpp"

#include "Modell/AppModell.hpp"

#include "NECKern/Feldwerte.hpp"
#include "NECKern/Modellpruefung.hpp"

#include <QEvent>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QToolButton>

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
    : Tabellenbereich(app, "Karten", "karten", eltern), modell_(new KartenTabelle(app, this)) {
    tabelle_->setModel(modell_);
    auto* kopf = tabelle_->horizontalHeader();
    kopf->setSectionResizeMode(QHeaderView::Interactive);
    kopf->setMinimumSectionSize(fontMetrics().horizontalAdvance("0000") + 8);
    kopf->setDefaultSectionSize(kopf->minimumSectionSize());

    auto* neu = knopf("Neu ▾", "Karte hinzufügen", "karteNeu");
    neu->setMenu(menueBauen());
    neu->setPopupMode(QToolButton::InstantPopup);
    neu->setStyleSheet("QToolButton::menu-indicator { image: none; width: 0; }");
    connect(knopf("Duplizieren", "Gewählte Karten verdoppeln; Drähte bekommen neue Tags", "karteDuplizieren"),
            &QToolButton::clicked, this, &KartenBereich::duplizieren);
    zeilenbefehle(&NECKern::Modell::karten);

    connect(modell_, &KartenTabelle::meldung, this, &KartenBereich::meldungSetzen);
    connect(&app_, &AppModell::modellGeaendert, this, [this] {
        modell_->abgleichen();
        aktuelleZeileGeaendert();
    });
    connect(tabelle_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &KartenBereich::aktuelleZeileGeaendert);

    // Spalten wachsen mit dem, was sichtbar ist, damit keine Formel abgeschnitten wird.
    // Gemessen werden nur sichtbare Zeilen: so bleibt ein Tastendruck auch bei 2000 Karten schnell.
    const auto alleSichtbaren = [this] { spaltenAnpassen(0, modell_->rowCount() - 1, true); };
    connect(modell_, &QAbstractItemModel::modelReset, this, alleSichtbaren);
    connect(modell_, &QAbstractItemModel::headerDataChanged, this, alleSichtbaren);
    connect(modell_, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& von, const QModelIndex& bis) {
                spaltenAnpassen(von.row(), bis.row(), false);
            });
    connect(modell_, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int von, int bis) { spaltenAnpassen(von, bis, false); });
    connect(tabelle_->verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this] { spaltenAnpassen(0, modell_->rowCount() - 1, false); });
    tabelle_->viewport()->installEventFilter(this);
    aktuelleZeileGeaendert();
    alleSichtbaren();
}

bool KartenBereich::eventFilter(QObject* objekt, QEvent* ereignis) {
    // Erst mit seiner Grösse weiss die Tabelle, welche Zeilen sichtbar sind.
    if (objekt == tabelle_->viewport() && ereignis->type() == QEvent::Resize)
        spaltenAnpassen(0, modell_->rowCount() - 1, false);
    return Tabellenbereich::eventFilter(objekt, ereignis);
}

void KartenBereich::spaltenAnpassen(int von, int bis, bool schrumpfen) {
    const int oben = std::max(von, std::max(tabelle_->rowAt(0), 0));
    const int unten = std::min(bis, tabelle_->rowAt(tabelle_->viewport()->height() - 1) < 0
                                        ? modell_->rowCount() - 1
                                        : tabelle_->rowAt(tabelle_->viewport()->height() - 1));
    auto* kopf = tabelle_->horizontalHeader();
    constexpr int gitter = 3; // die Gitterlinie nimmt der Zelle Platz, den der Grössenhinweis nicht kennt
    for (int spalte = 0; spalte < modell_->columnCount(); ++spalte) {
        int breite = schrumpfen ? std::max(kopf->sectionSizeHint(spalte), kopf->minimumSectionSize())
                                : tabelle_->columnWidth(spalte);
        for (int zeile = oben; zeile <= unten; ++zeile)
            breite =
                std::max(breite, tabelle_->sizeHintForIndex(modell_->index(zeile, spalte)).width() + gitter);
        if (breite != tabelle_->columnWidth(spalte)) tabelle_->setColumnWidth(spalte, breite);
    }
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
