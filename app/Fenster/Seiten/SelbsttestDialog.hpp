#pragma once

#include <QDialog>

#include <string>

class AppModell;
class QLabel;
class QProgressBar;
class QTableWidget;

// Das Blatt des Selbsttests, über dem Hauptfenster und nur für dieses modal:
// sichtbar, solange zeigeSelbsttest gilt. Zeigt die Zeilen, sobald sie kommen,
// und zuletzt den Satz über alle Zeilen. Was für den geprüften Kern als bekannte
// Abweichung gilt, ist als solche markiert, nicht als Fehler.
class SelbsttestDialog : public QDialog {
    Q_OBJECT

  public:
    enum Spalte { urteil, pruefung, soll, ist, quelle, spalten };

    SelbsttestDialog(AppModell& app, QWidget* eltern);

    // Escape und das Schliessen des Fensters blenden das Blatt über das Modell aus.
    void reject() override;

  private:
    void sichtbarkeitZeigen();
    void zeilenZeigen();

    AppModell& app_;
    std::string kennung_; // der geprüfte Kern
    std::string kernName_;
    QLabel* titel_;
    QTableWidget* tabelle_;
    QProgressBar* laeuft_;
    QLabel* laufText_;
    QLabel* zusammenfassung_;
    QLabel* bekannt_;
};
