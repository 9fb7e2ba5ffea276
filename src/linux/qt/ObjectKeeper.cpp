#include "linux/qt/ObjectKeeper.h"

#include <algorithm>
#include <utility>

namespace qt {

namespace {

constexpr std::chrono::milliseconds FIRST_RETRY(1000);
constexpr std::chrono::milliseconds LONGEST_RETRY(8000);

void apply(const std::map<std::string, std::optional<std::string>>& changes, QJsonObject& object)
{
    for (const auto& [key, text] : changes) {
        const QString name = QString::fromStdString(key);
        if (text.has_value()) {
            object.insert(name, QString::fromStdString(*text));
        } else {
            object.remove(name);
        }
    }
}

} // namespace

ObjectKeeper::ObjectKeeper(JsonObjectFile objectFile, std::chrono::milliseconds patience)
    : file(std::move(objectFile)),
      patience(patience),
      stored(file.read().object),
      thread([this] { work(); })
{
}

ObjectKeeper::~ObjectKeeper()
{
    {
        const std::lock_guard lock(mutex);
        stopping = true;
    }
    wake.notify_one();
    thread.join();
}

QJsonValue ObjectKeeper::value(const std::string& key) const
{
    const std::lock_guard lock(mutex);
    const auto change = changes.find(key);
    if (change == changes.end()) {
        return stored.value(QString::fromStdString(key));
    }
    return change->second.has_value() ? QJsonValue(QString::fromStdString(*change->second))
                                      : QJsonValue(QJsonValue::Undefined);
}

void ObjectKeeper::change(const std::string& key, std::optional<std::string> text)
{
    const std::lock_guard lock(mutex);
    changes[key] = std::move(text);
}

bool ObjectKeeper::save()
{
    Lock lock(mutex);
    const std::uint64_t save = ask();
    return !overdue && waitFor(lock, save, patience);
}

bool ObjectKeeper::finish(std::chrono::milliseconds longest)
{
    Lock lock(mutex);
    if (changes.empty() && asked == answered) {
        return true;
    }
    return waitFor(lock, ask(), longest);
}

std::uint64_t ObjectKeeper::ask()
{
    ++asked;
    wake.notify_one();
    return asked;
}

bool ObjectKeeper::waitFor(Lock& lock, std::uint64_t save, std::chrono::milliseconds longest)
{
    overdue = !saved.wait_for(lock, longest, [this, save] { return answered >= save; });
    return !overdue && succeeded;
}

void ObjectKeeper::work()
{
    Lock lock(mutex);
    for (;;) {
        waitForWork(lock);
        if (stopping && asked == answered) {
            return;
        }
        saveOnce(lock);
    }
}

/// A change that the file did not take would be lost with the process: nobody may ask for another.
void ObjectKeeper::waitForWork(Lock& lock)
{
    const auto isWanted = [this] { return stopping || asked != answered; };
    if (untilRetry.count() == 0 || changes.empty()) {
        wake.wait(lock, isWanted);
    } else {
        wake.wait_for(lock, untilRetry, isWanted);
    }
}

void ObjectKeeper::saveOnce(Lock& lock)
{
    const std::uint64_t save = asked;
    const Changes taken = changes;
    QJsonObject wanted = stored;
    lock.unlock();
    const JsonObjectFile::Content current = file.read();
    // a file that vanished or was damaged while the agent ran is made anew from what it held
    if (current.state == JsonObjectFile::State::Loaded) {
        wanted = current.object;
    }
    apply(taken, wanted);
    const bool done = current.state != JsonObjectFile::State::Blocked &&
                      (wanted == current.object || file.write(wanted));
    lock.lock();
    if (done) {
        stored = wanted;
        std::erase_if(changes, [&taken](const auto& change) {
            const auto written = taken.find(change.first);
            return written != taken.end() && written->second == change.second;
        });
    }
    untilRetry = done ? std::chrono::milliseconds(0)
                      : std::clamp(untilRetry * 2, FIRST_RETRY, LONGEST_RETRY);
    succeeded = done;
    answered = save;
    overdue = false;
    saved.notify_all();
}

} // namespace qt
