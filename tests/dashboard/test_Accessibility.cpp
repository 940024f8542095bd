#include "assist/frmAbout.h"
#include "assist/frmCaption.h"
#include "assist/frmDrillback.h"
#include "assist/frmTip.h"
#include "dashboard/DashboardFixture.h"
#include "dashboard/ProgramWindows.h"
#include "dashboard/frmLogin.h"
#include "dashboard/frmOpenWorkspace.h"
#include "dashboard/frmOptions.h"
#include "dashboard/frmSaveWorkspace.h"
#include "panel/frmPanelProperties.h"
#include "panel/frmRangeRelative.h"
#include "repository/clsWorkspace.h"
#include "sharing/ImportPreview.h"
#include "sharing/frmAddAltPath.h"
#include "sharing/frmAltPaths.h"
#include "sharing/frmExport.h"
#include "sharing/frmImport.h"
#include "sharing/frmImportFolders.h"
#include "thresholds/frmThresholds.h"
#include "viewer/frmWorkbook.h"

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

QString described(const QWidget& widget)
{
    return QString::fromLatin1(widget.metaObject()->className()) + u' ' + widget.objectName();
}

/// A part of a larger control, which speaks for it.
bool belongsToAnother(const QWidget& widget)
{
    const QWidget* parent = widget.parentWidget();
    return qobject_cast<const QComboBox*>(parent) || qobject_cast<const QAbstractSpinBox*>(parent) ||
           qobject_cast<const QHeaderView*>(&widget) || widget.focusProxy();
}

/// What can be reached with the keyboard but says nothing to who cannot see it.
QStringList namelessControls(const QWidget& window)
{
    QStringList nameless;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisibleTo(&window) || belongsToAnother(*widget))
            continue;
        const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(widget);
        if (!seen || seen->text(QAccessible::Name).trimmed().isEmpty())
            nameless.append(described(*widget));
    }
    return nameless;
}

/// Notes the letter of a caption, and complains about one that has none, or one that is taken.
class Mnemonics
{
public:
    QStringList complaints;

    void add(const QString& caption)
    {
        const QKeySequence key = QKeySequence::mnemonic(caption);
        if (key.isEmpty())
            complaints.append(u"no letter: "_s + caption);
        else if (m_taken.contains(key))
            complaints.append(u"one letter: "_s + m_taken.value(key) + u", "_s + caption);
        m_taken.insert(key, caption);
    }

private:
    QHash<QKeySequence, QString> m_taken;
};

/// OK and Cancel have Enter and Esc.
bool hasKeyOfItsOwn(const QPushButton& button)
{
    return button.text() == u"OK" || button.text() == u"Cancel";
}

QStringList mnemonicFaults(const QDialog& dialog)
{
    Mnemonics letters;
    for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&dialog))
            continue;
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const auto* push = qobject_cast<const QPushButton*>(widget);
        if (label && label->buddy())
            letters.add(label->text());
        else if (button && !button->text().isEmpty() && !(push && hasKeyOfItsOwn(*push)))
            letters.add(button->text());
    }
    return letters.complaints;
}

QStringList menuFaults(const QList<QAction*>& entries)
{
    Mnemonics letters;
    QStringList faults;
    for (const QAction* entry : entries) {
        if (entry->isSeparator() || !entry->isVisible())
            continue;
        letters.add(entry->text());
        if (entry->menu())
            faults += menuFaults(entry->menu()->actions());
    }
    return letters.complaints + faults;
}

QStringList sharedShortcuts(const QWidget& window)
{
    QHash<QKeySequence, QString> taken;
    QStringList shared;
    for (const QAction* action : window.findChildren<QAction*>()) {
        for (const QKeySequence& keys : action->shortcuts()) {
            if (taken.contains(keys))
                shared.append(keys.toString() + u": "_s + taken.value(keys) + u", "_s + action->text());
            taken.insert(keys, action->text());
        }
    }
    return shared;
}

