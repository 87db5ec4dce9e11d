#pragma once

/// Keeps the host alive in a loop that a model may prevent from ending.
class cBreath {
public:
    virtual ~cBreath() = default;

    /// To be called once a turn. Every few thousand turns the host gets to process its events, so that the user's Stop
    /// can end the run from here.
    /// @throws cException (code 5) when the user stopped the run.
    virtual void breathe() = 0;
};
