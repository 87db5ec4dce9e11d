#include "app/resultGrid.h"

#include "kernel/resultText.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <set>

namespace {

constexpr int columnGap = 16;  // besides what headings and figures take

}  // namespace

cResultGrid::cResultGrid(const cResultTable& table, int nameColumns, QWidget* parent) : QTableWidget(parent) {
    setColumnCount(static_cast<int>(table.headings.size()));
    setRowCount(static_cast<int>(table.rows.size()));
    QStringList headings;
    for (const std::string& heading : table.headings) headings.append(QString::fromStdString(heading));
    setHorizontalHeaderLabels(headings);
    for (int row = 0; row < rowCount(); ++row) fillRow(row, table.rows[static_cast<std::size_t>(row)], nameColumns);

    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    resizeColumnsToContents();
    for (int column = 0; column < columnCount(); ++column) setColumnWidth(column, columnWidth(column) + columnGap);
}

void cResultGrid::fillRow(int row, const std::vector<std::string>& texts, int nameColumns) {
    for (int column = 0; column < static_cast<int>(texts.size()); ++column) {
        auto* cell = new QTableWidgetItem(QString::fromStdString(texts[static_cast<std::size_t>(column)]));
        if (column >= nameColumns) cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        setItem(row, column, cell);
    }
}

QString cResultGrid::selectedText() const {
    std::set<int> rows;
    std::set<int> columns;
    for (const QModelIndex& cell : selectedIndexes()) {
        rows.insert(cell.row());
        columns.insert(cell.column());
    }
    QStringList lines;
    for (const int row : rows) {
        QStringList cells;
        for (const int column : columns) {
            const QTableWidgetItem* cell = item(row, column);
            cells.append(cell != nullptr && cell->isSelected() ? cell->text() : QString());
        }
        lines.append(cells.join('\t'));
    }
    return lines.join('\n');
}

void cResultGrid::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Copy)) {
        QTableWidget::keyPressEvent(event);
        return;
    }
    const QString text = selectedText();
    if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}