using MakeDialog = std::function<std::unique_ptr<QDialog>(ProgramWindows&)>;

template <class Dialog, class... Arguments>
MakeDialog dialogOf(Arguments... arguments)
{
    return [=](ProgramWindows&) { return std::make_unique<Dialog>(arguments...); };
}

struct DialogRow
{
    const char* name;
    MakeDialog make;
};

void PrintTo(const DialogRow& row, std::ostream* out)
{
    *out << row.name;
}

class EveryDialog : public test::DashboardFixture, public testing::WithParamInterface<DialogRow>
{
};

TEST_P(EveryDialog, CanBeUsedByKeyboardAndReadAloud)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    ProgramWindows windows;
    const std::unique_ptr<QDialog> dialog = GetParam().make(windows);
    EXPECT_EQ(dialog->objectName(), QString::fromLatin1(GetParam().name)) << "the help topic of most dialogs";
    EXPECT_FALSE(dialog->windowTitle().isEmpty());
    EXPECT_EQ(namelessControls(*dialog), QStringList());
    EXPECT_EQ(mnemonicFaults(*dialog), QStringList());

    qsizetype defaults = 0;
    for (const QPushButton* button : dialog->findChildren<QPushButton*>())
        defaults += button->isDefault();
    EXPECT_EQ(defaults, 1) << "buttons that Enter presses";
    EXPECT_LE(dialog->minimumSizeHint().width(), 1366);
    EXPECT_LE(dialog->minimumSizeHint().height(), 700);
}

const DialogRow dialogRows[] = {
    {"frmAbout", dialogOf<frmAbout>()},
    {"frmAddAltPath", dialogOf<frmAddAltPath>()},
    {"frmAltPaths", dialogOf<frmAltPaths>()},
    {"frmCaption", dialogOf<frmCaption>()},
    {"frmDrillback", dialogOf<frmDrillback>()},
    {"frmExport", dialogOf<frmExport>()},
    {"frmImport", dialogOf<frmImport>()},
    {"frmImportFolders", dialogOf<frmImportFolders>(ImportPreview())},
    {"frmLogin", [](ProgramWindows& windows) { return std::make_unique<frmLogin>(windows); }},
    {"frmOpenWorkspace", dialogOf<frmOpenWorkspace>(QString())},
    {"frmOptions", dialogOf<frmOptions>(QColor(Qt::white))},
    {"frmPanelProperties", dialogOf<frmPanelProperties>()},
    {"frmRangeRelative", dialogOf<frmRangeRelative>()},
    {"frmSaveWorkspace", dialogOf<frmSaveWorkspace>(QString(), QString())},
    {"frmThresholds", [](ProgramWindows&) { return std::make_unique<frmThresholds>(*gWorkspace->Panels(1)); }},
    {"frmTip", dialogOf<frmTip>()},
};
INSTANTIATE_TEST_SUITE_P(Dialogs, EveryDialog, testing::ValuesIn(dialogRows),
                         [](const auto& row) { return row.param.name; });

using EveryWindow = test::DashboardFixture;

TEST_F(EveryWindow, TheMainWindowCanBeUsedByKeyboardAndReadAloud)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    EXPECT_EQ(namelessControls(window()), QStringList());
    EXPECT_EQ(menuFaults(window().menuBar()->actions()), QStringList());
    EXPECT_EQ(sharedShortcuts(window()), QStringList());
}

TEST_F(EveryWindow, AWorkbookWindowToo)
{
    QFile file(programFile(u"sales.csv"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Region,Sales\nNorth,12\n");
    file.close();
    frmWorkbook workbook;
    ASSERT_TRUE(workbook.openWorkbook(file.fileName()));
    EXPECT_EQ(namelessControls(workbook), QStringList());
    EXPECT_EQ(menuFaults(workbook.menuBar()->actions()), QStringList());
    EXPECT_EQ(sharedShortcuts(workbook), QStringList());
}

} // namespace
