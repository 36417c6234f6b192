#include "Fenster/Editor/VariablenTabelle.hpp"

#include "Fenster/Editor/Zellpruefung.hpp"

#include "Modell/AppModell.hpp"

#include <QBrush>
#include <QColor>

namespace {

QString text(const std::string& s) {
    return QString::fromStdString(s);
}

QString grenzText(const std::optional<double>& g) {
    return g ? text(Zellpruefung::zahl(*g)) : QString();
}

} // namespace

VariablenTabelle::VariablenTabelle(AppModell& app, QObject* eltern) : Zeilenmodell(eltern), app_(app) {
    abgleichen();
}

void VariablenTabelle::abgleichen() {
    auto stand = Formelstand::aus(app_.modell().variablen);
    const bool standAnders = stand.zeilen != stand_.zeilen;
    stand_ = std::move(stand);
    zeilenUebernehmen(app_.modell().variablen);
    // Eine Formel wirkt auf alle Variablen nach ihr.
    if (standAnders && !zeilen_.empty()) emit dataChanged(index(0, wert), index(rowCount() - 1, wert));
}

int VariablenTabelle::columnCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : anzahl;
}

QVariant VariablenTabelle::data(const QModelIndex& index, int rolle) const {
    if (!index.isValid()) return {};
    const auto zeile = static_cast<std::size_t>(index.row());
    const auto& v = zeilen_[zeile];
    const bool anzeige = rolle == Qt::DisplayRole || rolle == Qt::EditRole;
    switch (index.column()) {
    case name:
        return anzeige ? text(v.name) : QVariant();
    case formel:
        return anzeige ? text(v.ausdruck) : QVariant();
    case wert: {
        if (zeile >= stand_.zeilen.size()) return {};
        const auto& z = stand_.zeilen[zeile];
        if (rolle == Qt::DisplayRole) return z.wert ? text(Zellpruefung::zahl(*z.wert)) : text(z.meldung);
        if (rolle == meldungRolle || (rolle == Qt::ToolTipRole && !z.wert)) return text(z.meldung);
        if (rolle == Qt::ForegroundRole && !z.wert) return QBrush(QColor(0xB7, 0x1C, 0x1C));
        return {};
    }
    case optimieren:
        return rolle == Qt::CheckStateRole ? (v.optimieren ? Qt::Checked : Qt::Unchecked) : QVariant();
    case minimum:
        return anzeige ? grenzText(v.minimum) : QVariant();
    case maximum:
        return anzeige ? grenzText(v.maximum) : QVariant();
    default:
        return {};
    }
}

bool VariablenTabelle::aendern(NECKern::Variable& v, int spalte, const QVariant& neu, int rolle) {
    if (spalte == optimieren) {
        if (rolle != Qt::CheckStateRole) return false;
        v.optimieren = neu.toInt() == Qt::Checked;
        return true;
    }
    if (rolle != Qt::EditRole) return false;
    const auto eingabe = neu.toString().toStdString();
    Zellpruefung::Pruefung p;
    if (spalte == name) {
        std::vector<std::string> andere;
        for (const auto& w : zeilen_)
            if (w.id != v.id) andere.push_back(w.name);
        p = Zellpruefung::name(eingabe, andere);
        if (p.angenommen()) v.name = p.text;
    } else if (spalte == formel) {
        p = Zellpruefung::formel(eingabe);
        if (p.angenommen()) v.ausdruck = p.text;
    } else {
        auto g = Zellpruefung::grenze(eingabe, stand_.werte);
        p.meldung = g.meldung;
        if (p.angenommen()) (spalte == minimum ? v.minimum : v.maximum) = g.wert;
    }
    emit meldung(text(p.meldung));
    return p.angenommen();
}

bool VariablenTabelle::setData(const QModelIndex& index, const QVariant& neu, int rolle) {
    if (!index.isValid() || !(flags(index) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable))) return false;
    auto m = app_.modell();
    auto& v = m.variablen[static_cast<std::size_t>(index.row())];
    if (!aendern(v, index.column(), neu, rolle)) return false;
    app_.setModell(m);
    return true;
}

Qt::ItemFlags VariablenTabelle::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    const auto basis = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (index.column() == wert) return basis;
    if (index.column() == optimieren) return basis | Qt::ItemIsUserCheckable;
    return basis | Qt::ItemIsEditable;
}

QVariant VariablenTabelle::headerData(int spalte, Qt::Orientation richtung, int rolle) const {
    if (richtung != Qt::Horizontal) return {};
    static const char* const titel[anzahl] = {"Name", "Formel", "Wert", "Opt.", "Min", "Max"};
    static const char* const hinweis[anzahl] = {
        "Name der Variablen, in Formeln ohne Rücksicht auf Gross- und Kleinschreibung",
        "Zahl oder Formel; sie darf die Variablen darüber verwenden",
        "Aktueller Wert der Formel",
        "Der Optimierer darf diese Variable verändern",
        "Untere Grenze für den Optimierer",
        "Obere Grenze für den Optimierer"};
    if (spalte < 0 || spalte >= anzahl) return {};
    if (rolle == Qt::DisplayRole) return QString(titel[spalte]);
    if (rolle == Qt::ToolTipRole) return QString(hinweis[spalte]);
    return {};
}
