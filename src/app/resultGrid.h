#pragma once

#include <QTableWidget>
#include <string>
#include <vector>

struct cResultTable;

/// A table of results, which can be read and copied and not changed. Ctrl+C copies the selected cells: tabs between
/// columns, line feeds between rows.
class cResultGrid : public QTableWidget {
    Q_OBJECT

public:
    /// @param nameColumns how many columns, from the left, hold names; all others hold figures.
    cResultGrid(const cResultTable& table, int nameColumns, QWidget* parent = nullptr);

    /// The selected cells as text. A cell that isn't selected inside the rows and columns of others is empty.
    QString selectedText() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fillRow(int row, const std::vector<std::string>& texts, int nameColumns);
};
