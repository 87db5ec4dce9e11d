#pragma once

#include "flow/releasers.h"
#include "kernel/activityInstance.h"
#include "kernel/network.h"
#include "kernel/node.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A node that holds resources for a length of simulated time: base of the kinds of activity, which differ in how they
/// start. Several instances can be running at once.
///
/// The starting points of the minima (100000 for times, 1000000 for durations and intervals) are limits too: no minimum
/// is ever reported above them.
class cNodeAct : public cReleasers, public virtual cNode {
public:
    /// How long the next instance lasts is for the duration expression to decide.
    static constexpr double durationByExpression = -1.0;

    ~cNodeAct() override;

    /// Starts an instance at `start` that holds `held`: fixes its duration, puts it on the calendar and runs the
    /// ONSTART code, which sees the counts as they were before.
    /// @param duration how long it lasts; exactly -1 leaves it to the duration expression. May be negative.
    /// @throws cException if the duration or the code fails.
    void startInstance(const cHoldings& held, double start, double duration);
    /// Ends an instance: BEFOREEND code, then one burst of flow along all out-links, then ONEND code, then the
    /// settling. What no link took ceases to exist. Does nothing for an instance that isn't running.
    /// @throws cException what the code, the links and the successors throw.
    virtual void endInstance(const cActInstancePtr& instance);

    virtual void onStart();
    virtual void beforeEnd();
    virtual void onEnd();
    /// Called after an instance started or ended. Empty here; a drawn activity repaints.
    virtual void refreshElement() {}

    /// The value of a statistic now: "InContext", "CurInst", "TotInst", "AveDur", or "Duration", which is that of the
    /// current instance, whichever activity it belongs to. 0 for any other keyword.
    double getAttribute(const std::string& keyword) override;
    /// Forgets instances, holdings, statistics and the event code. That code is compiled once per run, so of many
    /// replications only the first has it.
    void resetElement() override;

    /// @throws cException as compiling does; the text stays.
    void setDurationText(const std::string& text);
    const std::string& getDurationText() const { return durationExpr.getText(); }
    void addOnStartStatement(const std::string& text);
    void addBeforeEndStatement(const std::string& text);
    void addOnEndStatement(const std::string& text);

    /// Statistics since the last reset, in the model's time unit.
    struct cStatistics {
        std::int32_t nextInstance = 0;  ///< number of the next instance; read as TotInst
        std::int32_t curInst = 0;       ///< instances now running
        double firstStart = 100000.0;
        double lastStart = -1.0;  ///< latest start; negative before the first
        double firstEnd = 100000.0;
        double lastEnd = -1.0;
        double aveDur = 0.0;
        double sdDur = 0.0;  ///< not a number while there was one instance
        double maxDur = -1.0;
        double minDur = 1000000.0;
        double aveInter = 0.0;
        double sdInter = 0.0;
        double maxInter = -1.0;
        double minInter = 1000000.0;
    };
    /// The deviations are worked out here.
    cStatistics getStatistics() const;
    std::int32_t getCurInst() const { return statistics.curInst; }
    std::int32_t getTotInst() const { return statistics.nextInstance; }
    double getAveDur() const { return statistics.aveDur; }
    /// The duration of the current instance, whichever activity it belongs to; 0 if there is none.
    double currentDuration() const;

    /// The running instance of that number, or null. Cost: O(instances that ever ran at a time).
    cActInstancePtr findInstance(std::int32_t instanceId) const;
    /// The instance started last, or null if it has ended.
    const cActInstance* latestInstance() const { return latest; }

protected:
    cNodeAct();

    /// Raises the counts of instances, running and begun.
    void countInstance();

private:
    friend class cActInstance;

    cActInstance& beginInstance(const cHoldings& held, double start);
    cActInstance* endedInstance();
    void dropInstances();
    void forgetInstance(cActInstance& instance);
    void countInterval(double interval);
    void countDuration(double duration, double end);
    void sendFlows();
    const std::vector<cLink*>& burstLinks();
    void runEventCode(const cStatementList& code);

    cStatementList onStartStatements;
    cStatementList beforeEndStatements;
    cStatementList onEndStatements;
    cExpression durationExpr;
    std::vector<cActInstancePtr> instances;     // those that run, and those that wait to become later ones
    std::vector<cActInstance*> endedInstances;  // the latter, as long as nobody else holds them
    cActInstance* latest = nullptr;
    cStatistics statistics;
    std::vector<cLink*> linksToTell;       // the out-links whose successors heed bursts, or that have none
    std::uint64_t linksToTellVersion = 0;  // of the names, for which these are they
    double durSpread = 0.0;                // running sum of squared deviations
    std::int32_t durCount = 0;             // durations counted
    double interSpread = 0.0;              // running sum of squared deviations
    std::int32_t interCount = 0;           // never raised; see countInterval
    bool hasInterval = false;
};
