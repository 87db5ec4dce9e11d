#pragma once

#include "language/evaluationContext.h"

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class cActInstance;
class cExpression;
class cLink;
class cNetwork;
class cNetworkElement;
class cNode;
class cNodeAct;
class cRes;

/// What a declared global name stands for.
enum class eNameKind : std::int32_t { saveValue = 1, variable = 2 };

/// The names of the language and what they mean in the model at this moment. A name means at each
/// evaluation what it means then; one that means nothing is 0 and no error.
class cSymbols : public cEvaluationContext {
public:
    /// Stream 0 begins with the low 32 bits of `firstSeed`.
    cSymbols(cNetwork& model, std::int64_t firstSeed);

    double resolve(const std::string& operand, const std::string& owner) override;
    cMeaning meaningOf(const std::string& operand, const std::string& owner) override;
    cRandomStreams& randomStreams() override { return streams; }
    double hostGet(const std::string& key) override;
    void breathe() override;

    /// Enters a global name. A name that is there already keeps its kind: global code declares each name twice a run.
    void declareName(const std::string& name, eNameKind kind) {
        if (declaredNames.try_emplace(name, kind).second) namesChanged();
    }
    void forgetNames() {
        declaredNames.clear();
        namesChanged();
    }
    const std::map<std::string, eNameKind>& getDeclaredNames() const { return declaredNames; }

    void pushResource(cRes* resource) { resourceStack.push_back(resource); }
    /// Takes the last resource off; does nothing on an empty stack.
    void popResource();
    const std::deque<cRes*>& getResourceStack() const { return resourceStack; }

    /// Puts a resource on the stack for the length of a scope, at whose end the last one there is taken off: behind an
    /// Assembler's second burst that needn't be this one.
    class cResourceInHand {
    public:
        cResourceInHand(cSymbols& stackOwner, cRes* resource) : symbols(stackOwner) { symbols.pushResource(resource); }
        ~cResourceInHand() { symbols.popResource(); }
        cResourceInHand(const cResourceInHand&) = delete;
        cResourceInHand& operator=(const cResourceInHand&) = delete;

    private:
        cSymbols& symbols;
    };

    /// Makes something the current one for the length of a scope: `cCurrent(symbols.currentInstance, instance)`.
    template <typename cKind>
    class cCurrent {
    public:
        cCurrent(cKind*& currentOne, cKind* newOne) : current(currentOne) { current = newOne; }
        ~cCurrent() { current = nullptr; }
        cCurrent(const cCurrent&) = delete;
        cCurrent& operator=(const cCurrent&) = delete;

    private:
        cKind*& current;
    };

    cActInstance* currentInstance = nullptr;  ///< the instance whose event code runs, else null
    cRes* currentResource = nullptr;          ///< the resource whose ONENTRY code runs, else null

    /// An attribute name of the language and the class of things that it belongs to. What the classes really answer
    /// is their own matter; this is the vocabulary that an editor can offer.
    struct cAttribute {
        std::string_view name;
        std::int32_t attributeClass = 0;  ///< 0 global, 1 activity, 3 queue, 4 holdings, 5 link, 7 resource or result
    };
    static std::span<const cAttribute> attributeClasses();

private:
    // Nothing, where the name has no such meaning.
    std::optional<cMeaning> meaningOfGlobal(const std::string& name);
    std::optional<cMeaning> meaningOfPath(const std::vector<std::string>& parts);
    std::optional<cMeaning> meaningInActivity(cNodeAct& activity, const std::vector<std::string>& parts);
    cMeaning meaningOfLink(const std::vector<std::string>& parts, const std::string& owner);
    cMeaning meaningInPredecessor(cNode& predecessor, const std::vector<std::string>& parts);
    double evaluateVariable(const cExpression& formula) const;

    cNetwork& network;
    std::deque<cRes*> resourceStack;
    std::map<std::string, eNameKind> declaredNames;
    mutable int variableDepth = 0;  // VARIABLEs that are being evaluated inside one another
    cRandomStreams streams;
};
