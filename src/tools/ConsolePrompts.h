#pragma once

#include "platform/Prompts.h"

namespace lumivane {

/// For programs that nobody sits in front of: messages go to the standard error output, every question is answered No
/// or with nothing.
class ConsolePrompts : public Prompts
{
public:
    void message(const QString& text, Icon icon) override;
    bool confirmAction(const QString& text) override;
    Answer askYesNoCancel(const QString& text) override;
    QString openFile(const FileQuestion& question) override;
    QString browseForFolder(const QString& title, const QString& startFolder) override;
    std::optional<QColor> chooseColor(const QColor& start) override;
    void setPointer(Pointer) override {}
    void doEvents() override {}
};

} // namespace lumivane
