#include "platform/Observer.h"

#include "board/runtime/ObserverList.h"

ISubject::ISubject() : m_Observers(new ObserverList) {}

ISubject::~ISubject() = default;

int ISubject::addObserver(IObserver* observer) { return m_Observers->add(observer); }

int ISubject::removeObserver(int id) { return m_Observers->remove(id); }

IObserver* ISubject::findObserver(int id) const { return m_Observers->find(id); }

int ISubject::notifyObserver(IMessage* message) { return m_Observers->notify(message); }
