#pragma once

#include "platform/Prompts.h"

#include <QStringList>
#include <deque>

namespace lumivane::test {

/// Answers every question from queues filled beforehand and keeps what was shown. A question without an answer ready is
/// answered with No, Cancel or nothing.
class ScriptedPrompts : public Prompts
{
public:
    QStringList shown; ///< texts of message boxes, in order
    QStringList asked; ///< texts of questions, titles of file and folder dialogs, in order
    std::deque<bool> confirmations;
    std::deque<Answer> answers;
    std::deque<QString> files;
    std::deque<QString> folders;
    std::deque<std::optional<QColor>> colors;
    QColor colorAskedFrom; ///< what the last question for a colour began with
    Pointer pointer = Pointer::Default;

    void message(const QString& text, Icon) override { shown.append(text); }
    bool confirmAction(const QString& text) override { return answerTo(text, confirmations, false); }
    Answer askYesNoCancel(const QString& text) override { return answerTo(text, answers, Answer::Cancel); }
    QString openFile(const FileQuestion& question) override { return answerTo(question.title, files, QString()); }
    QString saveFile(const FileQuestion& question) override { return answerTo(question.title, files, QString()); }
    QString browseForFolder(const QString& title, const QString&) override
    {
        return answerTo(title, folders, QString());
    }
    std::optional<QColor> chooseColor(const QColor& start) override
    {
        colorAskedFrom = start;
        return next(colors, std::optional<QColor>());
    }
    void setPointer(Pointer newPointer) override { pointer = newPointer; }
    void doEvents() override {}

private:
    template <class T>
    T next(std::deque<T>& queue, T otherwise)
    {
        if (queue.empty())
            return otherwise;
        const T answer = queue.front();
        queue.pop_front();
        return answer;
    }
    template <class T>
    T answerTo(const QString& question, std::deque<T>& queue, T otherwise)
    {
        asked.append(question);
        return next(queue, otherwise);
    }
};

} // namespace lumivane::test
