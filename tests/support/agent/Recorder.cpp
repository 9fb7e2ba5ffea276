#include "agent/Recorder.h"

#include "agent/AgentSession.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"

namespace agent {

Recorder::Recorder(desktop::Desktop& desk, const std::string& name)
    : file(desk.home() / (name + ".keys")),
      xterm(desk.start(
          {"xterm",
           "-bg",
           "#FFF8E7",
           "-e",
           "sh",
           "-c",
           "stty raw -echo; exec tee '" + file.string() + "'"}
      ))
{
}

bool Recorder::waitUntilItListens()
{
    return desktop::waitUntil([this] { return std::filesystem::exists(file); }, PATIENCE);
}

std::string Recorder::received() const
{
    return desktop::readFile(file);
}

bool Recorder::waitFor(const std::string& text) const
{
    return desktop::waitUntil([&] { return received().size() >= text.size(); }, PATIENCE) &&
           received() == text;
}

} // namespace agent
