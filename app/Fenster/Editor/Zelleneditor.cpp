#include "Fenster/Editor/Zelleneditor.hpp"

#include <QKeyEvent>
#include <QMetaProperty>

void Zelleneditor::setModelData(QWidget* editor, QAbstractItemModel* modell, const QModelIndex& index) const {
    const auto eigenschaft = editor->metaObject()->userProperty();
    abgelehnt_ = !modell->setData(index, eigenschaft.read(editor), Qt::EditRole);
}

bool Zelleneditor::eventFilter(QObject* objekt, QEvent* ereignis) {
    auto* editor = qobject_cast<QWidget*>(objekt);
    if (!editor || ereignis->type() != QEvent::KeyPress)
        return QStyledItemDelegate::eventFilter(objekt, ereignis);
    const int taste = static_cast<QKeyEvent*>(ereignis)->key();
    switch (taste) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab: {
        abgelehnt_ = false;
        emit commitData(editor);
        if (abgelehnt_) return true;
        const auto weiter = taste == Qt::Key_Tab       ? QAbstractItemDelegate::EditNextItem
                            : taste == Qt::Key_Backtab ? QAbstractItemDelegate::EditPreviousItem
                                                       : QAbstractItemDelegate::SubmitModelCache;
        emit closeEditor(editor, weiter);
        return true;
    }
    case Qt::Key_Escape:
        emit verworfen();
        break;
    default:
        break;
    }
    return QStyledItemDelegate::eventFilter(objekt, ereignis);
}
