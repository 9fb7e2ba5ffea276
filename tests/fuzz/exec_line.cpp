// Command lines: what was quoted is read back as it was, and no command is taken apart for ever.
#include "fuzz/Fuzz.h"
#include "linux/proc/ProcRecords.h"
#include "linux/xdg/ExecLine.h"
#include "linux/xdg/IdentityTable.h"
#include "linux/xdg/Interpreters.h"
#include "linux/xdg/KeyFile.h"

namespace {

/// What executes them are processes of others, with any command line.
void identify(const std::vector<std::string>& arguments)
{
    xdg::IdentityTable table;
    table.add(0, {}, {xdg::ExecutionKey::Kind::Executable, "/bin/a", {"--x"}, false, ""});
    table.add(1, {}, {xdg::ExecutionKey::Kind::Script, "/bin/b", {}, false, ""});
    table.add(2, {}, {xdg::ExecutionKey::Kind::Executable, "/bin/c", {"run", "x"}, true, "c"});
    table.setSearchFolders({"/bin"});
    const xdg::IdentityTable::Lookup lookup{
        .realPath = [](const std::string& path) { return path; },
        .claims = [](pid_t) { return std::vector<std::size_t>(); }};
    for (const char* executable :
         {"",
          "/bin/a",
          "/bin/c",
          "/bin/bash",
          "/bin/busybox",
          "/bin/python3",
          "/bin/java",
          "/lib/ld-linux-x86-64.so.2"}) {
        proc::ProcessFacts facts;
        facts.executable = executable;
        facts.arguments = arguments;
        facts.workingDirectory = "/bin";
        const auto found = table.find(facts, lookup);
        require(!found || *found < 3);
        require(!found || table.mayFind(executable));
        require(facts.executable != "/bin/a" || found == 0U);
        static_cast<void>(xdg::scriptArgument(executable, arguments));
    }
}

} // namespace

void fuzz(std::string_view bytes)
{
    const xdg::ExecCommand command = xdg::commandOf(bytes);
    require(!command.program.empty() || command.fixedArguments.empty());
    static_cast<void>(xdg::scriptArgument(command.program, command.fixedArguments));
    identify(proc::splitAtNul(bytes));
    if (bytes.find('\0') == std::string_view::npos) {
        const std::string line = "x " + xdg::quotedForExec(std::string(bytes));
        const xdg::ExecCommand back = xdg::commandOf(xdg::unescaped(line));
        require(back.fixedArguments.size() == 1 && back.fixedArguments.front() == bytes);
    }
}
