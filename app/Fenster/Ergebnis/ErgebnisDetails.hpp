#pragma once

#include <QWidget>

#include <vector>

class AppModell;
class QGridLayout;
class QLabel;
class QVBoxLayout;

// Einzelheiten der gezeigten Frequenz: Quellen, Leistungsbilanz, Wirkungsgrad,
// Rechenkern und Rechenzeit; die Meldungen des Kerns auffällig darüber.
class ErgebnisDetails : public QWidget {
    Q_OBJECT

  public:
    explicit ErgebnisDetails(AppModell& app, QWidget* eltern = nullptr);

    void aktualisieren();

  private:
    // Überschrift und Wertzeilen einer Quelle; neu gebaut nur, wenn sich ihre Zahl ändert.
    struct Quellzeilen {
        QLabel* kopf;
        QLabel* spannung;
        QLabel* strom;
        QLabel* impedanz;
        QLabel* leistung;
    };
    // Alle Zeilen in einem Raster, damit die Werte bündig stehen; neu nur bei anderer Quellenzahl.
    void bauen(std::size_t quellen);
    QLabel* zeile(QGridLayout* raster, const QString& name);
    QLabel* ueberschrift(QGridLayout* raster, const QString& text);

    AppModell& app_;
    QWidget* warnungen_;
    QLabel* warnungsText_;
    QVBoxLayout* spalte_;
    QWidget* raster_ = nullptr;
    std::vector<Quellzeilen> quellzeilen_;
    QLabel* eingang_ = nullptr;
    QLabel* abgestrahlt_ = nullptr;
    QLabel* verluste_ = nullptr;
    QLabel* wirkungsgrad_ = nullptr;
    QLabel* kern_ = nullptr;
    QLabel* dauer_ = nullptr;
};
