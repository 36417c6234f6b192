#pragma once

#include <QWidget>

class AppModell;
class BefundeAbschnitt;
class ErgebnisDetails;
class GegenprobeAbschnitt;
class GueteAbschnitt;
class Kennzahlen;

// Die Seite „Ergebnis“: Kennzahlen, Einzelheiten, Modellgüte, Befunde und die
// Gegenprobe mit nec2c. Sie liest nur das Anwendungsmodell; die Frequenzwahl
// setzt dessen frequenzIndex.
class ErgebnisSeite : public QWidget {
    Q_OBJECT

  public:
    explicit ErgebnisSeite(AppModell& app, QWidget* eltern = nullptr);

  private:
    void ergebnisGeaendert();
    void aktuellGeaendert();

    AppModell& app_;
    Kennzahlen* kennzahlen_;
    QWidget* mitErgebnis_; // alles unter den Kennzahlen, erst mit einem Ergebnis
    ErgebnisDetails* details_;
    GueteAbschnitt* guete_;
    BefundeAbschnitt* befunde_;
    GegenprobeAbschnitt* gegenprobe_;
    double z0_ = 0;
};
