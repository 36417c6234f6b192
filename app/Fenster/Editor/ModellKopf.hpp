#pragma once

#include <QTimer>
#include <QWidget>

class AppModell;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

// Kopf des Editors: Name, Kommentarzeilen und Bezugsimpedanz z0. Name und z0
// gelten mit Enter oder beim Verlassen, der Kommentar nach einer Pause im Tippen.
// Ein Feld, in dem gerade getippt wird, überschreibt eine Änderung von aussen nicht.
class ModellKopf : public QWidget {
    Q_OBJECT

  public:
    explicit ModellKopf(AppModell& app, QWidget* eltern = nullptr);

  protected:
    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

  private:
    void anzeigen();
    void nameUebernehmen();
    void z0Uebernehmen();
    void kommentarUebernehmen();

    AppModell& app_;
    QLineEdit* name_;
    QLineEdit* z0_;
    QPlainTextEdit* kommentar_;
    QLabel* meldung_;
    QTimer pause_;
    bool kommentarOffen_ = false; // getippt, aber noch nicht im Modell
};
