#include "platform/Prompts.h"

namespace lumivane {

namespace {

/// Nobody to talk to: tools without windows, and tests that need no answers.
class SilentPrompts : public Prompts
{
public:
    void message(const QString&, Icon) override {}
    bool confirmAction(const QString&) override { return false; }
    Answer askYesNoCancel(const QString&) override { return Answer::No; }
    QString openFile(const FileQuestion&) override { return {}; }
    QString browseForFolder(const QString&, const QString&) override { return {}; }
    std::optional<QColor> chooseColor(const QColor&) override { return std::nullopt; }
    void setPointer(Pointer) override {}
    void doEvents() override {}
};

Prompts* sessionPrompts = nullptr;

} // namespace

void setPrompts(Prompts* newPrompts)
{
    sessionPrompts = newPrompts;
}

Prompts& prompts()
{
    static SilentPrompts silent;
    return sessionPrompts ? *sessionPrompts : silent;
}

} // namespace lumivane
