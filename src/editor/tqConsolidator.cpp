#include "editor/tqConsolidator.h"

#include "kernel/propertyWords.h"

std::vector<cFormRow> cTQConsolidator::formRows() {
    cFormRow condition;
    condition.label = tr("Consolidate When: ");
    condition.fieldName = QStringLiteral("consolidateWhenEdit");
    condition.modelKey = propertyWord::consolidateWhen;
    condition.kind = eFieldKind::text;
    condition.get = [this] { return QString::fromStdString(getFiringConditionText()); };
    condition.set = [this](const QString& text) { setFiringConditionText(text.toStdString()); };
    return {nameRow(tr("Name: ")), condition};
}
