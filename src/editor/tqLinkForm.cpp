// The panel of a link: which of its rules are shown follows from what the link joins and carries.

#include "editor/elementPanel.h"
#include "editor/tqLink.h"
#include "editor/typedNode.h"

bool cTQLink::isRuleShown(eLinkRule rule) const {
    const bool isOfAmounts = isGeneric(getResType());
    const bool isOfInstances = isCharacterized(getResType());
    switch (rule) {
        case eLinkRule::enough: return getLinkKind() == kindDraw && getResType() != nullptr;
        case eLinkRule::drawAmt: return getLinkKind() == kindDraw && isOfAmounts;
        case eLinkRule::drawUntil:
        case eLinkRule::drawOrder:
        case eLinkRule::drawWhere: return getLinkKind() == kindDraw && isOfInstances;
        case eLinkRule::releaseAmt: return getLinkKind() == kindRelease && isOfAmounts;
        case eLinkRule::releaseUntil:
        case eLinkRule::releaseOrder:
        case eLinkRule::releaseWhere: return getLinkKind() == kindRelease && isOfInstances;
        case eLinkRule::strength: return getLinkKind() == kindFlow;
    }
    return false;
}

cFormRow cTQLink::ruleRow(eLinkRule rule, const QString& label, const QString& fieldName) {
    cFormRow row;
    row.label = label;
    row.fieldName = fieldName;
    row.modelKey = modelKeyOf(rule);
    row.get = [this, rule] { return QString::fromStdString(getRuleText(rule)); };
    row.set = [this, rule](const QString& text) { setRuleText(rule, text.toStdString()); };
    row.isMarked = true;
    row.isShown = [this, rule] { return isRuleShown(rule); };
    return row;
}

bool cTQLink::hasTypedEnd() const {
    return dynamic_cast<const cHomogHolder*>(getPredNode()) != nullptr ||
           dynamic_cast<const cHomogHolder*>(getSuccNode()) != nullptr;
}

/// Between two activities the user says what the link carries; elsewhere a node says it.
cFormRow cTQLink::typeRow() {
    cFormRow row;
    row.label = tr("Resource Type:");
    row.fieldName = QStringLiteral("resourceTypeBox");
    row.kind = eFieldKind::choice;
    row.get = [this] { return typeNameOf(*this); };
    row.set = [this](const QString& name) {
        cResType* chosen = network().findResourceType(name.toStdString());
        const bool isForUser = getLinkKind() == kindRelease && !hasTypedEnd();
        if (isForUser && chosen != nullptr && chosen != getResType()) moveToType(*this, chosen);
    };
    row.choices = typeNames;
    row.isEditable = [this] { return !hasTypedEnd(); };
    return row;
}

std::vector<cFormRow> cTQLink::formRows() {
    cFormRow incomplete;
    incomplete.label = tr("Incomplete/ Bad Link.");
    incomplete.fieldName = QStringLiteral("badLinkLabel");
    incomplete.kind = eFieldKind::value;
    incomplete.startText =
        tr("This link is not connected properly. Ensure that only queues precede combis and that only combis succeed "
           "queues.");
    incomplete.isShown = [this] { return getLinkKind() == kindIncomplete; };

    return {nameRow(tr("Name:")),
            ruleRow(eLinkRule::enough, tr("Draw Condition:"), QStringLiteral("drawConditionEdit")),
            ruleRow(eLinkRule::drawAmt, tr("DrawAmount:"), QStringLiteral("drawAmountEdit")),
            ruleRow(eLinkRule::drawUntil, tr("Draw Until:"), QStringLiteral("drawUntilEdit")),
            ruleRow(eLinkRule::drawOrder, tr("Draw Order:"), QStringLiteral("drawOrderEdit")),
            ruleRow(eLinkRule::drawWhere, tr("Draw Where:"), QStringLiteral("drawWhereEdit")),
            ruleRow(eLinkRule::releaseAmt, tr("ReleaseAmount:"), QStringLiteral("releaseAmountEdit")),
            ruleRow(eLinkRule::releaseUntil, tr("Release Until: "), QStringLiteral("releaseUntilEdit")),
            ruleRow(eLinkRule::releaseOrder, tr("Release Order: "), QStringLiteral("releaseOrderEdit")),
            ruleRow(eLinkRule::releaseWhere, tr("Release Where: "), QStringLiteral("releaseWhereEdit")),
            ruleRow(eLinkRule::strength, tr("Strength:"), QStringLiteral("strengthEdit")),
            incomplete,
            typeRow()};
}
