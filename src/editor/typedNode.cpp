#include "editor/typedNode.h"

#include "flow/link.h"
#include "kernel/network.h"
#include "kernel/node.h"

namespace {

QStringList namesOfTypes(bool (*isWanted)(const cResType&)) {
    QStringList names;
    for (const auto& [name, type] : cNetwork::current().resourceTypes)
        if (type != nullptr && isWanted(*type)) names.append(QString::fromStdString(name));
    return names;
}

}  // namespace

QStringList typeNames() {
    return namesOfTypes([](const cResType&) { return true; });
}

QStringList compoundTypeNames() {
    return namesOfTypes([](const cResType& type) { return type.getTypeKind() == typeKindWord::compound; });
}

QString typeNameOf(const cHomogHolder& holder) {
    const cResType* type = holder.getResType();
    return type == nullptr ? QString() : QString::fromStdString(type->getTypeName());
}

void moveToType(cHomogHolder& holder, cResType* newType) {
    if (cResType* oldType = holder.getResType()) {
        oldType->removeHolder(&holder);
        holder.forgetType(oldType);
    }
    holder.setResType(newType);
}

void takeType(cNode& node, cHomogHolder& holder, const std::string& typeName) {
    cResType* newType = cNetwork::current().findResourceType(typeName);
    if (newType == nullptr || newType == holder.getResType()) return;

    moveToType(holder, newType);
    const bool isAssembler = node.getKind() == "ASSEMBLER";  // takes parts of any type, and gives its own
    for (cLink* link : node.outLinkWalk())
        if (isAssembler || link->getLinkKind() == kindDraw || link->getLinkKind() == kindFlow)
            moveToType(*link, newType);
    for (cLink* link : node.inLinkWalk())
        if (!isAssembler && link->getLinkKind() == kindRelease) moveToType(*link, newType);
}

cFormRow typeChoiceRow(const QString& label, cNode& node, cHomogHolder& holder) {
    cFormRow row;
    row.label = label;
    row.fieldName = QStringLiteral("resourceTypeBox");
    row.kind = eFieldKind::choice;
    row.get = [&holder] { return typeNameOf(holder); };
    row.set = [&node, &holder](const QString& name) { takeType(node, holder, name.toStdString()); };
    row.choices = typeNames;
    return row;
}

cFormRow streamRow(const QString& label) {
    cFormRow row;
    row.label = label;
    row.fieldName = QStringLiteral("streamEdit");
    return row;
}
