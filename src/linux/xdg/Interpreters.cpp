#include "linux/xdg/Interpreters.h"

#include "linux/files/Names.h"
#include "linux/proc/Shells.h"
#include "linux/xdg/Words.h"

#include <array>
#include <string_view>

namespace xdg {

namespace {

// Many programs in one file, shells among them.
constexpr std::string_view BOX = "busybox";

/// Without a version, and what stands behind that: "python3.11" and "python3-dbg" are "python".
std::string_view withoutVersion(std::string_view name)
{
    const std::size_t version = std::min(name.find_first_of("0123456789"), name.size());
    const std::size_t behind = name.find_first_not_of("0123456789.", version);
    if (behind != std::string_view::npos && name[behind] == '-') {
        name = name.substr(0, version);
    }
    const std::size_t end = name.find_last_not_of("0123456789.-");
    return end == std::string_view::npos ? name : name.substr(0, end + 1);
}

/// Options of one letter each may stand together: "-eu".
std::string_view lettersOf(std::string_view option)
{
    return option.starts_with("--") ? std::string_view() : option.substr(1);
}

/// Options whose value is the next argument.
bool takesValue(std::string_view interpreter, std::string_view option)
{
    constexpr std::array<std::string_view, 7> LOADER{
        "--library-path",
        "--inhibit-rpath",
        "--preload",
        "--argv0",
        "--audit",
        "--glibc-hwcaps-prepend",
        "--glibc-hwcaps-mask"};
    constexpr std::array<std::string_view, 15> JAVA{
        "-cp",
        "-classpath",
        "--class-path",
        "-p",
        "--module-path",
        "--upgrade-module-path",
        "--add-modules",
        "--add-opens",
        "--add-exports",
        "--add-reads",
        "--patch-module",
        "--limit-modules",
        "--enable-native-access",
        "--source",
        "-d"};
    constexpr std::array<std::string_view, 2> SHELL{"--rcfile", "--init-file"};
    constexpr std::array<std::string_view, 4> NODE{"-r", "--require", "--import", "--loader"};
    constexpr std::array<std::string_view, 2> GJS{"-I", "--include-path"};
    constexpr std::array<std::string_view, 2> PERL{"-I", "-M"};
    if (interpreter.starts_with("ld")) {
        return isOneOf(option, LOADER);
    }
    if (interpreter == "java") {
        return isOneOf(option, JAVA);
    }
    if (interpreter.starts_with("python")) {
        const std::size_t value = option.find_first_of("WX");
        return option == "--check-hash-based-pycs" ||
               (!lettersOf(option).empty() && value + 1 == option.size());
    }
    if (interpreter.ends_with("sh")) {
        const std::string_view letters = lettersOf(option);
        return isOneOf(option, SHELL) || letters.ends_with('o') || letters.ends_with('O');
    }
    return isOneOf(option, NODE) || isOneOf(option, GJS) || isOneOf(option, PERL);
}

bool isOption(std::string_view interpreter, const std::string& argument)
{
    const bool takenBack = interpreter.ends_with("sh") && argument.starts_with('+');
    return argument.starts_with('-') || takenBack;
}

/// Options after which there is no file to run: the text or the module is the argument itself.
bool endsFiles(std::string_view interpreter, std::string_view option)
{
    if (option == "-") {
        return true;
    }
    constexpr std::array<std::string_view, 4> TEXT{"-c", "-e", "-E", "--eval"};
    if (interpreter.starts_with("python")) {
        const std::string_view letters = lettersOf(option);
        const std::string_view flags = letters.substr(0, letters.find_first_of("WX"));
        return flags.ends_with('c') || flags.ends_with('m');
    }
    if (interpreter == "java") {
        return option == "-m" || option == "--module";
    }
    if (interpreter.ends_with("sh")) {
        return option.front() == '-' && lettersOf(option).ends_with('c');
    }
    return isOneOf(option, TEXT);
}

/// What follows the options of the interpreter.
std::optional<std::string>
fileAfterOptions(std::string_view interpreter, const std::vector<std::string>& arguments)
{
    std::size_t index = 1;
    while (index < arguments.size() && isOption(interpreter, arguments[index])) {
        const std::string& option = arguments[index];
        if (endsFiles(interpreter, option)) {
            return std::nullopt;
        }
        const bool fileFollows = option == "--" || (interpreter == "java" && option == "-jar");
        index += takesValue(interpreter, option) ? 2U : 1U;
        if (fileFollows) {
            break;
        }
    }
    return index < arguments.size() ? std::optional(arguments[index]) : std::nullopt;
}

} // namespace

bool isInterpreter(const std::string& executable)
{
    constexpr std::array<std::string_view, 27> NAMES{
        "sh",     "bash", "dash",  "zsh",  "ksh",    "mksh", "fish",        "busybox",   "python",
        "pypy",   "perl", "ruby",  "node", "nodejs", "gjs",  "gjs-console", "seed",      "lua",
        "luajit", "java", "tclsh", "wish", "guile",  "php",  "mono",        "mono-sgen", "Rscript"};
    return isOneOf(withoutVersion(files::baseName(executable)), NAMES);
}

bool searchesScripts(const std::string& executable)
{
    return proc::isShell(withoutVersion(files::baseName(executable)));
}

bool isLauncher(const std::string& executable)
{
    constexpr std::array<std::string_view, 24> NAMES{
        "flatpak",
        "snap",
        "bwrap",
        "wine",
        "wine-stable",
        "wine-staging",
        "wine-development",
        "wine64",
        "wine-preloader",
        "wine64-preloader",
        "electron",
        "gapplication",
        "gtk-launch",
        "gio",
        "xdg-open",
        "exo-open",
        "kde-open",
        "kioclient",
        "kcmshell",
        "dbus-send",
        "gdbus",
        "dotnet",
        "systemd-run",
        "env"};
    const std::string_view name = files::baseName(executable);
    return isOneOf(name, NAMES) || isOneOf(withoutVersion(name), NAMES);
}

bool isLoader(const std::string& executable)
{
    const std::string_view name = files::baseName(executable);
    return (name.starts_with("ld-linux") || name.starts_with("ld-musl") || name.starts_with("ld-2")
           ) &&
           name.find(".so") != std::string_view::npos;
}

std::optional<std::string>
scriptArgument(const std::string& executable, const std::vector<std::string>& arguments)
{
    if (isLoader(executable)) {
        return fileAfterOptions("ld", arguments);
    }
    const std::string_view interpreter = withoutVersion(files::baseName(executable));
    const bool boxed =
        interpreter == BOX && arguments.size() > 1 && files::baseName(arguments.front()) == BOX;
    if (!boxed) {
        return fileAfterOptions(interpreter, arguments);
    }
    const std::vector<std::string> inside(arguments.begin() + 1, arguments.end());
    return proc::isShell(inside.front()) ? fileAfterOptions(inside.front(), inside) : std::nullopt;
}

} // namespace xdg
