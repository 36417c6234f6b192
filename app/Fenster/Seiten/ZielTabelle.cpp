#include "Fenster/Seiten/ZielTabelle.hpp"

#include "Fenster/Seiten/Seitenbau.hpp"

#include "Modell/AppModell.hpp"

#include <algorithm>

using NECKern::Ziel;
using Seitenbau::text;

namespace {

QString einheit(Ziel::Art art) {
    switch (art) {
    case Ziel::Art::gewinn:
        return " dBi";
    case Ziel::Art::vorRueck:
        return " dB";
    case Ziel::Art::impedanzR:
        return " Ω";
    default:
        return {};
    }
}

int stelle(Ziel::Art art) {
    const auto& alle = Ziel::arten();
    return static_cast<int>(std::find(alle.begin(), alle.end(), art) - alle.begin());
}

} // namespace

ZielTabelle::ZielTabelle(AppModell& app, QObject* eltern)
    : QAbstractTableModel(eltern), app_(app), zeilen_(static_cast<int>(app.ziele().size())) {
    connect(&app_, &AppModell::zieleGeaendert, this, &ZielTabelle::zieleGeaendert);
}

void ZielTabelle::zieleGeaendert() {
    const int neu = static_cast<int>(app_.ziele().size());
    // Gleich viele Zeilen: nur die Inhalte melden, damit Auswahl und offene Auswahllisten bleiben.
    if (neu == zeilen_) {
        if (neu > 0) emit dataChanged(index(0, 0), index(neu - 1, spalten - 1));
        return;
    }
    beginResetModel();
    zeilen_ = neu;
    endResetModel();
}

int ZielTabelle::rowCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : zeilen_;
}

int ZielTabelle::columnCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : spalten;
}

QVariant ZielTabelle::data(const QModelIndex& index, int rolle) const {
    if (!index.isValid() || index.row() >= zeilen_) return {};
    const auto& z = app_.ziele()[static_cast<std::size_t>(index.row())];
    const bool anzeige = rolle == Qt::DisplayRole;
    if (rolle == Qt::ToolTipRole && index.column() == gewicht)
        return "Wie stark dieses Ziel gegenüber den anderen zählt.";
    if (rolle == Qt::ToolTipRole && index.column() == sollwert && z.art == Ziel::Art::resonanz)
        return "Resonanz heisst Blindwiderstand null; einen Sollwert braucht es nicht.";
    if (!anzeige && rolle != Qt::EditRole) return {};
    switch (index.column()) {
    case art:
        return anzeige ? QVariant(text(Ziel::text(z.art))) : QVariant(stelle(z.art));
    case mhz:
        return Seitenbau::zahl(z.mhz);
    case sollwert:
        if (z.art == Ziel::Art::resonanz) return anzeige ? QVariant("–") : QVariant();
        return Seitenbau::zahl(z.sollwert) + (anzeige ? einheit(z.art) : QString());
    case gewicht:
        return Seitenbau::zahl(z.gewicht);
    default:
        return {};
    }
}

QVariant ZielTabelle::headerData(int abschnitt, Qt::Orientation richtung, int rolle) const {
    if (richtung != Qt::Horizontal || rolle != Qt::DisplayRole) return {};
    static const char* titel[] = {"Art", "MHz", "Sollwert", "Gewicht"};
    return abschnitt >= 0 && abschnitt < spalten ? QVariant(titel[abschnitt]) : QVariant();
}

Qt::ItemFlags ZielTabelle::flags(const QModelIndex& index) const {
    auto f = QAbstractTableModel::flags(index);
    if (!index.isValid() || index.row() >= zeilen_) return f;
    const bool ohneSoll = app_.ziele()[static_cast<std::size_t>(index.row())].art == Ziel::Art::resonanz;
    return index.column() == sollwert && ohneSoll ? f : f | Qt::ItemIsEditable;
}

bool ZielTabelle::setData(const QModelIndex& index, const QVariant& wert, int rolle) {
    if (rolle != Qt::EditRole || !index.isValid() || index.row() >= zeilen_) return false;
    auto ziele = app_.ziele();
    auto& z = ziele[static_cast<std::size_t>(index.row())];
    if (index.column() == art) {
        const int i = wert.toInt();
        if (i < 0 || i >= static_cast<int>(Ziel::arten().size())) return false;
        z.art = Ziel::arten()[static_cast<std::size_t>(i)];
        app_.setZiele(ziele);
        return true;
    }
    // Die Einheit darf mit eingegeben werden.
    auto eingabe = wert.toString().trimmed();
    if (const auto e = einheit(z.art).trimmed(); !e.isEmpty() && eingabe.endsWith(e)) eingabe.chop(e.size());
    const auto x = Seitenbau::zahlLesen(eingabe);
    if (!x) {
        emit ungueltig(Seitenbau::keineZahl(wert.toString()));
        return false;
    }
    if (index.column() == mhz && *x <= 0) {
        emit ungueltig("Die Frequenz eines Ziels muss grösser als 0 MHz sein.");
        return false;
    }
    if (index.column() == gewicht && *x < 0) {
        emit ungueltig("Das Gewicht eines Ziels darf nicht negativ sein.");
        return false;
    }
    (index.column() == mhz ? z.mhz : index.column() == sollwert ? z.sollwert : z.gewicht) = *x;
    app_.setZiele(ziele);
    return true;
}

void ZielTabelle::hinzufuegen() {
    auto ziele = app_.ziele();
    double frequenz = 14.0;
    if (!ziele.empty()) {
        frequenz = ziele.back().mhz;
    } else {
        try {
            frequenz = app_.modell().frequenzen().start;
        } catch (const std::exception&) {
            // Ohne lesbare FR-Karte bleibt es bei der Vorgabe.
        }
    }
    ziele.emplace_back(Ziel::Art::swr, frequenz, 1.5, 1.0);
    app_.setZiele(ziele);
}

void ZielTabelle::loeschen(int zeile) {
    auto ziele = app_.ziele();
    if (zeile < 0 || zeile >= static_cast<int>(ziele.size())) return;
    ziele.erase(ziele.begin() + zeile);
    app_.setZiele(ziele);
}
