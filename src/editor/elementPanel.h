#pragma once

#include "editor/elementForm.h"

#include <QDialog>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class cFormField;
class QDialogButtonBox;
class QFormLayout;
class QTabWidget;

/// The property panel of an element: a tab with a form, and below it Ok and Cancel. The window places it under its
/// canvas.
///
/// What the user types reaches the engine with Ok, row by row. A row that the engine refuses ends that: its text stays
/// marked, and the panel stays open with all that was typed. Cancel hides the panel and restores nothing; the next
/// `writeTabs` does. Nothing can be edited while a run is on.
/// Ownership: made without a parent, for the element to keep, whose rows refer to it. A window that shows the panel
/// becomes its parent.
class cElementPanel : public QDialog {
    Q_OBJECT

public:
    explicit cElementPanel(cElementForm form);
    ~cElementPanel() override;

    /// The panel, with its first tab in front.
    QDialog* atFirstTab();
    /// Engine to fields. Shows the rows that apply now, and lets them be edited exactly while no run is on.
    void writeTabs();
    /// Fields to engine, in the order of the rows that are shown; then closes the panel. Reads nothing during a run: a
    /// text set anew draws random numbers of the model.
    /// @throws cException what the engine throws at a text; the rows behind it aren't read, and the panel stays open.
    void readTabs();
    /// `readTabs`, with a failure shown in a box.
    void editExceptions();
    /// What stands in the field of a property, by its keyword in model files; nothing without such a field.
    std::optional<QString> typedText(std::string_view modelKey) const;
    /// Fills the lists of names anew. The choice stays, also under a new name; a choice that is gone gives way to the
    /// first name of the list.
    void refillChoices(const std::string& newName, const std::string& oldName);
    /// Opens or closes the fields by the state of the run, and leaves their texts.
    void refreshEditable();

private:
    void addField(cFormRow row);

    QTabWidget* tabs;
    QFormLayout* formLayout;
    QDialogButtonBox* buttons;
    std::vector<std::unique_ptr<cFormField>> fields;
};
