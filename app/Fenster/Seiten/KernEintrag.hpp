#pragma once

#include "NECKern/Rechenkerne/Rechenkern.hpp"

#include <QFrame>

#include <string>

class QRadioButton;

// Ein Kern auf der Seite „Rechenkern“: Name zum Wählen, Beschreibung, ob er
// rechnen kann, und welches Programm er startet. Ein fehlendes Programm sperrt die Wahl.
class KernEintrag : public QFrame {
    Q_OBJECT

  public:
    KernEintrag(const NECKern::KernZeiger& kern, QWidget* eltern = nullptr);

    const std::string& kennung() const { return kennung_; }
    QRadioButton* wahl() const { return wahl_; }
    // Hebt den gewählten Kern hervor.
    void markieren(bool gewaehlt);

  private:
    std::string kennung_;
    QRadioButton* wahl_;
};
