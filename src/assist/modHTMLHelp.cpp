#include "assist/modHTMLHelp.h"

#include "platform/ApplicationInfo.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsINI.h"
#include "services/modUtilsLog.h"

#include <QUrl>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// The page that opens for a topic without one of its own.
constexpr qint32 fallbackContext = 10;

const QString helpModule = u"modHTMLHelp"_s;
const QString showHelpProcedure = u"ShowHelp"_s;

QString helpFileInUse;
DocumentViewer documentViewer;

QString besideProgram(const QString& suffix)
{
    return withDelimiter(programFolder()) + executableName() + suffix;
}

void showHelpPage(qint32 context)
{
    if (!documentViewer.showHelpPage)
        throw RuntimeError(RuntimeError::ObjectNotSet);
    documentViewer.showHelpPage(helpFileInUse, context);
}

} // namespace

void SetHelpFile()
{
    helpFileInUse = besideProgram(u".CHM"_s);
    if (FileExists(helpFileInUse))
        return;
    LogEvent(helpModule, u"SetHelpFile"_s, helpFileInUse + u" not found. Will not be able to load help file."_s, false);
    helpFileInUse.clear();
}

QString helpFile()
{
    return helpFileInUse;
}

QString GetHelpIniFile()
{
    return besideProgram(u"Help.INI"_s);
}

qint32 GetHelpContext(const QString& topic)
{
    return topic.trimmed().isEmpty() ? 0 : GetIniInt(GetHelpIniFile(), u"Help"_s, topic, 0);
}

void ShowHelp(const QString& topic)
{
    if (helpFileInUse.isEmpty()) {
        prompts().message(u"Unable to load help file. "_s + helpFileInUse + u" not found."_s,
                          Prompts::Icon::Information);
        return;
    }
    try {
        const qint32 context = GetHelpContext(topic);
        showHelpPage(context < 1 ? fallbackContext : context);
        if (context < 1 && !topic.trimmed().isEmpty())
            LogEvent(helpModule, showHelpProcedure,
                     u"Topic ["_s + topic + u"] not found in help INI file "_s + helpFileInUse + u"."_s, false);
    } catch (const RuntimeError& error) {
        LogError(helpModule, showHelpProcedure, error.number(),
                 u"Error loading "_s + helpFileInUse + u". \r\n"_s + error.description(), true);
    }
}

QString learningGuideFile()
{
    return besideProgram(u"_Learning_Guide.pdf"_s);
}

QString webSite()
{
    const QString address = GetIniString(GetIniFile(), u"Settings"_s, u"Web Site"_s, QString()).trimmed();
    const QUrl url(address, QUrl::StrictMode);
    const bool isWebAddress = !url.host().isEmpty() && (url.scheme() == u"https" || url.scheme() == u"http");
    return isWebAddress ? address : QString();
}

void setDocumentViewer(DocumentViewer viewer)
{
    documentViewer = std::move(viewer);
}

void openDocument(const QUrl& document)
{
    if (!documentViewer.open)
        throw RuntimeError(RuntimeError::ObjectNotSet);
    documentViewer.open(document);
}

} // namespace lumivane
