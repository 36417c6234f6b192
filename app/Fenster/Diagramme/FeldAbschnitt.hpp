#pragma once

#include "Modell/AppModell.hpp"

#include <QWidget>

class FeldKarte;
class QLabel;
class QProgressBar;
class QPushButton;

// Der Abschnitt „Feldstärke“ der Ergebnisseite: Leistung, Höhe und Grösse der
// Ebene, Punkte je Seite, Start, Anzeige während der Rechnung und die Karte.
class FeldAbschnitt : public QWidget {
    Q_OBJECT

  public:
    explicit FeldAbschnitt(AppModell& modell, QWidget* eltern = nullptr);

    const FeldKarte& karte() const { return *karte_; }

  private:
    void zustandZeigen();
    void karteZeigen();

    AppModell& modell_;
    QPushButton* start_;
    QProgressBar* laeuft_;
    QLabel* hinweis_;
    FeldKarte* karte_;
};
