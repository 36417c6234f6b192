#pragma once

#include <QWidget>

class AppModell;
class Plakette;
class QLabel;
class QProgressBar;

// „Modellgüte (mittlerer Gewinn)“: Erklärung, Wertzeile und Urteil in seiner
// Farbe; während der Gütetest läuft ein Laufbalken, ohne Ergebnis „nicht berechnet“.
class GueteAbschnitt : public QWidget {
    Q_OBJECT

  public:
    explicit GueteAbschnitt(AppModell& app, QWidget* eltern = nullptr);

    void aktualisieren();

  private:
    AppModell& app_;
    QLabel* wert_;
    Plakette* urteil_;
    QProgressBar* laeuft_;
    QLabel* nichtBerechnet_;
};
