#include "editor/formField.h"

#include "editor/typedLines.h"
#include "language/exception.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QTextEdit>

namespace {

constexpr int linesOfText = 4;  // as high as a text field gets under the canvas
constexpr int textMargin = 5;   // above a text that is only shown, to be level with the label of its row

/// What a screen reader says for a field: its label without the colon.
QString spokenName(const QString& label) {
    QString name = label.trimmed();
    if (name.endsWith(':')) name.chop(1);
    return name.trimmed();
}

}  // namespace

cFormField::cFormField(cFormRow formRow) : row(std::move(formRow)) {
    makeWidget();
    setText(row.startText);
}

void cFormField::makeWidget() {
    switch (row.kind) {
        case eFieldKind::line: widget = line = new QLineEdit; break;
        case eFieldKind::text:
            widget = lines = new QTextEdit;
            lines->setAcceptRichText(false);
            lines->setTabChangesFocus(true);
            lines->setFixedHeight(lines->fontMetrics().lineSpacing() * linesOfText + 2 * lines->frameWidth() + 8);
            break;
        case eFieldKind::choice:
            widget = names = new QComboBox;
            names->setSizeAdjustPolicy(QComboBox::AdjustToContents);
            break;
        case eFieldKind::picked: makePicked(); break;
        case eFieldKind::value:
            widget = shown = new QLabel;
            shown->setTextFormat(Qt::PlainText);
            shown->setWordWrap(true);
            shown->setAlignment(Qt::AlignLeft | Qt::AlignTop);
            shown->setContentsMargins(0, textMargin, 0, textMargin);
            shown->setTextInteractionFlags(Qt::TextSelectableByMouse);
            break;
    }
    focusHolder()->setObjectName(row.fieldName);
    focusHolder()->setAccessibleName(spokenName(row.label));
}

QWidget* cFormField::focusHolder() const { return line != nullptr ? line : widget; }

void cFormField::makePicked() {
    widget = new QWidget;
    auto* layout = new QHBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    line = new QLineEdit;
    line->setReadOnly(true);
    auto* button = new QPushButton(QCoreApplication::translate("cFormField", "Specify..."));
    button->setObjectName(row.fieldName + QStringLiteral("Button"));
    button->setAccessibleName(QCoreApplication::translate("cFormField", "Specify %1").arg(spokenName(row.label)));
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, button, row.pick);
    layout->addWidget(line);
    layout->addWidget(button);
}

QString cFormField::text() const {
    if (line != nullptr) return line->text();
    if (lines != nullptr) return typedLines(*lines);
    return names != nullptr ? names->currentText() : shown->text();
}

void cFormField::setText(const QString& newText) {
    if (line != nullptr) {
        line->setText(newText);
        line->setCursorPosition(0);
    } else if (lines != nullptr) {
        lines->setPlainText(newText);
    } else if (names != nullptr) {
        names->setCurrentIndex(names->findText(newText));
    } else {
        shown->setText(newText);
    }
}

void cFormField::write() {
    if (names != nullptr) refill({}, {});
    if (row.get) setText(row.get());
    if (row.isMarked) unmark();
}

void cFormField::read() {
    if (!row.set) return;

    const std::function<void(const QString&)> set = row.set;  // a box that it shows can take the whole panel down
    const bool isMarked = row.isMarked;
    if (isMarked) mark();
    try {
        set(text());
    } catch (const cException&) {
        // Only the field with the focus stays marked: others lose their selection when a box gives way to their window.
        focusHolder()->setFocus(Qt::OtherFocusReason);
        throw;
    }
    if (isMarked) unmark();
}

void cFormField::mark() {
    QPalette palette = line->palette();
    palette.setColor(QPalette::Highlight, Qt::blue);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    line->setPalette(palette);
    line->selectAll();
}

void cFormField::unmark() {
    line->deselect();
    line->setPalette({});
}

void cFormField::refill(const QString& newName, const QString& oldName) {
    if (names == nullptr) return;

    const bool isRenamed = !oldName.isEmpty() && names->currentText() == oldName;
    const QString chosen = isRenamed ? newName : names->currentText();
    names->clear();
    names->addItems(row.choices());
    const int place = names->findText(chosen);
    names->setCurrentIndex(place < 0 && names->count() > 0 ? 0 : place);
}

void cFormField::setEditable(bool isRunOff) {
    widget->setEnabled(row.kind == eFieldKind::value || (isRunOff && (!row.isEditable || row.isEditable())));
}
