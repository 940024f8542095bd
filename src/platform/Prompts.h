#pragma once

#include <QColor>
#include <QString>
#include <optional>

namespace lumivane {

/// Everything that the program asks its user or says outside its own windows. The program answers with boxes,
/// tests with a script; no code below the windows opens a box by itself.
class Prompts
{
public:
    enum class Icon { Information, Exclamation, Critical, Question };
    enum class Answer { Yes, No, Cancel };
    enum class Pointer { Default, Hourglass, ArrowHourglass };

    struct FileQuestion
    {
        QString title;
        QString filter;      ///< as in "Project files (*.lvdu)"; several are separated by ";;"
        QString startFolder; ///< empty: where the last file was chosen
        QString suffix = {}; ///< added to a name that is typed without one
    };

    virtual ~Prompts() = default;

    /// Shows a box and returns when it has been closed. The title is the application's.
    virtual void message(const QString& text, Icon icon) = 0;
    /// A Yes/No question with the title "Confirm Action"; the default is No. True for Yes.
    virtual bool confirmAction(const QString& text) = 0;
    virtual Answer askYesNoCancel(const QString& text) = 0;

    /// The chosen existing file, or empty.
    virtual QString openFile(const FileQuestion& question) = 0;
    /// The name of a file to be written, or empty. Asks before an existing one is named.
    virtual QString saveFile(const FileQuestion& question) { return {}; }
    /// The chosen folder without a delimiter at its end, or empty.
    virtual QString browseForFolder(const QString& title, const QString& startFolder) = 0;
    virtual std::optional<QColor> chooseColor(const QColor& start) = 0;

    virtual void setPointer(Pointer pointer) = 0;
    /// Lets waiting window events run, the timer's tick among them.
    virtual void doEvents() = 0;
};

/// Who talks to the user for this session; set once by the program's main function, by tests to a scripted answerer.
/// While none is set, nothing is shown and every question is answered No or with nothing.
void setPrompts(Prompts* prompts);
Prompts& prompts();

} // namespace lumivane
