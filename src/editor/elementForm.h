#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <string_view>
#include <vector>

/// What a property panel shows of an element, as data: one row for each property. The engine is the master copy, the
/// fields are a view of it.

enum class eFieldKind {
    line,    ///< one line of text
    text,    ///< some lines of text
    choice,  ///< one of a list of names
    picked,  ///< a text that can't be typed, and a button that leads to where it is chosen
    value,   ///< a text that is only shown
};

struct cFormRow {
    QString label;      ///< as shown, blanks and all
    QString fieldName;  ///< the field's object name
    /// The keyword of the property in model files, which hold what stands in the field; empty: they hold none of it.
    std::string_view modelKey = {};
    eFieldKind kind = eFieldKind::line;

    /// What the field shows. None: the field keeps what the user typed.
    std::function<QString()> get;
    /// Takes what the user typed. None: the field is shown and not read. @throws cException as the engine's setters do.
    std::function<void(const QString&)> set;

    bool isMarked = false;                 ///< its text is selected while it is set, and stays so when that fails
    QString startText;                     ///< before the engine was asked for the first time
    std::function<QStringList()> choices;  ///< of a choice, the names
    std::function<void()> pick;            ///< of a picked text, what its button does
    std::function<bool()> isShown;         ///< none: always
    std::function<bool()> isEditable;      ///< besides the state of the run, which is asked for all; none: yes
};

struct cElementForm {
    QString panelName;  ///< the panel's object name
    QString tabTitle;
    std::vector<cFormRow> rows;  ///< in the order in which they are shown and read; the name comes first
};
