// A file that holds one JSON object, for this user alone: 0600 in a folder of 0700. Every write
// replaces it as a whole or leaves it as it was. What cannot be read is moved aside and never
// written over. Each new trouble is one diagnostic line. One thread at a time.
#pragma once

#include "platform/Log.h"

#include <QJsonObject>
#include <QString>

namespace qt {

class JsonObjectFile
{
public:
    enum class State
    {
        Loaded,
        Absent,  // also a damaged file that was moved aside just now
        Blocked, // what is there can neither be read nor moved
    };

    struct Content
    {
        State state = State::Absent;
        QJsonObject object; // empty unless loaded
    };

    JsonObjectFile(QString path, platform::Log& log);

    Content read();

    /// True once the object has reached the disk.
    bool write(const QJsonObject& object);

private:
    bool moveAside(const QString& reason);
    bool makeFolder();
    bool replaceFile(const QByteArray& bytes);
    bool fail(const QString& what);
    void report(const QString& message);

    QString path;
    platform::Log* log;
    QString lastReport;
};

} // namespace qt
