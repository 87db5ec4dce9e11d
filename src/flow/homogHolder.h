#pragma once

#include <vector>

class cResType;

/// Whatever keeps or passes resources of one single type. Has no type until it is given one.
class cHomogHolder {
public:
    cHomogHolder() = default;
    virtual ~cHomogHolder();
    cHomogHolder(const cHomogHolder&) = delete;
    cHomogHolder& operator=(const cHomogHolder&) = delete;

    virtual cResType* getResType() const { return resType; }
    /// Takes `newType` and enters the holder in the type's list, once for every call. Null takes no type.
    virtual void setResType(cResType* newType);
    virtual bool isReserved() const { return false; }

    /// The type lets go of this holder: it is being destroyed, or its holders have moved to another type.
    void forgetType(const cResType* type);

protected:
    cResType* resType = nullptr;

private:
    std::vector<cResType*> listedBy;  // the types in whose lists this holder stands, to leave them when destroyed
};
