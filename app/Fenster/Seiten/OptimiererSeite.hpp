#pragma once

#include <QWidget>

class AppModell;
class KostenDiagramm;
class MarkierteVariablen;
class QLabel;
class QPushButton;
class QTableView;
class QTableWidget;
class ZielTabelle;

// Die Seite „Optimierer“: markierte Variablen mit Formel und Grenzen, die Ziele,
// Start und Abbruch der Suche, ihr Verlauf und die Übernahme der gefundenen Werte.
class OptimiererSeite : public QWidget {
    Q_OBJECT

  public:
    explicit OptimiererSeite(AppModell& app, QWidget* eltern = nullptr);

  private:
    QWidget* variablenTeil();
    QWidget* zieleTeil();
    QWidget* sucheTeil();

    void variablenZeigen();
    void sucheZeigen();
    void werteZeigen();
    void startenOderAbbrechen();
    void zielLoeschen();

    AppModell& app_;
    MarkierteVariablen* variablen_ = nullptr;
    QTableView* variablenTabelle_ = nullptr;
    QLabel* keineVariable_ = nullptr;
    QLabel* variablenMeldung_ = nullptr;
    ZielTabelle* ziele_ = nullptr;
    QTableView* zieleTabelle_ = nullptr;
    QLabel* zieleMeldung_ = nullptr;
    QPushButton* loeschen_ = nullptr;
    QPushButton* optimieren_ = nullptr;
    QLabel* stand_ = nullptr;
    KostenDiagramm* diagramm_ = nullptr;
    QTableWidget* werte_ = nullptr;
    QPushButton* uebernehmen_ = nullptr;
    bool abbruchGewuenscht_ = false;
};
