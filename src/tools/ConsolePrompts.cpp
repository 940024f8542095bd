#include "tools/ConsolePrompts.h"

#include "platform/ShownText.h"

#include <cstdio>

namespace lumivane {

namespace {

/// Messages are made of several lines with the line ends of boxes.
void tellOnError(const QString& text, const char* answer = "")
{
    std::fprintf(stderr, "%s%s\n", shownText(text).remove(QChar(u'\r')).toLocal8Bit().constData(), answer);
}

} // namespace

void ConsolePrompts::message(const QString& text, Icon)
{
    tellOnError(text);
}

bool ConsolePrompts::confirmAction(const QString& text)
{
    tellOnError(text, " (taken as No)");
    return false;
}

Prompts::Answer ConsolePrompts::askYesNoCancel(const QString& text)
{
    tellOnError(text, " (taken as Cancel)");
    return Answer::Cancel;
}

QString ConsolePrompts::openFile(const FileQuestion& question)
{
    tellOnError(question.title, " (nothing chosen)");
    return {};
}

QString ConsolePrompts::browseForFolder(const QString& title, const QString&)
{
    tellOnError(title, " (nothing chosen)");
    return {};
}

std::optional<QColor> ConsolePrompts::chooseColor(const QColor&)
{
    return {};
}

} // namespace lumivane
