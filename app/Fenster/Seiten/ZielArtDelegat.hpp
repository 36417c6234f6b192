#pragma once

#include <QStyledItemDelegate>

// Die Art eines Ziels als Auswahlliste, die stets offen in der Zelle steht und
// jede Wahl sofort übernimmt.
class ZielArtDelegat : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* eltern, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* modell, const QModelIndex& index) const override;
    // So breit wie die Auswahlliste mit dem längsten Text, damit die Spalte nichts abschneidet.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
