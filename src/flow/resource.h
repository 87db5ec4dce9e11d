#pragma once

#include "flow/blockPool.h"
#include "flow/resourceType.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

class cResChar;
class cResGen;

/// What moves through a network. Belongs to a type, which outlives it.
class cRes {
public:
    virtual ~cRes() = default;
    cRes(const cRes&) = delete;
    cRes& operator=(const cRes&) = delete;

    cResType* getResType() const { return resType; }
    /// How much the resource counts for: an amount, or one.
    virtual double quantity() const = 0;

    /// The resource as what it is: one of the two is null. Told without a cast, because every flow asks.
    cResGen* asAmount();
    const cResGen* asAmount() const;
    cResChar* asInstance();
    const cResChar* asInstance() const;

protected:
    cRes(cResType* type, bool isAmountOfType) : resType(type), isAmount(isAmountOfType) {}

private:
    cResType* resType;  // of cResTypeChar for a cResChar; an amount has the type of its link, and may have none
    bool isAmount;
};

/// Shared, because a resource can stand in more than one list at a time: a compound that is sent on anew while it still
/// waits stands twice in its queue, and parts stay listed in the compound that carried them. A resource lives until the
/// last place lets go of it.
using cResPtr = std::shared_ptr<cRes>;

/// Resources by type; those of one type in the order in which they came.
using cHoldings = std::multimap<const cResType*, cResPtr, std::less<const cResType*>,
                                cPoolAllocator<std::pair<const cResType* const, cResPtr>>>;

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

/// An amount that travels: made and let go at every event.
inline std::shared_ptr<cResGen> newAmount(cResType* type, double amount) {
    return std::allocate_shared<cResGen>(cPoolAllocator<cResGen>(), type, amount);
}

/// One identified instance of a characterized type.
class cResChar : public cRes {
public:
    /// A new instance, numbered by its type (from 1 in each replication), born at the network's present time, named
    /// after type and number in at most 63 characters, with a stored 0.0 for each of the type's save properties.
    explicit cResChar(cResTypeChar* type);
    ~cResChar() override;

    /// Looks up TimeIn, ResNum, BirthTime, then the stored properties, then the type's computed ones.
    /// @return false, with `value` unchanged, if none of them has the name.
    virtual bool getProperty(const std::string& name, double& value);

    /// Enters the instance in the lists by name of its type and of the network; it leaves them when it is destroyed.
    void enterInLists();

    cResTypeChar* getCharType() const { return charType; }
    const std::string& getInstanceName() const { return instanceName; }
    std::int32_t getResNum() const { return resNum; }
    double getBirthTime() const { return birthTime; }
    double getUnitCount() const { return unitCount; }
    double quantity() const override { return unitCount; }

    double timeIn = 0.0;                  ///< when it last entered a queue
    std::map<std::string, double> props;  ///< stored properties

private:
    cResTypeChar* charType;
    double unitCount = 1.0;  // a characterized resource always counts as one
    std::string instanceName;
    std::int32_t resNum = 0;
    double birthTime = 0.0;
};

/// A characterized resource that can carry others.
class cResCompound : public cResChar {
public:
    explicit cResCompound(cResTypeCompound* type) : cResChar(type) {}

    cHoldings contents;  ///< the parts; they may stand in other lists too
};

inline cResGen* cRes::asAmount() { return isAmount ? static_cast<cResGen*>(this) : nullptr; }
inline const cResGen* cRes::asAmount() const { return isAmount ? static_cast<const cResGen*>(this) : nullptr; }
inline cResChar* cRes::asInstance() { return isAmount ? nullptr : static_cast<cResChar*>(this); }
inline const cResChar* cRes::asInstance() const { return isAmount ? nullptr : static_cast<const cResChar*>(this); }
