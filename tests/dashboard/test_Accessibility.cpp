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
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

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
            nameless.append(QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName());
    }
    return nameless;
}

/// Captions without a letter, or with one that is taken.
QStringList letterFaults(const QStringList& captions)
{
    QHash<QKeySequence, QString> taken;
    QStringList faults;
    for (const QString& caption : captions) {
        const QKeySequence key = QKeySequence::mnemonic(caption);
        if (key.isEmpty() || taken.contains(key))
            faults.append(taken.value(key, u"no letter"_s) + u": "_s + caption);
        taken.insert(key, caption);
    }
    return faults;
}

QStringList mnemonicFaults(const QDialog& dialog)
{
    QStringList captions;
    for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        if (!widget->isVisibleTo(&dialog))
            continue;
        if (label && label->buddy())
            captions.append(label->text());
        else if (button && !button->text().isEmpty() && button->text() != u"OK" && button->text() != u"Cancel")
            captions.append(button->text()); // the others have Enter and Esc
    }
    return letterFaults(captions);
}

QStringList menuFaults(const QList<QAction*>& entries)
{
    QStringList captions, faults;
    for (const QAction* entry : entries) {
        if (entry->isSeparator() || !entry->isVisible())
            continue;
        captions.append(entry->text());
        if (entry->menu())
            faults += menuFaults(entry->menu()->actions());
    }
    return letterFaults(captions) + faults;
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

using Accessibility = test::DashboardFixture;

TEST_F(Accessibility, EachDialogCanBeUsedByKeyboardAndReadAloud)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    ProgramWindows run;
    const std::pair<QString, MakeDialog> dialogs[] = {
        {u"frmAbout"_s, dialogOf<frmAbout>()},
        {u"frmAddAltPath"_s, dialogOf<frmAddAltPath>()},
        {u"frmAltPaths"_s, dialogOf<frmAltPaths>()},
        {u"frmCaption"_s, dialogOf<frmCaption>()},
        {u"frmDrillback"_s, dialogOf<frmDrillback>()},
        {u"frmExport"_s, dialogOf<frmExport>()},
        {u"frmImport"_s, dialogOf<frmImport>()},
        {u"frmImportFolders"_s, dialogOf<frmImportFolders>(ImportPreview())},
        {u"frmLogin"_s, [](ProgramWindows& windows) { return std::make_unique<frmLogin>(windows); }},
        {u"frmOpenWorkspace"_s, dialogOf<frmOpenWorkspace>(QString())},
        {u"frmOptions"_s, dialogOf<frmOptions>(QColor(Qt::white))},
        {u"frmPanelProperties"_s, dialogOf<frmPanelProperties>()},
        {u"frmRangeRelative"_s, dialogOf<frmRangeRelative>()},
        {u"frmSaveWorkspace"_s, dialogOf<frmSaveWorkspace>(QString(), QString())},
        {u"frmThresholds"_s, [](ProgramWindows&) { return std::make_unique<frmThresholds>(*gWorkspace->Panels(1)); }},
        {u"frmTip"_s, dialogOf<frmTip>()},
    };
    for (const auto& [name, make] : dialogs) {
        SCOPED_TRACE(name);
        const std::unique_ptr<QDialog> dialog = make(run);
        EXPECT_EQ(dialog->objectName(), name) << "the help topic of most dialogs";
        EXPECT_FALSE(dialog->windowTitle().isEmpty());
        EXPECT_EQ(namelessControls(*dialog), QStringList());
        EXPECT_EQ(mnemonicFaults(*dialog), QStringList());
        const auto buttons = dialog->findChildren<QPushButton*>();
        const auto isDefault = [](const QPushButton* button) { return button->isDefault(); };
        EXPECT_EQ(std::count_if(buttons.begin(), buttons.end(), isDefault), 1) << "buttons that Enter presses";
        EXPECT_LE(dialog->minimumSizeHint().width(), 1366);
        EXPECT_LE(dialog->minimumSizeHint().height(), 700);
    }
}

TEST_F(Accessibility, EachWindowCanBeUsedByKeyboardAndReadAloud)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    frmWorkbook workbook;
    ASSERT_TRUE(workbook.openWorkbook(writeFile(u"sales.csv"_s, "Region,Sales\nNorth,12\n")));
    for (const QMainWindow* window : std::initializer_list<QMainWindow*>{&start(), &workbook}) {
        EXPECT_EQ(namelessControls(*window), QStringList());
        EXPECT_EQ(menuFaults(window->menuBar()->actions()), QStringList());
        EXPECT_EQ(sharedShortcuts(*window), QStringList());
    }
}

} // namespace
