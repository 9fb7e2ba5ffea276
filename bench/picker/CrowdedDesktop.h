// A platform with as many installed applications as wanted: real desktop entries in a folder of
// their own, read by the real catalogue, with real icons. A third of them are icons of the theme, a
// third pictures of their own, and a third names that no theme knows; some have a picture as large
// as an icon may be.
#pragma once

#include "fakes/FakePlatform.h"
#include "linux/qt/QtDispatchQueues.h"
#include "linux/qt/QtIconLoader.h"
#include "linux/xdg/ApplicationCatalogue.h"
#include "linux/xdg/XdgBundles.h"
#include "linux/xdg/XdgFileManager.h"
#include "platform/Platform.h"

#include <QTemporaryDir>

#include <memory>
#include <string>

namespace picker {

class CrowdedDesktop
{
public:
    /// Installs the platform until its end. Needs an application object.
    explicit CrowdedDesktop(int applications);
    CrowdedDesktop(const CrowdedDesktop&) = delete;
    CrowdedDesktop& operator=(const CrowdedDesktop&) = delete;
    CrowdedDesktop(CrowdedDesktop&&) = delete;
    CrowdedDesktop& operator=(CrowdedDesktop&&) = delete;
    ~CrowdedDesktop();

private:
    void write(int applications) const;
    void writeLargePicture() const;
    [[nodiscard]] QString largePicture() const;
    [[nodiscard]] std::string iconName(int number) const;
    [[nodiscard]] xdg::XdgEnvironment environment() const;
    platform::IconHandle iconForFile(const std::string& path);

    QTemporaryDir home;
    qt::QtIconLoader icons{queues};
    fakes::FakePlatform fake;
    std::unique_ptr<xdg::ApplicationCatalogue> catalogue;
    std::unique_ptr<xdg::XdgBundles> bundles;
    std::unique_ptr<xdg::XdgFileManager> fileManager;
    std::unique_ptr<platform::Platform> platform;
    qt::QtDispatchQueues queues; // its end waits for what uses the rest
};

} // namespace picker
