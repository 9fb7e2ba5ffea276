// The file of what the chosen applications are known by: what was read is written as it was.
#include "fuzz/Fuzz.h"
#include "linux/xdg/ChosenApplication.h"

void fuzz(std::string_view bytes)
{
    const xdg::ChosenApplications all = xdg::parseChosenApplications(bytes);
    const std::string text = xdg::textOf(all);
    require(xdg::textOf(xdg::parseChosenApplications(text)) == text);
}
