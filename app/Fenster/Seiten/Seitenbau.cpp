#include "Fenster/Seiten/Seitenbau.hpp"

#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include <charconv>
#include <cmath>
#include <fmt/printf.h>

namespace Seitenbau {

Kasten kasten(const QString& titel, QWidget* eltern) {
    auto* rahmen = new QGroupBox(titel, eltern);
    auto* spalte = new QVBoxLayout(rahmen);
    spalte->setSpacing(8);
    return {rahmen, spalte};
}

QLabel* hinweis(const QString& satz, QWidget* eltern) {
    auto* l = new QLabel(satz, eltern);
    l->setWordWrap(true);
    faerben(*l, Farbe::neutral());
    return l;
}

QLabel* meldung(QWidget* eltern) {
    auto* l = new QLabel(eltern);
    l->setWordWrap(true);
    faerben(*l, Farbe::schlecht());
    l->hide();
    return l;
}

void melden(QLabel& zeile, const QString& satz) {
    zeile.setText(satz);
    zeile.setVisible(!satz.isEmpty());
}

void faerben(QWidget& w, const QColor& farbe) {
    auto p = w.palette();
    p.setColor(QPalette::WindowText, farbe);
    w.setPalette(p);
}

std::optional<double> zahlLesen(const QString& eingabe) {
    auto s = eingabe.trimmed().toStdString();
    for (auto& c : s)
        if (c == ',') c = '.';
    if (s.starts_with('+')) s.erase(0, 1);
    double x = 0;
    const auto [ende, fehler] = std::from_chars(s.data(), s.data() + s.size(), x);
    if (s.empty() || fehler != std::errc() || ende != s.data() + s.size() || !std::isfinite(x))
        return std::nullopt;
    return x;
}

QString keineZahl(const QString& eingabe) {
    return QString("„%1“ ist keine Zahl – bitte eine Zahl wie 14.2 oder 14,2 eingeben.")
        .arg(eingabe.trimmed());
}

QString zahl(double x) {
    return text(fmt::sprintf("%.6g", x));
}

QColor mischen(const QColor& a, const QColor& b, double anteil) {
    auto teil = [anteil](double x, double y) { return x * (1 - anteil) + y * anteil; };
    return QColor::fromRgbF(static_cast<float>(teil(a.redF(), b.redF())),
                            static_cast<float>(teil(a.greenF(), b.greenF())),
                            static_cast<float>(teil(a.blueF(), b.blueF())));
}

void hoeheAnpassen(QTableView& tabelle) {
    int hoehe = 2 * tabelle.frameWidth() + tabelle.verticalHeader()->length();
    if (!tabelle.horizontalHeader()->isHidden()) hoehe += tabelle.horizontalHeader()->sizeHint().height();
    tabelle.setFixedHeight(hoehe);
}

} // namespace Seitenbau
