#pragma once

#include "Modell/AppModell.hpp"

#include <QWidget>

#include <functional>

class GangDiagramm;
class SmithDiagramm;
class QBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;

// Die Seite „Frequenzgang“: Band und Punkte, Start, Fortschritt, das SWR-Diagramm
// mit dem Smith-Diagramm daneben (schmal: darunter) und die Exporte als CSV und Touchstone.
class GangSeite : public QWidget {
    Q_OBJECT

  public:
    explicit GangSeite(AppModell& modell, QWidget* eltern = nullptr);

    // Fragt nach dem Zielpfad (Titel, Vorschlag, Filter); leer heisst abgebrochen.
    using Dateiwahl =
        std::function<QString(const QString& titel, const QString& vorschlag, const QString& filter)>;
    void setDateiwahl(Dateiwahl wahl) { dateiwahl_ = std::move(wahl); }

    // Der Satz, warum nicht gerechnet werden kann; leer, wenn alles passt.
    QString hinweis() const;

    const GangDiagramm& diagramm() const { return *diagramm_; }
    const SmithDiagramm& smith() const { return *smith_; }

  protected:
    // Schmal untereinander, breit nebeneinander: beide Diagramme bleiben lesbar.
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    void bandGeaendert();
    void fortschrittGeaendert();
    void diagrammeZeigen();
    void sichern(bool touchstone);

    AppModell& modell_;
    Dateiwahl dateiwahl_;
    QPushButton* start_;
    QPushButton* abbrechen_;
    QProgressBar* fortschritt_;
    QLabel* hinweis_;
    QPushButton* csv_;
    QPushButton* touchstone_;
    GangDiagramm* diagramm_;
    SmithDiagramm* smith_;
    QBoxLayout* diagramme_;
};
