#include "tools/ConsolePrompts.h"

#include "tools/Output.h"

namespace lumivane {

void ConsolePrompts::message(const QString& text, Icon)
{
    printError(text);
}

bool ConsolePrompts::confirmAction(const QString& text)
{
    printError(text, " (taken as No)");
    return false;
}

Prompts::Answer ConsolePrompts::askYesNoCancel(const QString& text)
{
    printError(text, " (taken as Cancel)");
    return Answer::Cancel;
}

QString ConsolePrompts::openFile(const FileQuestion& question)
{
    printError(question.title, " (nothing chosen)");
    return {};
}

QString ConsolePrompts::browseForFolder(const QString& title, const QString&)
{
    printError(title, " (nothing chosen)");
    return {};
}

std::optional<QColor> ConsolePrompts::chooseColor(const QColor&)
{
    return {};
}

} // namespace lumivane
