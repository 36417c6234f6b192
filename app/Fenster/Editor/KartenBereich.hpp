#pragma once

#include <QWidget>

#include <cstdint>
#include <optional>
#include <string>

class AppModell;
class KartenTabelle;
class QLabel;
class QMenu;
class Tabelle;

// Die Karten des Modells: Typ und Felder unter den Feldnamen des Typs der
// aktuellen Zeile; Karte aus dem Menü der bekannten Typen hinzufügen, löschen,
// verschieben, duplizieren.
class KartenBereich : public QWidget {
    Q_OBJECT

  public:
    explicit KartenBereich(AppModell& app, QWidget* eltern = nullptr);

    Tabelle* tabelle() const { return tabelle_; }
    QMenu* kartenMenue() const { return menue_; }
    void hinzufuegen(const std::string& typ);

  signals:
    void drahtGewaehlt(std::optional<std::int64_t> tag);

  private:
    void loeschen();
    void verschieben(int richtung);
    void duplizieren();
    void aktuelleZeileGeaendert();
    QMenu* menueBauen();

    AppModell& app_;
    KartenTabelle* modell_;
    Tabelle* tabelle_;
    QLabel* meldung_;
    QMenu* menue_;
    std::optional<std::int64_t> gemeldeterDraht_;
};
