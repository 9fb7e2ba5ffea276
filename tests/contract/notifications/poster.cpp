// The other process: posts one notice and ends at once, as the agent does when it quits.
#include "linux/dbus/DBusDistributedNotifications.h"

#include <QCoreApplication>

#include <cstdlib>
#include <iostream>

namespace {

class ErrorLog final : public platform::Log
{
public:
    void line(std::string_view text) override { std::cout << text << std::endl; }

    void diagnostic(std::string_view text) override { std::cerr << text << std::endl; }
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        return 2;
    }
    const QCoreApplication application(argc, argv);
    ErrorLog log;
    dbus::DBusDistributedNotifications notifications(dbus::sessionBusAddress(), log);
    notifications.post(argv[1], argv[2]);
    std::_Exit(0);
}
