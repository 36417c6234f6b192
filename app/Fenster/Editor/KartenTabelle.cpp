#include "Fenster/Editor/KartenTabelle.hpp"

#include "Fenster/Editor/Feldnamen.hpp"
#include "Fenster/Editor/Zellpruefung.hpp"

#include "Modell/AppModell.hpp"

#include <QBrush>
#include <QColor>
#include <QFont>

#include <algorithm>

namespace {

// So viele Felder hat die breiteste bekannte Karte; nur neue Typen mit mehr Feldern verbreitern die Tabelle.
constexpr int mindestFelder = 10;

int feldzahl(const std::string& typ) {
    const auto f = NECKern::Karte::felder(typ);
    return f.ganz + f.reell;
}

QString typHinweis(const std::string& typ) {
    const auto& b = NECKern::Karte::beschreibung();
    const auto eintrag = b.find(typ);
    return QString::fromStdString(typ + " – " +
                                  (eintrag != b.end() ? eintrag->second : "unbekannter Kartentyp"));
}

} // namespace

KartenTabelle::KartenTabelle(AppModell& app, QObject* eltern) : Zeilenmodell(eltern), app_(app) {
    abgleichen();
}

void KartenTabelle::abgleichen() {
    const auto& karten = app_.modell().karten;
    int felder = mindestFelder;
    std::string letzterTyp;
    for (const auto& k : karten)
        if (k.typ != letzterTyp) {
            felder = std::max(felder, feldzahl(k.typ));
            letzterTyp = k.typ;
        }
    auto stand = Formelstand::aus(app_.modell().variablen);
    const bool werteAnders = stand.werte != stand_.werte;
    stand_ = std::move(stand);
    meldungen_.clear();

    if (1 + felder != spalten_) {
        beginResetModel();
        spalten_ = 1 + felder;
        zeilen_ = karten;
        endResetModel();
        return;
    }
    zeilenUebernehmen(karten);
    if (werteAnders) allesNeu({Qt::ForegroundRole, Qt::BackgroundRole, Qt::ToolTipRole, meldungRolle});
}

void KartenTabelle::setKopfTyp(const std::string& typ) {
    if (typ == kopfTyp_) return;
    kopfTyp_ = typ;
    emit headerDataChanged(Qt::Horizontal, 1, spalten_ - 1);
}

int KartenTabelle::columnCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : spalten_;
}

std::optional<std::string> KartenTabelle::feldText(const NECKern::Karte& k, int spalte) const {
    const auto f = NECKern::Karte::felder(k.typ);
    const int i = spalte - 1;
    if (i < 0 || i >= f.ganz + f.reell) return std::nullopt;
    const auto& liste = i < f.ganz ? k.ganz : k.reell;
    const auto stelle = static_cast<std::size_t>(i < f.ganz ? i : i - f.ganz);
    return stelle < liste.size() ? liste[stelle] : std::string();
}

const std::string& KartenTabelle::zellMeldung(int zeile, int spalte) const {
    if (meldungen_.size() != zeilen_.size()) meldungen_.assign(zeilen_.size(), std::nullopt);
    auto& eintrag = meldungen_[static_cast<std::size_t>(zeile)];
    if (!eintrag) {
        const auto& k = karte(zeile);
        eintrag.emplace(static_cast<std::size_t>(spalten_));
        for (int s = 1; s < spalten_; ++s)
            if (auto text = feldText(k, s))
                (*eintrag)[static_cast<std::size_t>(s)] = stand_.fehler(*text).value_or("");
    }
    return (*eintrag)[static_cast<std::size_t>(spalte)];
}

QVariant KartenTabelle::data(const QModelIndex& index, int rolle) const {
    if (!index.isValid()) return {};
    const auto& k = karte(index.row());
    if (index.column() == 0) {
        if (rolle == Qt::DisplayRole) return QString::fromStdString(k.typ);
        if (rolle == Qt::ToolTipRole) return typHinweis(k.typ);
        if (rolle == Qt::FontRole) {
            QFont fett;
            fett.setBold(true);
            return fett;
        }
        return {};
    }
    const auto text = feldText(k, index.column());
    if (!text) return {};
    switch (rolle) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return QString::fromStdString(*text);
    case meldungRolle:
        return QString::fromStdString(zellMeldung(index.row(), index.column()));
    case Qt::ForegroundRole:
        if (!zellMeldung(index.row(), index.column()).empty()) return QBrush(QColor(0xB7, 0x1C, 0x1C));
        return {};
    case Qt::BackgroundRole:
        if (!zellMeldung(index.row(), index.column()).empty()) return QBrush(QColor(0xFD, 0xE4, 0xE4));
        return {};
    case Qt::ToolTipRole: {
        const auto name = Feldnamen::feld(k.typ, index.column() - 1);
        const auto& m = zellMeldung(index.row(), index.column());
        return QString::fromStdString(m.empty() ? name.lang : name.lang + "\n" + m);
    }
    default:
        return {};
    }
}

bool KartenTabelle::setData(const QModelIndex& index, const QVariant& wert, int rolle) {
    if (!index.isValid() || rolle != Qt::EditRole || !feldText(karte(index.row()), index.column()))
        return false;
    const auto pruefung = Zellpruefung::kartenfeld(wert.toString().toStdString());
    if (!pruefung.angenommen()) {
        emit meldung(QString::fromStdString(pruefung.meldung));
        return false;
    }
    emit meldung({});
    auto m = app_.modell();
    auto& k = m.karten[static_cast<std::size_t>(index.row())];
    const auto f = NECKern::Karte::felder(k.typ);
    const int i = index.column() - 1;
    auto& liste = i < f.ganz ? k.ganz : k.reell;
    const auto stelle = static_cast<std::size_t>(i < f.ganz ? i : i - f.ganz);
    if (stelle < liste.size() && liste[stelle] == pruefung.text) return true;
    if (liste.size() <= stelle) liste.resize(stelle + 1, "0");
    liste[stelle] = pruefung.text;
    app_.setModell(m);
    return true;
}

Qt::ItemFlags KartenTabelle::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    if (index.column() == 0) return Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    // Zellen ohne Feld sind aus, damit Tab sie überspringt.
    if (!feldText(karte(index.row()), index.column())) return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable;
}

QVariant KartenTabelle::headerData(int spalte, Qt::Orientation richtung, int rolle) const {
    if (richtung != Qt::Horizontal || (rolle != Qt::DisplayRole && rolle != Qt::ToolTipRole)) return {};
    if (spalte == 0) return rolle == Qt::DisplayRole ? QString("Typ") : QString("Kartentyp");
    const int i = spalte - 1;
    if (kopfTyp_.empty()) return rolle == Qt::DisplayRole ? QString::number(spalte) : QVariant();
    if (i >= feldzahl(kopfTyp_)) return {};
    const auto name = Feldnamen::feld(kopfTyp_, i);
    return QString::fromStdString(rolle == Qt::DisplayRole ? name.kurz : kopfTyp_ + ": " + name.lang);
}
