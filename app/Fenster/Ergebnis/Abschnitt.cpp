#include "Fenster/Ergebnis/Abschnitt.hpp"

#include <QFrame>
#include <QLabel>

namespace Abschnitt {

QLabel* titel(const QString& text, QWidget* eltern) {
    auto* l = new QLabel(text, eltern);
    auto f = l->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.1);
    l->setFont(f);
    return l;
}

QLabel* wert(QWidget* eltern) {
    auto* l = new QLabel(eltern);
    l->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return l;
}

QLabel* erklaerung(const QString& text, QWidget* eltern) {
    auto* l = new QLabel(text, eltern);
    l->setWordWrap(true);
    l->setStyleSheet("color: #5f6368;");
    return l;
}

QFrame* trenner(QWidget* eltern) {
    auto* linie = new QFrame(eltern);
    linie->setFrameShape(QFrame::HLine);
    linie->setStyleSheet("color: #dfe1e5;");
    return linie;
}

} // namespace Abschnitt
