#pragma once

#include "flow/homogHolder.h"
#include "kernel/network.h"
#include "kernel/receiver.h"

#include <deque>
#include <string>

/// Holds resources of one type between activities, keeps the statistics of its content, and wakes the Combis behind it.
///
/// The type decides the kind: a generic queue keeps one amount; a characterized one keeps its resources by ascending
/// order key, equal keys in order of arrival. The default key TimeIn means nothing to an expression, which can't reach
/// the resource in hand: all keys are 0 and the queue is first in, first out.
/// Ownership: the queue owns what waits in it; links only point here. Amounts need not be whole.
class cNodeQueue : public cNodeReceiver, public cHomogHolder {
public:
    cNodeQueue();

    std::string getKind() const override { return "QUEUE"; }

    bool heedsBursts() const override { return false; }
    void flowBegin() override {}
    /// Takes `resource` in, at its place in the order, and runs the ONENTRY code. Cost: O(content).
    /// @throws cException (code 2) for a resource of the other family than the queue's; what order key and code throw.
    void receive(cRes& resource) override;
    void flowEnd() override {}
    /// Wakes the Combis behind the queue.
    void flowSettle() override { markCombis(); }

    /// Takes one resource out of a characterized queue. Only a draw that finds nothing wakes the Combis.
    /// @return the resource, or null if it isn't here.
    virtual cResPtr drawInstance(cResPtr resource);
    /// Takes an amount out of a generic queue, and wakes the Combis.
    /// @return what was there to take: the smaller of `amount` and the current count.
    virtual double drawAmount(double amount);

    virtual void onEntry();
    /// The trace record of a draw. Runs no statements.
    virtual void onDrawFrom();
    /// Called after each change of the content. Empty here; a drawn queue repaints.
    virtual void redrawQueue() {}

    /// A change of type empties the queue.
    void setResType(cResType* newType) override;

    /// A statistic by keyword: CurCount, TotCount, AveCont, AveWait, MaxCont, MinCont, LastAmtReceived. The averages
    /// use the area under the content as of the last change. May be NaN, as AveCont at time 0.
    /// @throws cException (code 0) for any other word.
    double getAttribute(const std::string& keyword) override;
    /// Empties the queue, its statistics, and its ONENTRY code, which so runs in the first replication only.
    void resetElement() override;

    /// @throws cException as compiling does; the text stays.
    void setOrderKeyText(const std::string& text);
    const std::string& getOrderKeyText() const { return orderKey.getText(); }
    void setInitialContentText(const std::string& text);
    const std::string& getInitialContentText() const { return initialContent.getText(); }
    /// The amount or count that each replication starts with, evaluated now.
    double evaluateInitialContent() const { return initialContent.evaluate(); }
    void addOnEntryStatement(const std::string& text);

    double orderKeyOf(cRes& resource) const;
    /// Whether what comes is known to stand behind all that waits: the order key is the same for all.
    bool isFirstInFirstOut() const { return orderKey.isQuiet(); }
    /// Statistics since the last reset, times in the model's own unit.
    struct cStatistics {
        double curCount = 0.0;
        double totCount = 0.0;  ///< everything ever received
        double minCont = 0.0;   ///< lowered by generic draws alone: reads 0 in every run
        double maxCont = 0.0;
        double prevCount = 0.0;       ///< curCount before the last change
        double lastChange = 0.0;      ///< time of the last change
        double lastChangeCopy = 0.0;  ///< the same; asked by AveWait
        double areaUnderCount = 0.0;  ///< integral of curCount over time, up to lastChange
    };
    const cStatistics& getStatistics() const { return statistics; }
    double getCurCount() const { return statistics.curCount; }
    /// The mean wait by Little's law, with the area as of the last change; 0 while nothing has changed behind time 0.
    double averageWait() const;
    /// The mean content up to now, with the area as of the last change; 0 while nothing was received. NaN at time 0.
    double averageContent() const;
    /// What waits, front first; of a generic queue its one amount.
    const std::deque<cResPtr>& getContents() const { return contentsList; }

private:
    void closeSegment();
    void receiveAmount(cRes& resource);
    void receiveInstance(cRes& resource);
    void runEntryCode(cRes& resource);
    void emptyContents();
    void markCombis();
    cResGen& accumulator();
    [[noreturn]] void failOnFamily(const cRes& resource) const;

    cExpression initialContent;
    cExpression orderKey;
    cStatementList onEntryStatements;
    std::deque<cResPtr> contentsList;  // drawn from the front and added to at the end, as a rule
    cStatistics statistics;
};
