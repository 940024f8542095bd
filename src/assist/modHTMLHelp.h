#pragma once

#include <QString>
#include <functional>

class QUrl;

namespace lumivane {

// Context help. The help file and its table of topics lie beside the program; a topic is named after the form that asks
// for it, "Main" is the help's first page. The other document beside the program is the learning guide.

/// Looks for the help file, once at start-up. One that is missing costs a line in the log.
void SetHelpFile();
/// The help file in use; empty when there is none.
QString helpFile();
/// The table of topics: section "Help", topic names as keys, context ids as values.
QString GetHelpIniFile();
/// The topic's page in the help file, 0 for an empty or unknown topic.
qint32 GetHelpContext(const QString& topic);
/// Shows the topic's page, or a general one where the table has no such topic. Failures are told to the user.
void ShowHelp(const QString& topic);

/// Where the learning guide lies, or would lie.
QString learningGuideFile();
/// The address of the product's pages, which an administrator puts under "Web Site" in section "Settings" of the
/// settings file. Empty when there is none, or what stands there is no web address.
QString webSite();

/// Who puts documents before the user. Both throw RuntimeError when they cannot.
struct DocumentViewer
{
    std::function<void(const QString& helpFile, qint32 context)> showHelpPage;
    std::function<void(const QUrl& document)> open;
};
/// Set once by the program's windows, by tests to one that takes notes.
void setDocumentViewer(DocumentViewer viewer);
/// Shows a document or a web page in whatever the desktop has for it. Throws RuntimeError when nothing does.
void openDocument(const QUrl& document);

} // namespace lumivane
