#pragma once

#include <QWidget>

class AppModell;
class QLabel;

// Einzelheiten der gezeigten Frequenz: Quellen, Leistungsbilanz, Wirkungsgrad,
// Rechenkern und Rechenzeit; die Meldungen des Kerns auffällig darunter.
class ErgebnisDetails : public QWidget {
    Q_OBJECT

  public:
    explicit ErgebnisDetails(AppModell& app, QWidget* eltern = nullptr);

    void aktualisieren();

  private:
    AppModell& app_;
    QLabel* tabelle_;
    QWidget* warnungen_;
    QLabel* warnungsText_;
};
