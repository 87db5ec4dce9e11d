#pragma once

/// What the canvas asks of the application that shows it. There is one per process; the constructor stores it.
///
/// What is not here: whether a run is on is asked of `cNetwork::current().simState`, and a wait that the user can end
/// goes through `cNetwork::processHostEvents`.
class cEditorHost {
public:
    cEditorHost();
    virtual ~cEditorHost();
    cEditorHost(const cEditorHost&) = delete;
    cEditorHost& operator=(const cEditorHost&) = delete;

    /// The host of the process. One must exist.
    static cEditorHost& current();

    /// The point size of captions; 0 where the user has never chosen one.
    virtual int captionPointSize() const = 0;
    /// Shows the resource types for editing, and returns when the user is done.
    virtual void editResourceTypes() = 0;
};
