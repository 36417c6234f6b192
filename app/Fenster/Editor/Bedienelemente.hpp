#pragma once

#include <QString>

class QLabel;
class QToolButton;
class QWidget;

// Gleich aussehende Bausteine der Editorbereiche.
namespace Bedienelemente {

QLabel* titel(const QString& text, QWidget* eltern);
QToolButton* knopf(const QString& text, const QString& hinweis, QWidget* eltern);
// Rote Zeile für abgelehnte Eingaben; leer ist sie unsichtbar.
QLabel* meldungszeile(QWidget* eltern);
void meldungSetzen(QLabel* zeile, const QString& text);
// Kleine graue Hinweiszeile.
QLabel* hinweis(const QString& text, QWidget* eltern);

} // namespace Bedienelemente
