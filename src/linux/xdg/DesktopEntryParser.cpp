#include "linux/xdg/DesktopEntryParser.h"

#include "linux/xdg/KeyFile.h"
#include "platform/Text.h"

#include <algorithm>
#include <map>

namespace xdg {

namespace {

constexpr std::string_view GROUP = "Desktop Entry";
// No command line that can be executed is longer by much; whoever writes more means harm.
constexpr std::size_t LONGEST_EXEC = std::size_t{64} * 1024;

using Values = std::map<std::string_view, std::string_view>;

std::string_view valueOf(const Values& values, std::string_view key)
{
    const auto found = values.find(key);
    return found == values.end() ? std::string_view() : found->second;
}

/// Text for people: ill-formed bytes make it absent.
std::string textOf(const Values& values, std::string_view key)
{
    const std::string_view value = valueOf(values, key);
    return platform::text::isValidUtf8(value) ? unescaped(value) : std::string();
}

bool isSet(const Values& values, std::string_view key)
{
    return valueOf(values, key) == "true";
}

/// Keeps the best of a key's localized lines.
class LocalizedName
{
public:
    explicit LocalizedName(const std::vector<std::string>& locales)
        : locales(locales),
          rank(locales.size() + 1)
    {
    }

    void offer(const KeyLine& line)
    {
        const auto found = std::find(locales.begin(), locales.end(), line.locale);
        const auto offered = line.locale.empty()
                                 ? locales.size()
                                 : static_cast<std::size_t>(found - locales.begin());
        const bool known = line.locale.empty() || found != locales.end();
        if (known && offered < rank && platform::text::isValidUtf8(line.value)) {
            rank = offered;
            text = unescaped(line.value);
        }
    }

    std::string text;

private:
    const std::vector<std::string>& locales;
    std::size_t rank;
};

} // namespace

std::vector<std::string> localeNames(const std::string& locale)
{
    const std::size_t at = locale.find('@');
    const std::string modifier = at == std::string::npos ? "" : locale.substr(at);
    const std::string plain = locale.substr(0, std::min(locale.find('.'), at));
    const std::string language = plain.substr(0, plain.find('_'));
    std::vector<std::string> names{plain + modifier, plain, language + modifier, language};
    // The first of equal ones stays; "C" and "POSIX" are no languages.
    std::vector<std::string> result;
    for (std::string& name : names) {
        const bool known = std::find(result.begin(), result.end(), name) != result.end();
        if (!known && !language.empty() && language != "C" && language != "POSIX") {
            result.push_back(std::move(name));
        }
    }
    return result;
}

std::optional<DesktopEntry> DesktopEntryParser::parse(std::string_view text) const
{
    Values values;
    LocalizedName name(locales);
    std::string_view lastExec;
    visitKeys(text, [&](const KeyLine& line) {
        if (line.group != GROUP) {
            return values.empty(); // all that counts stands in one group
        }
        if (line.key == "Name") {
            name.offer(line);
        }
        if (line.key == "Exec") {
            lastExec = line.value;
        }
        if (line.locale.empty()) {
            values.emplace(line.key, line.value);
        }
        return true;
    });
    DesktopEntry entry{
        .name = name.text,
        .icon = textOf(values, "Icon"),
        .exec = unescaped(valueOf(values, "Exec")),
        .laterExec = lastExec == valueOf(values, "Exec") ? std::string() : unescaped(lastExec),
        .workingFolder = unescaped(valueOf(values, "Path")),
        .tryExec = unescaped(valueOf(values, "TryExec")),
        .startupWindowClass = textOf(values, "StartupWMClass"),
        .onlyShowIn = splitList(valueOf(values, "OnlyShowIn")),
        .notShowIn = splitList(valueOf(values, "NotShowIn")),
        .categories = splitList(valueOf(values, "Categories")),
        .hidden = isSet(values, "Hidden"),
        .noDisplay = isSet(values, "NoDisplay"),
        .terminal = isSet(values, "Terminal"),
    };
    const bool startable = !entry.exec.empty() || isSet(values, "DBusActivatable");
    const bool whole = valueOf(values, "Type") == "Application" && !entry.name.empty() &&
                       startable &&
                       std::max(entry.exec.size(), entry.laterExec.size()) <= LONGEST_EXEC;
    return whole || entry.hidden ? std::optional(std::move(entry)) : std::nullopt;
}

} // namespace xdg
