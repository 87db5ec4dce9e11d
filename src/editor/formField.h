#pragma once

#include "editor/elementForm.h"

#include <QString>

class QComboBox;
class QLabel;
class QLineEdit;
class QTextEdit;
class QWidget;

/// One row of a panel with the widget that shows it. The form that the widget is added to owns it.
class cFormField {
public:
    explicit cFormField(cFormRow formRow);

    const cFormRow& getRow() const { return row; }
    QWidget* getWidget() const { return widget; }

    /// What stands in the field.
    QString text() const;
    /// Engine to field.
    void write();
    /// Field to engine. @throws cException as the row's setter; a marked field is then still selected.
    void read();
    /// Fills a list of names anew; the choice `oldName` becomes `newName`.
    void refill(const QString& newName, const QString& oldName);
    void setEditable(bool isRunOff);

private:
    void makeWidget();
    void makePicked();
    QWidget* focusHolder() const;
    void setText(const QString& newText);
    void mark();
    void unmark();

    cFormRow row;
    QWidget* widget = nullptr;
    // One of these is the widget, or the part of it that holds the text.
    QLineEdit* line = nullptr;
    QTextEdit* lines = nullptr;
    QComboBox* names = nullptr;
    QLabel* shown = nullptr;
};
