#include "flow/resourceType.h"

#include "flow/homogHolder.h"

cResType::~cResType() {
    for (cHomogHolder* holder : holders) holder->forgetType(this);
}

void cResType::moveHoldersTo(cResType* replacement) {
    if (replacement == this) return;

    for (std::size_t i = 0; i < holders.size(); ++i) holders[i]->setResType(replacement);
    std::vector<cHomogHolder*> moved;
    moved.swap(holders);
    for (cHomogHolder* holder : moved) holder->forgetType(this);
}

std::unique_ptr<cResType> makeResType(const std::string& name, std::string_view kind) {
    if (kind == typeKindWord::generic) return std::make_unique<cResTypeGen>(name);
    if (kind == typeKindWord::compound) return std::make_unique<cResTypeCompound>(name);
    return std::make_unique<cResTypeChar>(name);
}
