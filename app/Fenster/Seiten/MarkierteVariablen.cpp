#include "Fenster/Seiten/MarkierteVariablen.hpp"

#include "Fenster/Seiten/Seitenbau.hpp"

#include "Modell/AppModell.hpp"

using Seitenbau::text;

namespace {

std::vector<std::size_t> markierte(const NECKern::Modell& m) {
    std::vector<std::size_t> stellen;
    for (std::size_t i = 0; i < m.variablen.size(); ++i)
        if (m.variablen[i].optimieren) stellen.push_back(i);
    return stellen;
}

} // namespace

MarkierteVariablen::MarkierteVariablen(AppModell& app, QObject* eltern)
    : QAbstractTableModel(eltern), app_(app), zeilen_(markierte(app.modell())) {
    connect(&app_, &AppModell::modellGeaendert, this, &MarkierteVariablen::modellGeaendert);
}

void MarkierteVariablen::modellGeaendert() {
    auto neu = markierte(app_.modell());
    // Gleiche Zeilen: nur die Inhalte melden, damit Auswahl und Eingabefokus bleiben.
    if (neu == zeilen_) {
        if (!zeilen_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, spalten - 1));
        return;
    }
    beginResetModel();
    zeilen_ = std::move(neu);
    endResetModel();
}

int MarkierteVariablen::rowCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : static_cast<int>(zeilen_.size());
}

int MarkierteVariablen::columnCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : spalten;
}

QVariant MarkierteVariablen::data(const QModelIndex& index, int rolle) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const auto& v = app_.modell().variablen[zeilen_[static_cast<std::size_t>(index.row())]];
    const bool anzeige = rolle == Qt::DisplayRole;
    if (rolle == Qt::ToolTipRole && index.column() == minimum)
        return "Leer: 80 % des Startwerts. Der Optimierer geht nicht darunter.";
    if (rolle == Qt::ToolTipRole && index.column() == maximum)
        return "Leer: 120 % des Startwerts. Der Optimierer geht nicht darüber.";
    if (!anzeige && rolle != Qt::EditRole) return {};
    auto grenze = [anzeige](const std::optional<double>& g) {
        return g ? Seitenbau::zahl(*g) : anzeige ? QString("–") : QString();
    };
    switch (index.column()) {
    case name:
        return text(v.name);
    case formel:
        return text(v.ausdruck);
    case minimum:
        return grenze(v.minimum);
    case maximum:
        return grenze(v.maximum);
    default:
        return {};
    }
}

QVariant MarkierteVariablen::headerData(int abschnitt, Qt::Orientation richtung, int rolle) const {
    if (richtung != Qt::Horizontal || rolle != Qt::DisplayRole) return {};
    static const char* titel[] = {"Variable", "Formel", "Minimum", "Maximum"};
    return abschnitt >= 0 && abschnitt < spalten ? QVariant(titel[abschnitt]) : QVariant();
}

Qt::ItemFlags MarkierteVariablen::flags(const QModelIndex& index) const {
    auto f = QAbstractTableModel::flags(index);
    return index.column() == name ? f : f | Qt::ItemIsEditable;
}

bool MarkierteVariablen::setData(const QModelIndex& index, const QVariant& wert, int rolle) {
    if (rolle != Qt::EditRole || !index.isValid() || index.row() >= rowCount()) return false;
    auto m = app_.modell();
    auto& v = m.variablen[zeilen_[static_cast<std::size_t>(index.row())]];
    const auto eingabe = wert.toString().trimmed();
    if (index.column() == formel) {
        if (eingabe.isEmpty()) {
            emit ungueltig("Die Formel von „" + text(v.name) + "“ darf nicht leer sein.");
            return false;
        }
        v.ausdruck = eingabe.toStdString();
    } else {
        std::optional<double> grenze;
        if (!eingabe.isEmpty()) {
            grenze = Seitenbau::zahlLesen(eingabe);
            if (!grenze) {
                emit ungueltig(Seitenbau::keineZahl(eingabe));
                return false;
            }
        }
        (index.column() == minimum ? v.minimum : v.maximum) = grenze;
        if (v.minimum && v.maximum && *v.minimum >= *v.maximum) {
            emit ungueltig("Das Minimum von „" + text(v.name) + "“ muss kleiner als sein Maximum sein.");
            return false;
        }
    }
    app_.setModell(m);
    return true;
}
