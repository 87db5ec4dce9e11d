#pragma once

#include "editor/animation.h"
#include "editor/elementForm.h"

#include <QGraphicsItem>
#include <QObject>
#include <QPointF>
#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QDialog;
class cElementPanel;
class cNetworkElement;

class cTQNetworkElement;

/// A visible step of a run: the element stands out for the length of the animation delay and until the scope ends.
class cShownStep {
public:
    /// @throws cException (code 5) if the user stopped the run meanwhile.
    explicit cShownStep(cTQNetworkElement& shown);
    ~cShownStep();
    cShownStep(const cShownStep&) = delete;
    cShownStep& operator=(const cShownStep&) = delete;

private:
    cTQNetworkElement& element;
};

/// What all elements on the canvas have in common: one object is drawn here and simulated by the engine. The engine
/// holds the truth; the panel is a view of it.
///
/// Ownership: the network's map of elements, as for every element. The scene lists it, and loses it when it goes; its
/// panel goes with it.
class cTQNetworkElement : public QObject, public QGraphicsItem {
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    cTQNetworkElement();
    ~cTQNetworkElement() override;

    /// The engine's side of the same object.
    virtual cNetworkElement& engineElement() = 0;
    virtual const cNetworkElement& engineElement() const = 0;

    /// The panel for below the canvas, at its first tab. It is built when it is first asked for.
    virtual QDialog* panel();
    /// Whether somebody has asked for the panel; all that only fills fields can wait until then.
    bool hasPanel() const { return elementPanel != nullptr; }
    /// Whether `widget` is the panel of this element.
    bool isPanel(const QWidget* widget) const;

    /// What stands in the field of a property, by its keyword in model files; while there is no panel, what stood there
    /// if it had been built before the last `writeTabs`. Nothing without such a field, or before any `writeTabs`.
    std::optional<QString> typedText(std::string_view modelKey) const;

    /// Raised while a run shows a step of this element: 1, else 0.
    virtual int getHighlight() const { return highlight; }
    virtual void setHighlight(int state);

    /// The run has changed what the element shows. Without animation there are far too many changes to paint each: the
    /// window repaints the canvas now and then.
    void runChanged() {
        if (animation::isOn) update();
    }

    /// Does a step of a run, which can be seen while the animation is on: the element stands out for the length of the
    /// animation delay first, and until the step is done. @throws cException as the step does, and (code 5) if the user
    /// stopped the run meanwhile.
    template <typename cStep>
    void showStep(cStep step) {
        if (!animation::isOn) return step();  // the way of nearly all steps: nothing is to be undone behind it
        const cShownStep shown(*this);
        step();
    }

    /// What is written beside the element, and how far below its middle.
    virtual QString caption() const;
    virtual double captionOffset() const { return 0.0; }

    /// Takes a new name, or shows the box that tells the rule of names.
    /// @return whether the element now has the name.
    bool setElementName(const QString& newName);

    /// The types of the model have changed: whatever lists them is filled anew. `oldName` is what `newName` was called
    /// before, or empty.
    virtual void populateResCB(const std::string& newName, const std::string& oldName);

    QPointF lastPress;  ///< where the mouse last pressed the element, in the scene

public Q_SLOTS:
    /// Engine to fields; fields can be edited while no run is on. While there is no panel, the texts of its fields are
    /// kept: a run can change the engine's own for good, which is not the user's doing and not to be saved.
    virtual void writeTabs();
    /// Fields to engine, the name first. @throws cException at the first text that doesn't compile.
    virtual void readTabs();
    /// The only way by which the user's fields reach the engine: reads them, and shows what fails in a box, with the
    /// panel left as it is.
    virtual void editExceptions();

protected:
    /// Builds the panel.
    virtual void createTabs();
    /// The panel's object name, and what stands on its tab.
    virtual QString panelName() const = 0;
    virtual QString tabTitle() const = 0;
    /// The fields of the panel, top down.
    virtual std::vector<cFormRow> formRows() = 0;

    /// The row of the name, which all panels but one begin with.
    cFormRow nameRow(const QString& label);
    /// The user gave the element another name.
    virtual void renamed(const std::string& oldName);

    std::unique_ptr<cElementPanel> elementPanel;

private:
    void keepTexts();

    int highlight = 0;
    std::vector<std::pair<std::string_view, QString>> keptTexts;  // by keyword in model files; none beside a panel
};
