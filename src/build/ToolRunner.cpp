#include "build/ToolRunner.h"

#include "core/Paths.h"
#include "core/Text.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include <csignal>
#include <unistd.h>

namespace mw {

namespace {

constexpr int kPollMs = 100;
constexpr int kGraceMs = 2000;

QStringList ToQt(const std::vector<std::string>& list)
{
    QStringList result;
    for (const std::string& item : list)
        result << QString::fromStdString(item);
    return result;
}

std::string CutLineEnd(QByteArray line)
{
    while (!line.isEmpty() && (line.back() == '\n' || line.back() == '\r'))
        line.chop(1);
    return line.toStdString();
}

void StopGroup(QProcess& process)
{
    const auto pid = static_cast<pid_t>(process.processId());
    if (pid <= 0)
        return;
    ::kill(-pid, SIGTERM);
    if (!process.waitForFinished(kGraceMs)) {
        ::kill(-pid, SIGKILL);
        process.waitForFinished(-1);
    }
}

// Working folder, empty input unless a file is given, and a process group of its own so that a
// cancel reaches everything the tool started.
void SetUp(QProcess& process, const std::filesystem::path& folder, const std::filesystem::path& input = {})
{
    process.setWorkingDirectory(QString::fromStdString(folder.string()));
    process.setStandardInputFile(input.empty() ? QProcess::nullDevice() : QString::fromStdString(input.string()));
    process.setChildProcessModifier([] { ::setsid(); });
}

} // namespace

ToolRunner::ToolRunner(std::string wine) : wine_(std::move(wine)) {}

std::string ToolRunner::WineProgram() const
{
    if (wine_.find('/') != std::string::npos)
        return ::access(wine_.c_str(), X_OK) == 0 ? wine_ : std::string();
    return QStandardPaths::findExecutable(QString::fromStdString(wine_)).toStdString();
}

bool ToolRunner::HaveWine() const
{
    return !WineProgram().empty();
}

std::vector<std::string> ToolRunner::WineArguments(const std::filesystem::path& program,
                                                   const std::vector<std::string>& arguments)
{
    std::vector<std::string> result;
    if (EndsWithNoCase(program.string(), ".bat"))
        result = {"cmd", "/c"};
    result.push_back(ToToolPath(program.string()));
    result.insert(result.end(), arguments.begin(), arguments.end());
    return result;
}

std::optional<ToolRun> ToolRunner::PrepareWine(QProcess& process, const std::filesystem::path& program,
                                               const std::vector<std::string>& arguments,
                                               const std::filesystem::path& folder) const
{
    if (cancelled_)
        return ToolRun{ToolRun::Outcome::Cancelled};
    const std::string wine = WineProgram();
    if (wine.empty())
        return ToolRun{ToolRun::Outcome::NoWine};
    process.setProgram(QString::fromStdString(wine));
    process.setArguments(ToQt(WineArguments(program, arguments)));
    // Wine's own diagnostics would bury the tool's output in the log; a user who sets them keeps them.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!environment.contains("WINEDEBUG"))
        environment.insert("WINEDEBUG", "-all");
    process.setProcessEnvironment(environment);
    // No one types at a "pause": it reads the end of the input and goes on.
    SetUp(process, folder);
    return std::nullopt;
}

ToolRun ToolRunner::Wait(QProcess& process, const LineSink& onLine) const
{
    process.start();
    if (!process.waitForStarted(-1))
        return {ToolRun::Outcome::NotStarted};

    const auto passLines = [&] {
        while (process.canReadLine())
            onLine(CutLineEnd(process.readLine()));
    };
    bool stopped = false;
    while (process.state() != QProcess::NotRunning) {
        if (cancelled_ && !stopped) {
            StopGroup(process);
            stopped = true;
        }
        process.waitForReadyRead(kPollMs);
        passLines();
    }
    passLines();
    if (const QByteArray rest = process.readAll(); !rest.isEmpty())
        onLine(CutLineEnd(rest));
    if (stopped)
        return {ToolRun::Outcome::Cancelled};
    return {ToolRun::Outcome::Finished, process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1};
}

ToolRun ToolRunner::Run(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                        const std::filesystem::path& folder, const LineSink& onLine)
{
    QProcess process;
    if (const std::optional<ToolRun> refused = PrepareWine(process, program, arguments, folder))
        return *refused;
    process.setProcessChannelMode(QProcess::MergedChannels);
    return Wait(process, onLine);
}

ToolRun ToolRunner::RunNative(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                              const std::filesystem::path& folder, const LineSink& onLine,
                              const ToolStreams& streams)
{
    if (cancelled_)
        return {ToolRun::Outcome::Cancelled};
    const QString executable = program.has_parent_path()
                                   ? QString::fromStdString(program.string())
                                   : QStandardPaths::findExecutable(QString::fromStdString(program.string()));
    if (executable.isEmpty())
        return {ToolRun::Outcome::NotStarted};
    QProcess process;
    process.setProgram(executable);
    process.setArguments(ToQt(arguments));
    SetUp(process, folder, streams.Input);
    if (streams.Output.empty()) {
        process.setProcessChannelMode(QProcess::MergedChannels);
    } else {
        process.setStandardOutputFile(QString::fromStdString(streams.Output.string()));
        process.setReadChannel(QProcess::StandardError);
    }
    return Wait(process, onLine);
}

ToolRun ToolRunner::Start(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                          const std::filesystem::path& folder)
{
    QProcess process;
    if (const std::optional<ToolRun> refused = PrepareWine(process, program, arguments, folder))
        return *refused;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    if (!process.startDetached())
        return {ToolRun::Outcome::NotStarted};
    return {ToolRun::Outcome::Finished, 0};
}

void ToolRunner::Cancel()
{
    cancelled_ = true;
}

} // namespace mw
