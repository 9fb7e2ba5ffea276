// Ordinary work in a terminal raises no lock, whatever is protected but the terminals themselves.
#include "agent/AgentSession.h"
#include "agent/Cover.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"

#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds LONGEST_WORK = 100s;

/// What people type into shells, many times over, and a program that is compiled from parts.
constexpr auto WORK = R"(
set -e
cd "$HOME"
mkdir work && cd work
for round in 1 2 3 4 5 6 7 8; do
    for part in a b c; do
        printf '#include <map>\n#include <string>\n#include <vector>\n' >$part$round.cpp
        printf 'std::map<std::string, std::vector<int>> %s%s;\n' $part $round >>$part$round.cpp
    done
    ls -la / >list; find /etc -maxdepth 2 2>/dev/null | sort | uniq -c | head -50 >>list
    grep -r include . | awk '{print $2}' | sed 's/</(/' | tr a-z A-Z >>list
    tar cf all.tar list && gzip -f all.tar && gunzip -f all.tar.gz && rm all.tar
    python3 -c 'print(sum(range(1000)))' >>list
    printf 'import sys\nprint(sys.argv)\n' >script.py && python3 script.py meld mousepad xterm >>list
    printf '#!/usr/bin/env python3\nprint(1)\n' >tool && chmod +x tool && ./tool >>list
    printf '#!/bin/sh\necho "$@"\n' >run && chmod +x run && ./run /usr/bin/meld >>list && sh run >>list
    perl -e 'print "x" x 10' >>list
    env A=b nice -n 1 bash -c 'for n in 1 2 3; do echo $n; done' >>list
    nohup true >>list 2>&1; setsid true; xargs -n1 echo <list >/dev/null
    cp /bin/true mousepad && ./mousepad
    cp script.py meld && python3 meld >>list
    gio info list >/dev/null; vim --version >/dev/null 2>&1 || true
    ps ax >/dev/null; date >>list; diff list list
done
git init -q . && git add -A && git -c user.name=x -c user.email=x@y commit -qm first && git log >/dev/null
printf 'all: $(patsubst %%.cpp,%%.o,$(wildcard *.cpp))\n%%.o: %%.cpp\n\tg++ -O1 -c $< -o $@\n' >Makefile
make -j2 >list 2>&1
touch "$HOME/done"
)";

/// Identifiers of everything that is installed but terminals.
std::vector<std::string> everythingButTerminals()
{
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator("/usr/share/applications")) {
        const bool terminal =
            desktop::readFile(entry.path()).find("TerminalEmulator") != std::string::npos;
        if (entry.path().extension() == ".desktop" && !terminal) {
            result.push_back(entry.path().stem().string());
        }
    }
    return result;
}

} // namespace

TEST(QuietWork, RaisesNoLock)
{
    agent::AgentSession session;
    const std::vector<std::string> everything = everythingButTerminals();
    ASSERT_GT(everything.size(), 20U);
    session.protect(everything);
    ASSERT_TRUE(session.startAndWait());
    ASSERT_TRUE(session.waitForLine("Did start: OlvoHelper"));
    const auto script = session.desk.home() / "work.sh";
    desktop::writeFile(script, WORK);

    desktop::ChildProcess xterm = session.desk.start({"xterm", "-e", "sh", script.string()});
    const bool ended = xterm.waitForEnd(LONGEST_WORK).has_value();

    EXPECT_TRUE(ended && std::filesystem::exists(session.desk.home() / "done"))
        << "the work was not done";
    EXPECT_TRUE(session.waitForLine("Terminated: XTerm"));
    EXPECT_TRUE(agent::isUncovered(session.desk));
    // An agent of a test beside this one, gone before it could be told whose it was, locks nothing.
    const std::set<std::string> harmless{
        "Will start: XTerm", "Will start: OlvoHelper", "Will start: Tarvel"};
    for (const std::string& line : session.lines()) {
        EXPECT_TRUE(!line.starts_with("Will start: ") || harmless.contains(line)) << line;
    }
}
