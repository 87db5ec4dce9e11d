#include "flow/homogHolder.h"

#include "flow/resourceType.h"

cHomogHolder::~cHomogHolder() {
    for (cResType* type : listedBy) type->removeHolder(this);
}

void cHomogHolder::setResType(cResType* newType) {
    resType = newType;
    if (newType == nullptr) return;

    newType->addHolder(this);
    listedBy.push_back(newType);
}

void cHomogHolder::forgetType(const cResType* type) {
    std::erase(listedBy, type);
    if (resType == type) resType = nullptr;
}
