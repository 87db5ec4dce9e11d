#pragma once

#include "editor/elementForm.h"

#include <QString>
#include <QStringList>
#include <string>

class cHomogHolder;
class cNode;
class cResType;

/// What panels of elements with a resource type have in common.

/// The names of all types of the model, and of its compound types alone, by name.
QStringList typeNames();
QStringList compoundTypeNames();

/// The name of the holder's type; empty while it has none.
QString typeNameOf(const cHomogHolder& holder);

/// Moves a holder to another type, and out of the holders of its old one.
void moveToType(cHomogHolder& holder, cResType* newType);

/// Moves a node to the type of that name, and out of the holders of its old one. The links whose type is that of the
/// node follow: a link that was drawn before the type was chosen would otherwise carry what the node can't hold.
/// Does nothing if there is no such type, or if the node has it.
void takeType(cNode& node, cHomogHolder& holder, const std::string& typeName);

/// The row "Resource Type:" with the list of all types.
cFormRow typeChoiceRow(const QString& label, cNode& node, cHomogHolder& holder);

/// A row for a random stream, which is shown and not read.
cFormRow streamRow(const QString& label);
