// What a desktop entry says, as far as identity and listing need it.
#pragma once

#include <string>
#include <vector>

namespace xdg {

struct DesktopEntry
{
    std::string id;        // file name relative to its folder, '-' for '/', without ".desktop"
    std::string path;      // of the file
    std::string name;      // in the user's language
    std::string icon;      // theme name or absolute path
    std::string exec;      // as it stands, escapes resolved; may be empty where the bus starts it
    std::string laterExec; // of the last of several such lines, which some launchers take
    std::string workingFolder; // in which it is to be executed; may be empty
    std::string tryExec;
    std::string startupWindowClass;
    std::vector<std::string> onlyShowIn;
    std::vector<std::string> notShowIn;
    std::vector<std::string> categories;
    bool hidden = false; // as good as deleted
    bool noDisplay = false;
    bool terminal = false;
    bool homemade = false; // stands in the user's own folder
};

} // namespace xdg
