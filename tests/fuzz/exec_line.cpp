// Command lines: what was quoted is read back as it was, and no command is taken apart for ever.
#include "fuzz/Fuzz.h"
#include "linux/xdg/ExecLine.h"
#include "linux/xdg/Interpreters.h"
#include "linux/xdg/KeyFile.h"

void fuzz(std::string_view bytes)
{
    const xdg::ExecCommand command = xdg::commandOf(bytes);
    require(!command.program.empty() || command.fixedArguments.empty() || !bytes.empty());
    static_cast<void>(xdg::scriptArgument(command.program, command.fixedArguments));
    if (bytes.find('\0') == std::string_view::npos) {
        const std::string line = "x " + xdg::quotedForExec(std::string(bytes));
        const xdg::ExecCommand back = xdg::commandOf(xdg::unescaped(line));
        require(back.fixedArguments.size() == 1 && back.fixedArguments.front() == bytes);
    }
}
