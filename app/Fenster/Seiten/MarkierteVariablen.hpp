#pragma once

#include <QAbstractTableModel>

#include <cstddef>
#include <vector>

class AppModell;

// Die zum Optimieren markierten Variablen als Tabelle: Name, Formel, Minimum,
// Maximum. Eine Änderung ersetzt das Modell – ein Schritt zum Rückgängigmachen,
// wie im Editor.
class MarkierteVariablen : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Spalte { name, formel, minimum, maximum, spalten };

    explicit MarkierteVariablen(AppModell& app, QObject* eltern = nullptr);

    int rowCount(const QModelIndex& eltern = {}) const override;
    int columnCount(const QModelIndex& eltern = {}) const override;
    QVariant data(const QModelIndex& index, int rolle) const override;
    QVariant headerData(int abschnitt, Qt::Orientation richtung, int rolle) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& wert, int rolle) override;

  signals:
    // Eine Eingabe wurde nicht übernommen; der Satz sagt, warum.
    void ungueltig(const QString& satz);

  private:
    void modellGeaendert();

    AppModell& app_;
    std::vector<std::size_t> zeilen_; // Stellen der markierten Variablen im Modell
};
