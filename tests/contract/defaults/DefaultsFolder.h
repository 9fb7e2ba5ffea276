// A folder of its own for one test, with the defaults file in it.
#pragma once

#include "fakes/FakeLog.h"
#include "linux/qt/JsonFileUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>

class DefaultsFolder
{
public:
    using Seconds = std::chrono::seconds;

    [[nodiscard]] QString folder() const { return root.filePath("com.quorvent.Tarvel"); }

    [[nodiscard]] QString file() const { return folder() + "/defaults.json"; }

    /// With all the time that a busy machine may need.
    qt::JsonFileUserDefaults open() { return {file().toStdString(), {}, log, Seconds(60)}; }

    /// As the program opens it.
    qt::JsonFileUserDefaults openImpatiently() { return {file().toStdString(), {}, log}; }

    void put(const QByteArray& bytes) const
    {
        QDir().mkpath(folder());
        QFile out(file());
        out.open(QIODevice::WriteOnly);
        out.write(bytes);
    }

    [[nodiscard]] QByteArray bytes() const { return bytesOf("defaults.json"); }

    [[nodiscard]] QByteArray bytesOf(const QString& name) const
    {
        QFile in(folder() + '/' + name);
        in.open(QIODevice::ReadOnly);
        return in.readAll();
    }

    [[nodiscard]] QStringList entries() const
    {
        return QDir(folder()).entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot
        );
    }

    fakes::FakeLog log;

private:
    QTemporaryDir root;
};
