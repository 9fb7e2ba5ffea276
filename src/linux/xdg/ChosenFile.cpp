#include "linux/xdg/ChosenFile.h"

#include "linux/descriptors/ErrorText.h"
#include "linux/files/AtomicFile.h"
#include "linux/files/PrivateFolders.h"
#include "linux/xdg/FileText.h"

#include <filesystem>
#include <span>
#include <utility>

namespace xdg {

ChosenFile::ChosenFile(std::string path, platform::Report report)
    : path(std::move(path)),
      report(std::move(report))
{
}

ChosenApplications ChosenFile::read()
{
    written = readText(path).value_or("");
    return parseChosenApplications(written);
}

void ChosenFile::write(const ChosenApplications& applications)
{
    std::string text = textOf(applications);
    const bool nothingYet = applications.empty() && written.empty();
    if (text == written || nothingYet) {
        return;
    }
    constexpr unsigned READABLE_BY_OWNER = 0600;
    if (files::makePrivateFolders(std::filesystem::path(path).parent_path()) &&
        files::replaceFile(path, std::as_bytes(std::span(text)), READABLE_BY_OWNER)) {
        written = std::move(text);
        return;
    }
    report(
        "What the protected applications are recognised by cannot be kept in " + path + " (" +
        descriptors::errorText() + "); it counts until this program ends"
    );
}

} // namespace xdg
