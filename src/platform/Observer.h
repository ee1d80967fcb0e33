#pragma once

#include "platform/base/Export.h"

#include <memory>

/// The root of all messages passed through ISubject.
class NVRHW_API IMessage {
public:
    virtual ~IMessage() = default;
};

/// Receives messages from the subjects it was added to.
class NVRHW_API IObserver {
public:
    // Observers often hold services, whose release may raise.
    virtual ~IObserver() noexcept(false) {}

    /// Called in the notifying thread. The message lives only for the call: copy what is needed.
    virtual void update(IMessage* message) = 0;
};

/// Keeps observers and hands messages to them. All operations may be called from any thread and
/// from inside a notification.
class NVRHW_API ISubject {
public:
    ISubject();
    ~ISubject();
    ISubject(const ISubject&) = delete;
    ISubject& operator=(const ISubject&) = delete;

    /// Adds an observer, which stays the caller's and must be removed before it is destroyed.
    /// Returns its id (1 or more); the id it already has when it was added before; 0 for null.
    int addObserver(IObserver* observer);

    /// Removes the observer with this id: 1, or 0 when there is none. Once it has returned, the
    /// observer is not called any more: it waits for a call in progress in another thread, except
    /// when it is itself called from inside a notification.
    int removeObserver(int id);

    /// The observer with this id, or null.
    IObserver* findObserver(int id) const;

    /// Hands the message to every observer in the order of their adding, before it returns;
    /// returns how many received it. An observer added meanwhile gets the next message. An
    /// exception out of an observer is logged and the others still receive the message.
    int notifyObserver(IMessage* message);

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
