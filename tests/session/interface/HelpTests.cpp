// The help window and the way to the people behind it.

#include "desktop/TemporaryFolder.h"
#include "session/interface/InterfaceTest.h"

namespace agent {

class Help : public InterfaceTest
{
protected:
    /// A mail program that the user prefers; it writes down what it is asked for.
    void addMailProgram()
    {
        const std::filesystem::path program = programOf("mail");
        desktop::writeFile(
            program, "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + asked().string() + "'\n"
        );
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        desktop::writeFile(
            desk().home() / ".local/share/applications/mail.desktop",
            "[Desktop Entry]\nType=Application\nName=Mail\nExec=" + program.string() +
                " %u\nMimeType=x-scheme-handler/mailto;\n"
        );
        desktop::writeFile(
            desk().home() / ".config/mimeapps.list",
            "[Default Applications]\nx-scheme-handler/mailto=mail.desktop\n"
        );
    }

    std::filesystem::path asked() { return desk().home() / "asked"; }
};

TEST_F(Help, ContactSupportWritesAMailWithTheUsersMailProgram)
{
    addMailProgram();
    startWithPassword();
    unlock();
    choose(screens::HELP_AND_SUPPORT);

    user->activate(person::button("Contact Support", screens::HELP));

    user->waitUntil("the mail program is asked", [this] {
        return std::filesystem::exists(asked()) &&
               desktop::readFile(asked()) ==
                   "mailto:support@quorvent.example?Subject=Tarvel%20Support\n";
    });
}

} // namespace agent
