// Programs that by themselves are nobody's: they run what their arguments name. Pure functions.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace xdg {

/// True for an executable that runs scripts or classes.
bool isInterpreter(const std::string& executable);

/// True for one that looks for a script where programs are, too.
bool searchesScripts(const std::string& executable);

/// True for an executable that starts an application which its other arguments name.
bool isLauncher(const std::string& executable);

/// True for the dynamic loader, which executes the file that its arguments name.
bool isLoader(const std::string& executable);

/// The file that such a program was told to run, as it was named; `arguments` begins with the
/// program's own name. Nothing when it runs something else: text, a module, standard input.
std::optional<std::string>
scriptArgument(const std::string& executable, const std::vector<std::string>& arguments);

} // namespace xdg
