#pragma once

#include <QWidget>

class AppModell;
class Plakette;
class QLabel;

// „Gegenprobe mit nec2c“: Impedanz von nec2c, die Abweichung und das Urteil in
// seiner Farbe. Nur sichtbar, solange es eine Gegenprobe gibt.
class GegenprobeAbschnitt : public QWidget {
    Q_OBJECT

  public:
    explicit GegenprobeAbschnitt(AppModell& app, QWidget* eltern = nullptr);

    void aktualisieren();

  private:
    AppModell& app_;
    QLabel* nec2c_;
    QLabel* abweichung_;
    Plakette* urteil_;
};
