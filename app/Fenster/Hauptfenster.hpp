#pragma once

#include "Fenster/Seite.hpp"

#include <QMainWindow>

class AppModell;
class Ansicht3D;
class PolarDiagramm;
class QAction;
class QButtonGroup;
class QLabel;
class QMenu;
class QProgressBar;
class QStackedWidget;
class QToolButton;

// Das eine Fenster: links der Editor, rechts 3D-Ansicht, Polardiagramme und die
// Seiten; Menüs, Werkzeugleiste und Statuszeile. Es liest das Anwendungsmodell
// und ruft seine Operationen; eigener Zustand ist nur Ansicht (Seite, Schalter).
class Hauptfenster : public QMainWindow {
    Q_OBJECT

  public:
    explicit Hauptfenster(AppModell& modell, QWidget* eltern = nullptr);

    Seite seite() const { return seite_; }
    void seiteWaehlen(Seite s);

  protected:
    void closeEvent(QCloseEvent* ereignis) override;

  private:
    void dateiwahlSetzen();
    void menuesBauen();
    void werkzeugleisteBauen();
    QWidget* rechteSpalteBauen();
    QWidget* ansichtBauen();
    QWidget* seitenBauen();
    QMenu* beispielMenue(QWidget* eltern);
    void aktuellZeigen();
    void fehlerZeigen();
    void statusZeigen();
    void laufZeigen();

    AppModell& modell_;
    Seite seite_ = Seite::ergebnis;

    QAction* rueckgaengig_ = nullptr;
    QAction* wiederholen_ = nullptr;
    QAction* abbrechen_ = nullptr;
    Ansicht3D* ansicht_ = nullptr;
    PolarDiagramm* elevation_ = nullptr;
    PolarDiagramm* azimut_ = nullptr;
    QLabel* fehler_ = nullptr;
    QLabel* status_ = nullptr;
    QProgressBar* laeuft_ = nullptr;
    QToolButton* stopp_ = nullptr;
    QButtonGroup* seitenwahl_ = nullptr;
    QStackedWidget* seiten_ = nullptr;
};
