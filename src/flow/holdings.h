#pragma once

#include "flow/resource.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// Resources by type: of a generic one an amount, of any other one resources in the order in which they came.
///
/// Made for few types, and for resources that leave in the order in which they came. What is emptied keeps its memory
/// for the next time.
class cHoldings {
public:
    /// What is held of one type.
    class cList {
    public:
        explicit cList(const cResType* ofType) : type(ofType) {}

        const cResType* getType() const { return type; }
        bool empty() const { return !amount && resources.empty(); }
        void clear() {
            amount.reset();
            if (!resources.empty()) clearResources();
        }

        /// Holds until the next change.
        std::span<const cResPtr> held() const { return std::span(resources).subspan(gone); }
        void add(const cResPtr& resource);
        /// Takes out one resource, the first time that it is there; does nothing if it isn't.
        void remove(const cRes& resource);

        std::optional<double> amount;  ///< what is held of a generic type

    private:
        friend class cHoldings;

        void clearResources() {
            resources.clear();
            gone = 0;
        }

        const cResType* type;
        std::vector<cResPtr> resources;
        std::size_t gone = 0;  // places at the front whose resource has left
    };

    cHoldings() = default;
    cHoldings(const cHoldings& other) = default;
    cHoldings(cHoldings&& other) noexcept = default;
    ~cHoldings() = default;
    cHoldings& operator=(cHoldings&& other) noexcept = default;
    /// Copies what `other` holds, mostly into memory that is there.
    cHoldings& operator=(const cHoldings& other);

    /// The list of a type, or null if there has never been one.
    const cList* find(const cResType* type) const {
        const std::size_t place = placeOf(type);
        return place < lists.size() && lists[place].getType() == type ? &lists[place] : nullptr;
    }
    cList* find(const cResType* type) {
        const std::size_t place = placeOf(type);
        return place < lists.size() && lists[place].getType() == type ? &lists[place] : nullptr;
    }
    /// The list of a type, which is made if there is none.
    cList& listOf(const cResType* type) {
        cList* list = find(type);
        return list != nullptr ? *list : newList(type);
    }
    void clear() {
        for (cList& list : lists) list.clear();
    }
    bool empty() const { return size() == 0; }
    /// The number of resources of all types, an amount counting as one.
    std::size_t size() const;

private:
    static constexpr std::size_t few = 8;

    /// Where the list of a type stands, or would stand.
    std::size_t placeOf(const cResType* type) const {
        if (lists.size() > few) return placeAmongMany(type);
        std::size_t place = 0;
        while (place < lists.size() && lists[place].getType() < type) ++place;
        return place;
    }
    std::size_t placeAmongMany(const cResType* type) const;
    cList& newList(const cResType* type);

    std::vector<cList> lists;  // by the address of the type
};
