#include "linux/qt/QtDispatchQueues.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace qt {

namespace {

/// A block may wait for another one, also on a machine with a single processor.
constexpr int FEWEST_WORKERS = 4;

} // namespace

void QtDispatchQueues::Queue::push(platform::Block block)
{
    const std::scoped_lock lock(mutex);
    blocks.push_back(std::move(block));
}

platform::Block QtDispatchQueues::Queue::pop()
{
    const std::scoped_lock lock(mutex);
    platform::Block block = std::move(blocks.front());
    blocks.pop_front();
    return block;
}

bool QtDispatchQueues::Queue::empty()
{
    const std::scoped_lock lock(mutex);
    return blocks.empty();
}

QtDispatchQueues::MainQueue::MainQueue()
    : turn(static_cast<QEvent::Type>(QEvent::registerEventType()))
{
}

void QtDispatchQueues::MainQueue::push(platform::Block block)
{
    blocks.push(std::move(block));
    QCoreApplication::postEvent(this, new QEvent(turn));
}

bool QtDispatchQueues::MainQueue::event(QEvent* event)
{
    if (event->type() != turn) {
        return QObject::event(event);
    }
    const platform::Block block = blocks.pop();
    if (!blocks.empty()) {
        // a loop that this block may run would sleep over events that were posted before it began
        QAbstractEventDispatcher::instance()->wakeUp();
    }
    block();
    return true;
}

QtDispatchQueues::QtDispatchQueues()
{
    workers.setMaxThreadCount(std::max(FEWEST_WORKERS, workers.maxThreadCount()));
}

void QtDispatchQueues::asyncGlobal(platform::Block block)
{
    global.push(std::move(block));
    workers.start([this] { global.pop()(); });
}

void QtDispatchQueues::asyncMain(platform::Block block)
{
    main.push(std::move(block));
}

} // namespace qt
