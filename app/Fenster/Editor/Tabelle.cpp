#include "Fenster/Editor/Tabelle.hpp"

#include "Fenster/Editor/Zelleneditor.hpp"

#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

Tabelle::Tabelle(QWidget* eltern) : QTableView(eltern) {
    auto* zellen = new Zelleneditor(this);
    setItemDelegate(zellen);
    connect(zellen, &Zelleneditor::verworfen, this, &Tabelle::eingabeVerworfen);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setTabKeyNavigation(true);
    setAlternatingRowColors(true);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    verticalHeader()->setMinimumSectionSize(fontMetrics().height() + 4);
    horizontalHeader()->setHighlightSections(false);
}

std::vector<int> Tabelle::gewaehlteZeilen() const {
    std::vector<int> zeilen;
    if (!selectionModel()) return zeilen;
    for (const auto& i : selectionModel()->selectedIndexes())
        zeilen.push_back(i.row());
    if (zeilen.empty() && currentIndex().isValid()) zeilen.push_back(currentIndex().row());
    std::sort(zeilen.begin(), zeilen.end());
    zeilen.erase(std::unique(zeilen.begin(), zeilen.end()), zeilen.end());
    return zeilen;
}

void Tabelle::zeilenWaehlen(const std::vector<int>& zeilen) {
    if (!model()) return;
    const int spalte = std::max(currentIndex().column(), 0);
    QItemSelection auswahl;
    for (int z : zeilen)
        if (z >= 0 && z < model()->rowCount())
            auswahl.select(model()->index(z, 0), model()->index(z, model()->columnCount() - 1));
    if (auswahl.isEmpty()) return;
    const auto ziel = model()->index(auswahl.first().top(), spalte);
    selectionModel()->setCurrentIndex(ziel, QItemSelectionModel::NoUpdate);
    selectionModel()->select(auswahl, QItemSelectionModel::ClearAndSelect);
    scrollTo(ziel);
}

void Tabelle::keyPressEvent(QKeyEvent* ereignis) {
    const auto tasten = ereignis->modifiers() & ~Qt::KeypadModifier;
    if (state() != QAbstractItemView::EditingState && tasten == Qt::NoModifier) {
        switch (ereignis->key()) {
        case Qt::Key_Delete:
            emit loeschenGewuenscht();
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (currentIndex().isValid() && (currentIndex().flags() & Qt::ItemIsEditable)) {
                edit(currentIndex());
                return;
            }
            break;
        default:
            break;
        }
    }
    QTableView::keyPressEvent(ereignis);
}
