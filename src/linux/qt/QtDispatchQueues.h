// The main queue as queued calls on the thread that made this object, the global queue as a pool of
// threads. Blocks of the main queue also run in nested event loops. What still waits for the main
// queue when this object goes is dropped; its destructor waits for blocks of the global queue.
#pragma once

#include "platform/DispatchQueues.h"

#include <QEvent>
#include <QObject>
#include <QThreadPool>

#include <deque>
#include <mutex>

namespace qt {

class QtDispatchQueues final : public platform::DispatchQueues
{
public:
    /// Make it on the main thread, once there is an application object.
    QtDispatchQueues();

    void asyncGlobal(platform::Block block) override;
    void asyncMain(platform::Block block) override;

private:
    /// Hands a block from thread to thread.
    class Queue
    {
    public:
        void push(platform::Block block);
        platform::Block pop();
        bool empty();

    private:
        std::mutex mutex;
        std::deque<platform::Block> blocks;
    };

    /// One event a block.
    class MainQueue final : public QObject
    {
    public:
        MainQueue();
        void push(platform::Block block);
        bool event(QEvent* event) override;

    private:
        Queue blocks;
        QEvent::Type turn;
    };

    MainQueue main;
    Queue global;
    QThreadPool workers; // last: its end waits for blocks that use the rest
};

} // namespace qt
