#pragma once

#include "flow/counted.h"
#include "flow/resourceType.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

class cResChar;
class cResGen;

/// What moves through a network. Belongs to a type, which outlives it.
class cRes : public cCounted {
public:
    cResType* getResType() const { return resType; }
    /// How much the resource counts for: an amount, or one.
    virtual double quantity() const = 0;

    /// The resource as what it is: one of the two is null. Told without a cast, because every flow asks.
    cResGen* asAmount();
    const cResGen* asAmount() const;
    cResChar* asInstance();
    const cResChar* asInstance() const;

protected:
    cRes(cResType* type, bool isAmountOfType) : isAmount(isAmountOfType), resType(type) {}

private:
    bool isAmount;
    cResType* resType;  // of cResTypeChar for a cResChar; an amount has the type of its link, and may have none
};

/// Shared, because a resource can stand in more than one list at a time: a compound that is sent on anew while it still
/// waits stands twice in its queue, and parts stay listed in the compound that carried them. A resource lives until the
/// last place lets go of it.
using cResPtr = cShared<cRes>;

using cResList = std::vector<cResPtr, cPoolAllocator<cResPtr>>;

/// An amount of a generic type.
class cResGen : public cRes {
public:
    cResGen(cResType* type, double startAmount) : cRes(type, true), amount(startAmount) {}

    double getAmount() const { return amount; }
    double quantity() const override { return amount; }

    virtual void add(double increase) { amount += increase; }
    /// Adds the amount of `other`, which stays as it is.
    virtual void add(const cResGen& other) { add(other.amount); }
    /// Takes `decrease` off; of an amount that is less, nothing is left.
    virtual void subtract(double decrease) { amount = amount >= decrease ? amount - decrease : 0.0; }
    virtual void subtract(const cResGen& other) { subtract(other.amount); }

private:
    double amount;
};

/// The resource for a place that keeps it. An amount on its way stands where the one who sends it has put it: of that
/// a place keeps a copy.
cResPtr keep(cRes& resource);

/// One identified instance of a characterized type.
class cResChar : public cRes {
public:
    /// A new instance, numbered by its type (from 1 in each replication), born at the network's present time, with a
    /// stored 0.0 for each of the type's save properties.
    explicit cResChar(cResTypeChar* type);

    /// Looks up TimeIn, ResNum, BirthTime, then the stored properties, then the type's computed ones.
    /// @return false, with `value` unchanged, if none of them has the name.
    virtual bool getProperty(const std::string& name, double& value);

    cResTypeChar* getCharType() const { return static_cast<cResTypeChar*>(getResType()); }
    /// The name after type and number, in at most 63 characters.
    std::string getInstanceName() const;
    std::int32_t getResNum() const { return resNum; }
    double getBirthTime() const { return birthTime; }
    /// A characterized resource always counts as one.
    double getUnitCount() const { return 1.0; }
    double quantity() const override { return getUnitCount(); }

    double timeIn = 0.0;                  ///< when it last entered a queue
    std::map<std::string, double> props;  ///< stored properties

private:
    std::int32_t resNum = 0;
    double birthTime = 0.0;
};

inline cResGen* cRes::asAmount() { return isAmount ? static_cast<cResGen*>(this) : nullptr; }
inline const cResGen* cRes::asAmount() const { return isAmount ? static_cast<const cResGen*>(this) : nullptr; }
inline cResChar* cRes::asInstance() { return isAmount ? nullptr : static_cast<cResChar*>(this); }
inline const cResChar* cRes::asInstance() const { return isAmount ? nullptr : static_cast<const cResChar*>(this); }
