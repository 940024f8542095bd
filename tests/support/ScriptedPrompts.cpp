#include "support/ScriptedPrompts.h"

namespace lumivane::test {

namespace {
template <class T>
T next(std::deque<T>& queue, T otherwise)
{
    if (queue.empty())
        return otherwise;
    T answer = queue.front();
    queue.pop_front();
    return answer;
}
} // namespace

void ScriptedPrompts::message(const QString& text, Icon)
{
    shown.append(text);
}

bool ScriptedPrompts::confirmAction(const QString& text)
{
    asked.append(text);
    return next(confirmations, false);
}

Prompts::Answer ScriptedPrompts::askYesNoCancel(const QString& text)
{
    asked.append(text);
    return next(answers, Answer::Cancel);
}

QString ScriptedPrompts::openFile(const FileQuestion& question)
{
    asked.append(question.title);
    return next(files, QString());
}

QString ScriptedPrompts::saveFile(const FileQuestion& question)
{
    asked.append(question.title);
    return next(files, QString());
}

QString ScriptedPrompts::browseForFolder(const QString& title, const QString&)
{
    asked.append(title);
    return next(folders, QString());
}

std::optional<QColor> ScriptedPrompts::chooseColor(const QColor& start)
{
    colorAskedFrom = start;
    return next(colors, std::optional<QColor>());
}

void ScriptedPrompts::setPointer(Pointer newPointer)
{
    pointer = newPointer;
}

} // namespace lumivane::test
