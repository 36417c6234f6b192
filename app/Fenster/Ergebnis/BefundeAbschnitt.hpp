#pragma once

#include <QWidget>

class AppModell;
class QVBoxLayout;

// Die Befunde der Modellprüfung in ihrer Reihenfolge, jeder mit Zeichen und
// Farbe seiner Stufe; ohne Befund die Zeile, dass alles in Ordnung ist.
class BefundeAbschnitt : public QWidget {
    Q_OBJECT

  public:
    explicit BefundeAbschnitt(AppModell& app, QWidget* eltern = nullptr);

    void aktualisieren();

  private:
    AppModell& app_;
    QWidget* liste_;
    QVBoxLayout* zeilen_;
};
