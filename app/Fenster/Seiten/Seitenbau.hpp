#pragma once

#include <QColor>
#include <QString>

#include <optional>
#include <string>

class QGroupBox;
class QLabel;
class QTableView;
class QVBoxLayout;
class QWidget;

// Bausteine, die alle Seiten gleich aussehen lassen, und das Lesen und Schreiben
// von Zahlen in Tabellenzellen ohne Gebietsschema.
namespace Seitenbau {

inline QString text(const std::string& s) {
    return QString::fromStdString(s);
}

// Ein Abschnitt einer Seite: Rahmen mit Titel und eine Spalte für seinen Inhalt.
struct Kasten {
    QGroupBox* rahmen;
    QVBoxLayout* spalte;
};
Kasten kasten(const QString& titel, QWidget* eltern);

// Ein umbrechender Satz in gedämpfter Farbe unter einem Bedienelement.
QLabel* hinweis(const QString& satz, QWidget* eltern = nullptr);
// Eine rote Zeile für abgewiesene Eingaben; unsichtbar, solange sie nichts sagt.
QLabel* meldung(QWidget* eltern);
void melden(QLabel& zeile, const QString& satz);
void faerben(QWidget& w, const QColor& farbe);

// Liest eine Zahl mit Punkt oder Komma; Leerraum aussen zählt nicht.
std::optional<double> zahlLesen(const QString& eingabe);
// Der Satz, wenn eine Zelle keine Zahl enthält.
QString keineZahl(const QString& eingabe);
// Zahlen in Zellen: bis zu sechs Stellen, immer mit Punkt.
QString zahl(double x);

// Eine Tabelle in einer scrollenden Seite scrollt nicht selbst: sie ist so hoch wie ihre Zeilen.
void hoeheAnpassen(QTableView& tabelle);

// a mit dem Anteil von b gemischt, deckend.
QColor mischen(const QColor& a, const QColor& b, double anteil);

// Die Farben für Urteile, an einer Stelle.
namespace Farbe {
inline QColor gut() {
    return QColor(30, 130, 60);
}
inline QColor schlecht() {
    return QColor(195, 40, 40);
}
inline QColor bekannt() {
    return QColor(190, 110, 0);
}
inline QColor neutral() {
    return QColor(110, 110, 110);
}
} // namespace Farbe

} // namespace Seitenbau
