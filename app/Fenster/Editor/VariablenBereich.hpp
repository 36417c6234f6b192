#pragma once

#include "Fenster/Editor/Tabellenbereich.hpp"

class VariablenTabelle;

// Die Variablen mit Formel, Wert, Optimierer-Marke und Grenzen; Knöpfe zum
// Hinzufügen, Löschen und Verschieben, darunter die Kurzhilfe der Formeln.
class VariablenBereich : public Tabellenbereich {
    Q_OBJECT

  public:
    explicit VariablenBereich(AppModell& app, QWidget* eltern = nullptr);

  private:
    void hinzufuegen();

    VariablenTabelle* modell_;
};
