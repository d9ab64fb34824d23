#include "core/ProgramFolder.h"

#include <cstdlib>
#include <system_error>

#include <unistd.h>

namespace fs = std::filesystem;

namespace mw {

namespace {

std::optional<std::string> Variable(const char* name)
{
    const char* value = std::getenv(name);
    if (value == nullptr)
        return std::nullopt;
    return std::string(value);
}

bool IsSet(const std::optional<std::string>& value) { return value && !value->empty(); }

// A copy of the program with its files beside it, as the build tree and an unpacked archive are.
bool IsPortableCopy(const fs::path& folder, const ProgramEnvironment& env)
{
    std::error_code ec;
    return !folder.empty() && env.IsWritable(folder) &&
           fs::is_regular_file(folder / (std::string(kDefaultLangFileStem) + ".xml"), ec);
}

fs::path UserDataFolder(const ProgramEnvironment& env)
{
    // The XDG rules ignore a relative XDG_DATA_HOME.
    if (IsSet(env.XdgDataHome) && fs::path(*env.XdgDataHome).is_absolute())
        return fs::path(*env.XdgDataHome) / "Menuwright";
    if (IsSet(env.Home))
        return fs::path(*env.Home) / ".local" / "share" / "Menuwright";
    return {};
}

// Copies what the folder lacks and never overwrites, so files the user changed stay his, and
// resources shipped by a newer version still arrive.
void Seed(const fs::path& folder, const fs::path& shipped)
{
    std::error_code ec;
    for (fs::recursive_directory_iterator it(shipped, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path target = folder / fs::relative(it->path(), shipped, ec);
        if (ec)
            return;
        std::error_code ignored;
        if (it->is_directory(ignored))
            fs::create_directories(target, ignored);
        else if (it->is_regular_file(ignored) && !fs::exists(target, ignored))
            fs::copy_file(it->path(), target, ignored);
    }
}

} // namespace

bool FolderIsWritable(const fs::path& folder)
{
    return !folder.empty() && ::access(folder.c_str(), W_OK | X_OK) == 0;
}

ProgramEnvironment ProgramEnvironment::FromProcess()
{
    ProgramEnvironment env;
    env.MenuwrightHome = Variable("MENUWRIGHT_HOME");
    env.XdgDataHome = Variable("XDG_DATA_HOME");
    env.Home = Variable("HOME");
    return env;
}

fs::path ResolveProgramFolder(const fs::path& executablePath, const ProgramEnvironment& env,
                              const fs::path& shippedResources)
{
    if (IsSet(env.MenuwrightHome))
        return fs::path(*env.MenuwrightHome);

    const fs::path executableFolder = executablePath.parent_path();
    if (IsPortableCopy(executableFolder, env))
        return executableFolder;

    const fs::path dataFolder = UserDataFolder(env);
    if (dataFolder.empty())
        return executableFolder; // no home at all: nothing better than a read-only folder
    std::error_code ec;
    fs::create_directories(dataFolder, ec);
    if (!shippedResources.empty())
        Seed(dataFolder, shippedResources);
    return dataFolder;
}

fs::path ExecutablePath()
{
    std::error_code ec;
    fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    return ec ? fs::path() : exe;
}

} // namespace mw
