#pragma once

#include "platform/Prompts.h"

#include <QStringList>

namespace lumivane {

/// What a pass over the panels has to report about new versions. While one lives, the texts wait; the outermost shows
/// them in one box when it ends, so that a damaged workbook does not hold up the others.
class PassReport
{
public:
    PassReport();
    ~PassReport();
    Q_DISABLE_COPY_MOVE(PassReport)

    /// Shown at once where no pass is under way. A text that waits already is not repeated.
    static void add(const QString& text);
};

/// While one lives, no message box comes up: the texts go to the report of the pass when it ends. For work during which
/// the project is locked. Questions come through.
class HeldMessages : public Prompts
{
public:
    HeldMessages();
    ~HeldMessages() override;
    Q_DISABLE_COPY_MOVE(HeldMessages)

    void message(const QString& text, Icon icon) override;
    bool confirmAction(const QString& text) override { return m_outer.confirmAction(text); }
    Answer askYesNoCancel(const QString& text) override { return m_outer.askYesNoCancel(text); }
    QString openFile(const FileQuestion& question) override { return m_outer.openFile(question); }
    QString saveFile(const FileQuestion& question) override { return m_outer.saveFile(question); }
    QString browseForFolder(const QString& title, const QString& startFolder) override
    {
        return m_outer.browseForFolder(title, startFolder);
    }
    std::optional<QColor> chooseColor(const QColor& start) override { return m_outer.chooseColor(start); }
    void setPointer(Pointer pointer) override { m_outer.setPointer(pointer); }
    void doEvents() override { m_outer.doEvents(); }

private:
    Prompts& m_outer;
    QStringList m_texts;
};

} // namespace lumivane
