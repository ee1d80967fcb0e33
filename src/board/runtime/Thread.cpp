#include "platform/Thread.h"

#include "board/runtime/ThreadControl.h"

// NOLINTBEGIN(performance-unnecessary-value-param): copies are what the interface promises
GThread::GThread(function<int> body, const std::string& name, function<int> second,
                 function<int> third)
    : m_Control(new ThreadControl(body, name, second, third)) {}
// NOLINTEND(performance-unnecessary-value-param)

GThread::~GThread() = default;

int GThread::start() { return m_Control->start(); }

void GThread::stop() { m_Control->stop(); }

int GThread::running() const { return m_Control->running(); }

int GThread::emptyFun() { return 0; }
