#pragma once

#include "Fenster/Editor/Zeilen.hpp"

#include <QString>
#include <QToolButton>
#include <QWidget>

class AppModell;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;

// Gemeinsamer Rahmen der Variablen- und der Kartentabelle: Überschrift mit
// Knöpfen, die Tabelle, darunter die Meldung zu einer abgelehnten Eingabe.
class Tabellenbereich : public QWidget {
    Q_OBJECT

  public:
    Tabelle* tabelle() const { return tabelle_; }

  protected:
    Tabellenbereich(AppModell& app, const QString& titel, const QString& name, QWidget* eltern);

    // Ein Knopf in der Überschrift, nach den bisherigen.
    QToolButton* knopf(const QString& text, const QString& hinweis, const QString& name);
    void meldungSetzen(const QString& text);

    // Löschen (auch mit Entf), nach oben und nach unten für eine Liste des Modells.
    template <typename T> void zeilenbefehle(std::vector<T> NECKern::Modell::*liste) {
        const auto loeschen = [this, liste] { Zeilen::loeschen(app_, *tabelle_, liste); };
        connect(knopf("Löschen", "Gewählte Zeilen löschen (Entf)", name_ + "Loeschen"), &QToolButton::clicked,
                this, loeschen);
        connect(tabelle_, &Tabelle::loeschenGewuenscht, this, loeschen);
        for (int richtung : {-1, 1})
            connect(knopf(richtung < 0 ? "▲" : "▼", richtung < 0 ? "Nach oben" : "Nach unten",
                          name_ + (richtung < 0 ? "Hoch" : "Runter")),
                    &QToolButton::clicked, this,
                    [this, liste, richtung] { Zeilen::verschieben(app_, *tabelle_, liste, richtung); });
    }

    AppModell& app_;
    Tabelle* tabelle_;
    QVBoxLayout* spalte_; // Überschrift, Tabelle, Meldung; darunter dürfen Unterklassen anfügen

  private:
    QString name_;
    QHBoxLayout* knoepfe_;
    QLabel* meldung_;
};
