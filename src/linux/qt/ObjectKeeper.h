// A JSON object in memory and, by a thread of its own, in its file. A change counts at once; the
// caller waits for the file no longer than it wants, since a disk may take any time. What the file
// did not take is tried again with the next change that is saved, and every few seconds until then.
// The end waits for what is under way. Main thread only.
#pragma once

#include "linux/qt/JsonObjectFile.h"

#include <QJsonObject>
#include <QJsonValue>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace qt {

class ObjectKeeper
{
public:
    /// Reads the file at once. `patience`: how long `save` may wait.
    ObjectKeeper(JsonObjectFile file, std::chrono::milliseconds patience);
    ~ObjectKeeper();
    ObjectKeeper(const ObjectKeeper&) = delete;
    ObjectKeeper& operator=(const ObjectKeeper&) = delete;
    ObjectKeeper(ObjectKeeper&&) = delete;
    ObjectKeeper& operator=(ObjectKeeper&&) = delete;

    /// Undefined when there is none under the key.
    QJsonValue value(const std::string& key) const;

    /// No text removes the key.
    void change(const std::string& key, std::optional<std::string> text);

    /// True once all changes are on the disk; false when that failed or takes longer.
    bool save();

    /// As the last, and waits longer: for the end of the process.
    bool finish(std::chrono::milliseconds longest);

private:
    using Changes = std::map<std::string, std::optional<std::string>>;
    using Lock = std::unique_lock<std::mutex>;

    std::uint64_t ask();
    bool waitFor(Lock& lock, std::uint64_t save, std::chrono::milliseconds longest);

    // The keeper's thread.
    void work();
    void waitForWork(Lock& lock);
    void saveOnce(Lock& lock);

    JsonObjectFile file; // the thread's, once that runs
    std::chrono::milliseconds patience;
    mutable std::mutex mutex; // guards what follows
    std::condition_variable wake;
    std::condition_variable saved;
    QJsonObject stored; // as the file was when last seen
    Changes changes;    // what it does not hold yet; nothing = removed
    std::uint64_t asked = 0;
    std::uint64_t answered = 0;
    bool succeeded = false;                  // the latest answer
    std::chrono::milliseconds untilRetry{0}; // none after a save that succeeded
    bool overdue = false; // the disk holds the thread up; waiting for it again would be in vain
    bool stopping = false;

    std::thread thread;
};

} // namespace qt
