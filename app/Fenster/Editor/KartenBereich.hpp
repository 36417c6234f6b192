#pragma once

#include "Fenster/Editor/Tabellenbereich.hpp"

#include <cstdint>
#include <optional>
#include <string>

class KartenTabelle;
class QMenu;

// Die Karten des Modells: Typ und Felder unter den Feldnamen des Typs der
// aktuellen Zeile; Karte aus dem Menü der bekannten Typen hinzufügen, löschen,
// verschieben, duplizieren.
class KartenBereich : public Tabellenbereich {
    Q_OBJECT

  public:
    explicit KartenBereich(AppModell& app, QWidget* eltern = nullptr);

    void hinzufuegen(const std::string& typ);

  signals:
    void drahtGewaehlt(std::optional<std::int64_t> tag);

  protected:
    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

  private:
    void duplizieren();
    void aktuelleZeileGeaendert();
    // Verbreitert die Spalten für die sichtbaren Zeilen zwischen von und bis; mit
    // schrumpfen werden sie auf das Nötige gesetzt.
    void spaltenAnpassen(int von, int bis, bool schrumpfen);
    QMenu* menueBauen();

    KartenTabelle* modell_;
    std::optional<std::int64_t> gemeldeterDraht_;
};
