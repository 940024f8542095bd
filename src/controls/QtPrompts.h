#pragma once

#include "platform/Prompts.h"

namespace lumivane {

/// Answers for the program: boxes, dialogs and the mouse pointer of the window system. All texts are shown as plain
/// text, since names from workbooks stand in them.
class QtPrompts : public Prompts
{
public:
    void message(const QString& text, Icon icon) override;
    bool confirmAction(const QString& text) override;
    Answer askYesNoCancel(const QString& text) override;
    QString openFile(const FileQuestion& question) override;
    QString saveFile(const FileQuestion& question) override;
    QString browseForFolder(const QString& title, const QString& startFolder) override;
    std::optional<QColor> chooseColor(const QColor& start) override;
    void setPointer(Pointer pointer) override;
    void doEvents() override;
};

} // namespace lumivane
