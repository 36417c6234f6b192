#pragma once

#include <QStyledItemDelegate>

// Zelleneditor der Editortabellen. Enter und Tab übernehmen sofort; lehnt das
// Tabellenmodell die Eingabe ab, bleibt der Editor mit dem Getippten offen, damit
// der Nutzer sie verbessern kann. Escape verwirft die Eingabe.
class Zelleneditor : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setModelData(QWidget* editor, QAbstractItemModel* modell, const QModelIndex& index) const override;

  signals:
    void verworfen();

  protected:
    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

  private:
    mutable bool abgelehnt_ = false;
};
