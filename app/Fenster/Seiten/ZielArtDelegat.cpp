#include "Fenster/Seiten/ZielArtDelegat.hpp"

#include "NECKern/Optimierer.hpp"

#include <QApplication>
#include <QComboBox>
#include <QStyleOptionComboBox>

QWidget* ZielArtDelegat::createEditor(QWidget* eltern, const QStyleOptionViewItem&,
                                      const QModelIndex&) const {
    auto* liste = new QComboBox(eltern);
    for (auto art : NECKern::Ziel::arten())
        liste->addItem(QString::fromStdString(NECKern::Ziel::text(art)));
    // Nur eine Wahl des Benutzers wird übernommen, nicht das Nachführen aus dem Modell.
    connect(liste, &QComboBox::activated, this,
            [this, liste] { emit const_cast<ZielArtDelegat*>(this)->commitData(liste); });
    return liste;
}

void ZielArtDelegat::setEditorData(QWidget* editor, const QModelIndex& index) const {
    static_cast<QComboBox*>(editor)->setCurrentIndex(index.data(Qt::EditRole).toInt());
}

void ZielArtDelegat::setModelData(QWidget* editor, QAbstractItemModel* modell,
                                  const QModelIndex& index) const {
    modell->setData(index, static_cast<QComboBox*>(editor)->currentIndex(), Qt::EditRole);
}

QSize ZielArtDelegat::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    const QFontMetrics masse(option.font);
    int breite = 0;
    for (auto art : NECKern::Ziel::arten())
        breite = std::max(breite, masse.horizontalAdvance(QString::fromStdString(NECKern::Ziel::text(art))));
    QStyleOptionComboBox liste;
    liste.fontMetrics = masse;
    const auto* stil = option.widget ? option.widget->style() : QApplication::style();
    return stil->sizeFromContents(QStyle::CT_ComboBox, &liste, QSize(breite, masse.height()), option.widget);
}
