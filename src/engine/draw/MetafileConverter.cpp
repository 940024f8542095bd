#include "engine/draw/MetafileConverter.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <sys/resource.h>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr int deadline = 5000; // milliseconds
constexpr rlim_t maxSeconds = 5, maxFile = 32 << 20, maxMemory = 1u << 30;

/// Runs in the child between fork and exec.
void limitResources()
{
    const auto limit = [](auto resource, rlim_t most) {
        const rlimit bounds{most, most};
        setrlimit(resource, &bounds);
    };
    limit(RLIMIT_CPU, maxSeconds);
    limit(RLIMIT_FSIZE, maxFile);
    limit(RLIMIT_AS, maxMemory);
    limit(RLIMIT_CORE, 0);
}

/// Whether the program ended by itself and in time.
bool run(const QString& program, const QStringList& arguments, const QString& folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier(limitResources);
    process.start(program, arguments);
    if (!process.waitForStarted(deadline))
        return false;
    if (process.waitForFinished(deadline))
        return process.exitStatus() == QProcess::NormalExit;
    process.kill();
    process.waitForFinished(deadline);
    return false;
}

} // namespace

ConvertedMetafile convertMetafile(PictureFormat format, const QByteArray& bytes)
{
    const bool isEmf = format == PictureFormat::Emf;
    const QString name = isEmf ? u"emf2svg-conv"_s : u"wmf2svg"_s;
    const QString program = QStandardPaths::findExecutable(name);
    if (program.isEmpty())
        return {{}, u"the program \"%1\" is not installed"_s.arg(name)};
    const QTemporaryDir folder;
    const QString from = folder.filePath(u"in"_s), to = folder.filePath(u"out"_s);
    QFile input(from);
    if (!folder.isValid() || !input.open(QIODevice::WriteOnly) || input.write(bytes) != bytes.size())
        return {{}, u"a temporary file cannot be written"_s};
    input.close();
    const QStringList arguments =
        isEmf ? QStringList{u"-p"_s, u"-i"_s, from, u"-o"_s, to} : QStringList{u"--inline"_s, u"-o"_s, to, from};
    QFile output(to);
    if (!run(program, arguments, folder.path()) || !output.open(QIODevice::ReadOnly) || output.size() > qint64(maxFile))
        return {{}, u"the program \"%1\" cannot read it"_s.arg(name)};
    ConvertedMetafile converted{output.readAll(), {}};
    if (!isSelfContained(converted.svg))
        converted = {{}, u"what the program \"%1\" made of it is damaged"_s.arg(name)};
    return converted;
}

} // namespace lumivane::engine
