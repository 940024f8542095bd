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

    void message(const QString& text, Icon icon) override;
    bool confirmAction(const QString& text) override;
    Answer askYesNoCancel(const QString& text) override;
    QString openFile(const FileQuestion& question) override;
    QString saveFile(const FileQuestion& question) override;
    QString browseForFolder(const QString& title, const QString& startFolder) override;
    std::optional<QColor> chooseColor(const QColor& start) override;
    void setPointer(Pointer newPointer) override;
    void doEvents() override {}
};

} // namespace lumivane::test
