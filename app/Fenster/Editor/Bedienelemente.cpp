#include "Fenster/Editor/Bedienelemente.hpp"

#include <QLabel>
#include <QToolButton>

namespace Bedienelemente {

QLabel* titel(const QString& text, QWidget* eltern) {
    auto* l = new QLabel(text, eltern);
    auto f = l->font();
    f.setBold(true);
    l->setFont(f);
    return l;
}

QToolButton* knopf(const QString& text, const QString& hinweis, QWidget* eltern) {
    auto* k = new QToolButton(eltern);
    k->setText(text);
    k->setToolTip(hinweis);
    k->setAutoRaise(false);
    k->setToolButtonStyle(Qt::ToolButtonTextOnly);
    return k;
}

QLabel* meldungszeile(QWidget* eltern) {
    auto* l = new QLabel(eltern);
    l->setWordWrap(true);
    l->setStyleSheet("color: #b71c1c;");
    l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    l->hide();
    return l;
}

void meldungSetzen(QLabel* zeile, const QString& text) {
    zeile->setText(text);
    zeile->setVisible(!text.isEmpty());
}

QLabel* hinweis(const QString& text, QWidget* eltern) {
    auto* l = new QLabel(text, eltern);
    l->setWordWrap(true);
    auto f = l->font();
    f.setPointSizeF(f.pointSizeF() * 0.9);
    l->setFont(f);
    l->setStyleSheet("color: #616161;");
    return l;
}

} // namespace Bedienelemente
