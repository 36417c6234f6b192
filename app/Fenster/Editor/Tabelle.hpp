#pragma once

#include <QTableView>

#include <vector>

// Tabellenansicht des Editors: Tab geht von Zelle zu Zelle, Enter beginnt und
// beendet die Eingabe, Escape verwirft sie, Entf löscht die gewählten Zeilen.
// Strg+Z bleibt dem Fenster: die Tabelle fängt es nicht ab.
class Tabelle : public QTableView {
    Q_OBJECT

  public:
    explicit Tabelle(QWidget* eltern = nullptr);

    // Die Zeilen, in denen etwas gewählt ist, aufsteigend.
    std::vector<int> gewaehlteZeilen() const;
    // Wählt diese Zeilen; die erste wird die aktuelle und sichtbar, die Spalte bleibt.
    void zeilenWaehlen(const std::vector<int>& zeilen);

  signals:
    void loeschenGewuenscht();
    // Der Nutzer hat eine Eingabe mit Escape verworfen.
    void eingabeVerworfen();

  protected:
    void keyPressEvent(QKeyEvent* ereignis) override;
};
