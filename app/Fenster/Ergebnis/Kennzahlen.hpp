#pragma once

#include <QWidget>

#include <vector>

class AppModell;
class Plakette;
class QComboBox;
class QLabel;
class QToolButton;

// Die Kennzahlen der gezeigten Frequenz: Frequenzwahl, Impedanz, SWR mit seiner
// Farbe, grösster Gewinn mit Richtung, Vor-Rück-Verhältnis; vor dem ersten
// Ergebnis „Noch nicht gerechnet“. „Kopieren“ legt sie als Text in die Zwischenablage.
class Kennzahlen : public QWidget {
    Q_OBJECT

  public:
    explicit Kennzahlen(AppModell& app, QWidget* eltern = nullptr);

    void frequenzenSetzen();
    void aktualisieren();
    // Der Text, den „Kopieren“ in die Zwischenablage legt.
    QString alsText() const;

  private:
    AppModell& app_;
    std::vector<double> frequenzen_;
    QWidget* werte_;
    QLabel* leer_;
    QComboBox* frequenz_;
    QToolButton* kopieren_;
    QLabel* impedanz_;
    QLabel* swrTitel_;
    Plakette* swr_;
    QLabel* gewinn_;
    QLabel* richtung_;
    QLabel* vorRueck_;
};
