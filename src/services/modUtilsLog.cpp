#include "services/modUtilsLog.h"

#include "platform/ApplicationInfo.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"
#include "services/modMain.h"
#include "services/modUtilsFile.h"

#include <QFile>
#include <exception>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 rolloverSize = 1'000'001;

DatabaseLog& databaseLog()
{
    static DatabaseLog writer;
    return writer;
}

QString logSource(const QString& module, const QString& procedure)
{
    if (module.isEmpty())
        return procedure;
    return procedure.isEmpty() ? module : QString(module + u'.' + procedure);
}

/// Opened and closed for each entry, so that it is on disk at once and other programs can read along.
bool appendToLog(const QString& text)
{
    QFile file(gLogFile);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return false;
    const QByteArray bytes = text.toUtf8();
    return file.write(bytes) == bytes.size() && file.flush();
}

void writeToDatabase(const QString& module, const QString& procedure, const QString& logType, int number,
                     const QString& description)
{
    // A store that fails while it writes this entry reports that failure here again. The file has it by then, and the
    // database must not be asked a second time.
    static bool underWay = false;
    if (underWay || !databaseLog())
        return;
    underWay = true;
    try {
        databaseLog()(module, procedure, logType, number, description);
    } catch (const std::exception&) {
        // The entry is lost; a log failure is never shown.
    }
    underWay = false;
}

void showLogMessage(const QString& text)
{
    if (!gSuppressMessages)
        prompts().message(text, Prompts::Icon::Exclamation);
}

void putAside(const QString& fileName)
{
    const QString stamp = Clock::now().toString(u"yyMMdd_hhmm"_s);
    FileRename(fileName, fileName.chopped(qMin<qsizetype>(4, fileName.size())) + u'_' + stamp + u".log"_s);
}

} // namespace

void setDatabaseLog(DatabaseLog writer)
{
    databaseLog() = std::move(writer);
}

QString GetLogFile()
{
    return withDelimiter(programFolder()) + executableName() + u".log"_s;
}

void InitFileLog(const QString& FileName, bool Reset)
{
    gLogToFile = false;
    gLogFile = FileName;
    if (Reset)
        QFile::remove(FileName);
    else if (FileExists(FileName) && QFile(FileName).size() >= rolloverSize)
        putAside(FileName);
    gLogToFile = appendToLog(u"\r\n"_s + dateText(Clock::now()) + u'\t' + applicationTitle() + u"\r\n"_s);
}

void WriteEventLine(const QString& Module, const QString& Procedure, const QString& Text)
{
    if (gLogToFile)
        appendToLog(dateText(Clock::now()) + u" Event at ["_s + logSource(Module, Procedure) + u"]: "_s + Text +
                    u"\r\n"_s);
}

void WriteErrorLine(const QString& Source, int Number, const QString& Description)
{
    if (gLogToFile)
        appendToLog(dateText(Clock::now()) + u" Error on ["_s + Source + u"]\r\nError: ("_s + QString::number(Number) +
                    u") "_s + Description + u"\r\n"_s);
}

void LogEvent(const QString& Module, const QString& Procedure, const QString& Text, bool ShowMessage)
{
    WriteEventLine(Module, Procedure, Text);
    writeToDatabase(Module, Procedure, u"Event"_s, 0, Text);
    if (ShowMessage)
        showLogMessage(Text);
}

void LogError(const QString& Module, const QString& Procedure, int Number, const QString& Description, bool ShowMessage)
{
    WriteErrorLine(logSource(Module, Procedure), Number, Description);
    writeToDatabase(Module, Procedure, u"Error"_s, Number, Description);
    if (ShowMessage)
        ShowError(Module, Procedure, Number, Description);
}

void ShowError(const QString& Module, const QString& Procedure, int Number, const QString& Description)
{
    showLogMessage(u"Error Source:  "_s + logSource(Module, Procedure) + u"\r\nNumber:  "_s + QString::number(Number) +
                   u"\r\nDescription:  "_s + Description);
}

} // namespace lumivane
