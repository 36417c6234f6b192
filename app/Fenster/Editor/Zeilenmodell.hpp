#pragma once

#include <QAbstractTableModel>

#include <algorithm>
#include <cstddef>
#include <vector>

// Tabellenmodell über eine Kopie der Zeilen des Anwendungsmodells. Beim Abgleich
// erfährt die Ansicht nur, was sich geändert hat, damit offene Editoren, Auswahl
// und Tab-Folge eine Änderung überstehen und grosse Modelle schnell bleiben.
template <typename T> class Zeilenmodell : public QAbstractTableModel {
  public:
    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& eltern = {}) const override {
        return eltern.isValid() ? 0 : static_cast<int>(zeilen_.size());
    }

  protected:
    // Gibt zurück, ob sich etwas geändert hat.
    bool zeilenUebernehmen(const std::vector<T>& neu) {
        const std::size_t alt = zeilen_.size();
        const std::size_t kleiner = std::min(alt, neu.size());
        std::size_t anfang = 0;
        while (anfang < kleiner && zeilen_[anfang] == neu[anfang])
            ++anfang;
        if (anfang == alt && alt == neu.size()) return false;
        std::size_t schluss = 0;
        while (schluss < kleiner - anfang && zeilen_[alt - 1 - schluss] == neu[neu.size() - 1 - schluss])
            ++schluss;

        if (alt == neu.size()) {
            const auto bis = alt - schluss;
            std::copy(neu.begin() + zahl(anfang), neu.begin() + zahl(bis), zeilen_.begin() + zahl(anfang));
            emit dataChanged(index(zahl(anfang), 0), index(zahl(bis) - 1, columnCount() - 1));
            return true;
        }
        if (anfang + schluss == alt) {
            beginInsertRows({}, zahl(anfang), zahl(anfang + neu.size() - alt) - 1);
            zeilen_.insert(zeilen_.begin() + zahl(anfang), neu.begin() + zahl(anfang),
                           neu.begin() + zahl(neu.size() - schluss));
            endInsertRows();
            return true;
        }
        if (anfang + schluss == neu.size()) {
            beginRemoveRows({}, zahl(anfang), zahl(anfang + alt - neu.size()) - 1);
            zeilen_.erase(zeilen_.begin() + zahl(anfang), zeilen_.begin() + zahl(alt - schluss));
            endRemoveRows();
            return true;
        }
        beginResetModel();
        zeilen_ = neu;
        endResetModel();
        return true;
    }

    // Alle Zellen neu zeichnen lassen, etwa wenn sich Variablenwerte geändert haben.
    void allesNeu(const QList<int>& rollen = {}) {
        if (!zeilen_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), rollen);
    }

    static int zahl(std::size_t n) { return static_cast<int>(n); }

    std::vector<T> zeilen_;
};
