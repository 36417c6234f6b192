#pragma once

#include <QWidget>

#include <vector>

class AppModell;
class KernEintrag;
class QButtonGroup;
class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

// Die Seite „Rechenkern“: die fünf Kerne zur Wahl, der Kernordner, die
// Installation von zirkon und der Selbsttest des gewählten Kerns.
class KernSeite : public QWidget {
    Q_OBJECT

  public:
    explicit KernSeite(AppModell& app, QWidget* eltern = nullptr);

  protected:
    // Ob ein Programm da ist, kann sich geändert haben, während die Seite verdeckt war.
    void showEvent(QShowEvent* ereignis) override;

  private:
    QWidget* kerneTeil();
    QWidget* ordnerTeil();
    QWidget* zirkonTeil();
    QWidget* selbsttestTeil();

    void listeAufbauen();
    void wahlZeigen();
    void installationZeigen();
    void gewaehlt(int nummer);
    void ordnerOeffnen();

    AppModell& app_;
    QVBoxLayout* liste_ = nullptr;
    QButtonGroup* gruppe_ = nullptr;
    std::vector<KernEintrag*> eintraege_;
    QLabel* ersatz_ = nullptr;
    QLabel* ordnerMeldung_ = nullptr;
    QPushButton* installieren_ = nullptr;
    QProgressBar* installiert_ = nullptr;
    QLabel* installation_ = nullptr;
    QLabel* selbsttestKern_ = nullptr;
};
