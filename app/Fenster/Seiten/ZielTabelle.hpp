#pragma once

#include <QAbstractTableModel>

class AppModell;

// Die Ziele des Optimierers als Tabelle: Art, MHz, Sollwert, Gewicht. Jede
// Änderung setzt die ganze Zielliste im Anwendungsmodell.
class ZielTabelle : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Spalte { art, mhz, sollwert, gewicht, spalten };

    explicit ZielTabelle(AppModell& app, QObject* eltern = nullptr);

    int rowCount(const QModelIndex& eltern = {}) const override;
    int columnCount(const QModelIndex& eltern = {}) const override;
    // Die Art: als Anzeige ihr Text, zum Bearbeiten ihre Stelle in Ziel::arten().
    QVariant data(const QModelIndex& index, int rolle) const override;
    QVariant headerData(int abschnitt, Qt::Orientation richtung, int rolle) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& wert, int rolle) override;

    // Ein neues SWR-Ziel bei der Frequenz des letzten Ziels, sonst bei der des Modells.
    void hinzufuegen();
    void loeschen(int zeile);

  signals:
    void ungueltig(const QString& satz);

  private:
    void zieleGeaendert();

    AppModell& app_;
    int zeilen_ = 0;
};
