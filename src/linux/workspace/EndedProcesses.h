// The processes whose ends were heard of last: two sources may tell of one process, and the second
// one only after its end. Main thread.
#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <utility>

#include <sys/types.h>

namespace workspace {

class EndedProcesses
{
public:
    static constexpr std::size_t MOST_REMEMBERED = 64;

    void add(pid_t pid, std::uint64_t startTime)
    {
        latest.emplace_back(pid, startTime);
        if (latest.size() > MOST_REMEMBERED) {
            latest.pop_front();
        }
    }

    [[nodiscard]] bool contains(pid_t pid, std::uint64_t startTime) const
    {
        return std::find(latest.begin(), latest.end(), std::pair(pid, startTime)) != latest.end();
    }

private:
    std::deque<std::pair<pid_t, std::uint64_t>> latest;
};

} // namespace workspace
