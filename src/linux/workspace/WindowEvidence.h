// Concludes from windows that come and go which starts have come to something, and which instances
// start without any process that says so. Main thread; what it concludes goes out by the `on...`
// members, during the call.
#pragma once

#include "linux/workspace/AwaitedStarts.h"
#include "linux/workspace/InstanceList.h"
#include "linux/workspace/Questions.h"

#include <cstdint>
#include <functional>

namespace workspace {

class WindowEvidence
{
public:
    /// Between two windows of one start, such as that of its progress and that of its work.
    static constexpr std::chrono::seconds LONGEST_GAP{5};

    /// All of them must outlive this.
    WindowEvidence(InstanceList& list, const Questions& ask, const AwaitedStarts& awaited);

    /// An instance that ran shows itself, though nothing announced that.
    std::function<void(const Instance& instance)> onStartedAgain;

    /// The first window of an instance whose start was reported.
    std::function<void(const Instance& instance)> onWindowShown;

    /// One that had nothing but its windows. It is gone from the list already.
    std::function<void(const Instance& instance)> onEnded;

    void shown(const InstancePtr& instance, std::uint64_t window);

    /// The window was there before this program.
    static void there(const InstancePtr& instance, std::uint64_t window);

    void gone(std::uint64_t window);

private:
    void loseWindow(const InstancePtr& instance, std::uint64_t window);
    void tellSameProcess(const InstancePtr& instance) const;

    InstanceList& list;
    const Questions& ask;
    const AwaitedStarts& awaited;
};

} // namespace workspace
