#pragma once

#include <QWidget>

class AppModell;
class QLabel;
class Tabelle;
class VariablenTabelle;

// Die Variablen mit Formel, Wert, Optimierer-Marke und Grenzen; Knöpfe zum
// Hinzufügen, Löschen und Verschieben, darunter die Meldung zu einer abgelehnten
// Eingabe und die Kurzhilfe der Formeln.
class VariablenBereich : public QWidget {
    Q_OBJECT

  public:
    explicit VariablenBereich(AppModell& app, QWidget* eltern = nullptr);

    Tabelle* tabelle() const { return tabelle_; }

  private:
    void hinzufuegen();
    void loeschen();
    void verschieben(int richtung);

    AppModell& app_;
    VariablenTabelle* modell_;
    Tabelle* tabelle_;
    QLabel* meldung_;
};
