#include "editor/tqCombi.h"

#include "kernel/propertyWords.h"

void cTQCombi::beforeDraws() {
    showStep([this] { cNodeActCombi::beforeDraws(); });
}

std::vector<cFormRow> cTQCombi::formRows() {
    cFormRow priorityRow;
    priorityRow.label = tr("Priority:");
    priorityRow.fieldName = QStringLiteral("priorityEdit");
    priorityRow.modelKey = propertyWord::priority;
    priorityRow.get = [this] { return QString::fromStdString(getPriorityText()); };
    priorityRow.set = [this](const QString& text) { setPriorityText(text.toStdString()); };
    priorityRow.isMarked = true;

    cFormRow semaphoreRow;
    semaphoreRow.label = tr("Semaphore: ");
    semaphoreRow.fieldName = QStringLiteral("semaphoreEdit");
    semaphoreRow.modelKey = propertyWord::semaphore;
    semaphoreRow.get = [this] { return QString::fromStdString(getSemaphoreText()); };
    semaphoreRow.set = [this](const QString& text) { setSemaphoreText(text.toStdString()); };
    return {nameRow(tr("Name:")), durationRow(), priorityRow, semaphoreRow};
}
