// Which application a process or a window belongs to, as far as what is installed tells. Any thread
// may call.
#pragma once

#include "linux/proc/ProcessFacts.h"
#include "linux/workspace/WindowSystem.h"
#include "platform/Port.h"

#include <memory>
#include <set>
#include <string>

namespace workspace {

struct KnownApplication
{
    std::string identifier;  // desktop-file id without ".desktop"
    std::string name;        // in the user's language
    std::string iconName;    // theme name or absolute path, may be empty
    std::string bundlePath;  // where the ports for bundles and files show it
    std::string executable;  // absolute path, empty where the entry names none
    bool shown = true;       // the entry is meant to be shown, be it on another desktop
    bool background = false; // has nothing that a user would see: no entry, no item, no window
    bool chosen = false;     // for protection
    bool homemade = false;   // anybody at the desktop could have written its entry
};

/// Empty for none.
using KnownApplicationPtr = std::shared_ptr<const KnownApplication>;

class ApplicationIndex : public platform::Port
{
public:
    /// The application that the process is a part of by what it executes. Fast enough to be asked
    /// for every exec of a session.
    virtual KnownApplicationPtr ofProcess(const proc::ProcessFacts& facts) const = 0;

    /// The application that shows such windows.
    virtual KnownApplicationPtr ofWindow(const WindowFacts& facts) const = 0;

    /// The protected application whose program, or script, the process executes, be it a copy.
    /// Reads files.
    virtual KnownApplicationPtr ofCopy(const proc::ProcessFacts& facts) const = 0;

    /// The installed application; for a role's identifier the preferred one that plays it.
    virtual KnownApplicationPtr withIdentifier(const std::string& identifier) const = 0;

    /// The application with this desktop entry, named by its path or its file's name.
    virtual KnownApplicationPtr ofEntry(const std::string& entry) const = 0;

    /// True when the application `identifier` plays the role `role`.
    virtual bool plays(const std::string& identifier, const std::string& role) const = 0;

    /// The files that all applications execute.
    virtual std::set<std::string> executables() const = 0;

    /// False where `ofProcess` answers nothing for any process that executes the file. Fast enough
    /// to be asked for every exec of the machine.
    virtual bool mayBeApplication(const std::string& executable) const = 0;

    /// True when the two applications are executed from one file: a process of one may show the
    /// windows of the other.
    virtual bool shareProgram(const std::string& identifier, const std::string& other) const = 0;

    /// True when that one file is a program of theirs, not one that runs whatever it is told to: a
    /// start of one may find the other running and leave its work to it.
    virtual bool mayHandOver(const std::string& identifier, const std::string& other) const = 0;

    /// Such a process turned out to be the application: it is to be known by what it executes from
    /// now on, where that tells enough.
    virtual void learn(const proc::ProcessFacts& facts, const std::string& identifier) = 0;
};

} // namespace workspace
