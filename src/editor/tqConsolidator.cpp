#include "editor/tqConsolidator.h"

std::vector<cFormRow> cTQConsolidator::formRows() {
    cFormRow condition;
    condition.label = tr("Consolidate When: ");
    condition.fieldName = QStringLiteral("consolidateWhenEdit");
    condition.kind = eFieldKind::text;
    condition.get = [this] { return QString::fromStdString(getFiringConditionText()); };
    condition.set = [this](const QString& text) { setFiringConditionText(text.toStdString()); };
    return {nameRow(tr("Name: ")), condition};
}
