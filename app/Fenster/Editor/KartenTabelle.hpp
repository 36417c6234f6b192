#pragma once

#include "Fenster/Editor/Formelstand.hpp"
#include "Fenster/Editor/Zeilenmodell.hpp"

#include "NECKern/Karte.hpp"

#include <optional>
#include <string>
#include <vector>

class AppModell;

// Die Karten des Modells als Tabelle: Spalte 0 der Typ, dann die Felder in
// Kartenfolge (erst ganzzahlige, dann reelle). Der Kopf zeigt die Feldnamen des
// Typs der aktuellen Zeile. Jede angenommene Eingabe speichert ein neues Modell.
class KartenTabelle : public Zeilenmodell<NECKern::Karte> {
    Q_OBJECT

  public:
    // Die Meldung des Auswerters zu einer Zelle; leer, wenn sie einen Wert hat.
    static constexpr int meldungRolle = Qt::UserRole + 1;

    explicit KartenTabelle(AppModell& app, QObject* eltern = nullptr);

    int columnCount(const QModelIndex& eltern = {}) const override;
    QVariant data(const QModelIndex& index, int rolle) const override;
    bool setData(const QModelIndex& index, const QVariant& wert, int rolle) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int spalte, Qt::Orientation richtung, int rolle) const override;

    // Holt die Karten aus dem Anwendungsmodell.
    void abgleichen();
    // Die Feldnamen dieses Typs stehen im Kopf.
    void setKopfTyp(const std::string& typ);

    const NECKern::Karte& karte(int zeile) const { return zeilen_[static_cast<std::size_t>(zeile)]; }
    const Formelstand& stand() const { return stand_; }

  signals:
    // Eine Eingabe wurde abgelehnt (Satz) oder angenommen (leer).
    void meldung(const QString& text);

  private:
    // Text des Felds an einer Spalte; nichts, wenn die Karte dort kein Feld hat.
    std::optional<std::string> feldText(const NECKern::Karte& k, int spalte) const;
    const std::string& zellMeldung(int zeile, int spalte) const;

    AppModell& app_;
    Formelstand stand_;
    int spalten_ = 1;
    std::string kopfTyp_;
    // Meldungen je Zeile und Spalte, erst beim Zeichnen ausgewertet.
    mutable std::vector<std::optional<std::vector<std::string>>> meldungen_;
};
