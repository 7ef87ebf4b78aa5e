#include "Exchange/EventLoopWatch.h"

#include <QAbstractEventDispatcher>

namespace trellisport::bench {

EventLoopWatch::EventLoopWatch()
{
    const auto *dispatcher = QAbstractEventDispatcher::instance();
    m_awake = QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, [this] {
        m_isAwake = true;
        m_waitedBefore = millisecondsKeptWaiting();
        m_wokeAt = SteadyClock::now();
    });
    m_aboutToBlock = QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, [this] {
        if (m_isAwake) {
            const double stall = millisecondsSince(m_wokeAt);
            m_stalls.push_back(stall);
            m_ownStalls.push_back(stall - (millisecondsKeptWaiting() - m_waitedBefore));
        }
        m_isAwake = false;
    });
}

EventLoopWatch::~EventLoopWatch()
{
    QObject::disconnect(m_awake);
    QObject::disconnect(m_aboutToBlock);
}

} // namespace trellisport::bench
