#pragma once

#include "Fenster/Editor/Formelstand.hpp"
#include "Fenster/Editor/Zeilenmodell.hpp"

#include "NECKern/Variable.hpp"

class AppModell;

// Die Variablen des Modells als Tabelle: Name, Formel, Wert (oder die Meldung des
// Auswerters in Rot), Optimieren, Minimum, Maximum.
class VariablenTabelle : public Zeilenmodell<NECKern::Variable> {
    Q_OBJECT

  public:
    enum Spalte { name, formel, wert, optimieren, minimum, maximum, anzahl };
    static constexpr int meldungRolle = Qt::UserRole + 1;

    explicit VariablenTabelle(AppModell& app, QObject* eltern = nullptr);

    int columnCount(const QModelIndex& eltern = {}) const override;
    QVariant data(const QModelIndex& index, int rolle) const override;
    bool setData(const QModelIndex& index, const QVariant& neu, int rolle) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int spalte, Qt::Orientation richtung, int rolle) const override;

    void abgleichen();

  signals:
    void meldung(const QString& text);

  private:
    // Prüft die Eingabe und ändert die Variable in einer Kopie des Modells; false bei Ablehnung.
    bool aendern(NECKern::Variable& v, int spalte, const QVariant& neu, int rolle);

    AppModell& app_;
    Formelstand stand_;
};
