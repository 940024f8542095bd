#include "tools/Commands.h"

#include "platform/Failures.h"
#include "tools/Output.h"

#include <QList>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

struct Command
{
    QString name;
    QString usage; ///< what stands behind the name
    CommandForm form;
    int (*run)(const CommandLine&);
};

const QMap<QString, QStringList> engineChoices{{u"host"_s, {u"embedded"_s, u"calc"_s}},
                                               {u"metrics"_s, {u"file"_s, u"calc"_s}}};

CommandForm workbookForm(QStringList options, qsizetype arguments)
{
    CommandForm form;
    form.options = QStringList{u"host"_s, u"metrics"_s} + options;
    form.choices = engineChoices;
    form.leastArguments = form.mostArguments = arguments;
    return form;
}

CommandForm locateForm()
{
    CommandForm form;
    form.required = {u"pic-range"_s, u"relative-to"_s, u"content-match"_s};
    form.options = form.required + QStringList{u"home"_s};
    form.flags = {u"adjust"_s};
    form.leastArguments = form.mostArguments = 2;
    return form;
}

CommandForm projectForm(qsizetype least, qsizetype most, const QStringList& options = {})
{
    CommandForm form;
    form.options = options;
    form.leastArguments = least;
    form.mostArguments = most;
    return form;
}

CommandForm sharingForm(const QStringList& flags)
{
    CommandForm form = projectForm(2, 10'000, {u"home"_s});
    form.flags = flags;
    return form;
}

const QList<Command>& commands()
{
    static const QString engine = u"[--host embedded|calc] [--metrics file|calc] "_s;
    static const QList<Command> list{
        {u"new-project"_s, u"FILE"_s, projectForm(1, 1), newProjectCommand},
        {u"new-log"_s, u"FILE"_s, projectForm(1, 1), newLogCommand},
        {u"inspect"_s, engine + u"WORKBOOK"_s, workbookForm({}, 1), inspectCommand},
        {u"render"_s, engine + u"[--scale N] WORKBOOK SHEET RANGE OUT.png"_s, workbookForm({u"scale"_s}, 4),
         renderCommand},
        {u"render-chart"_s, engine + u"[--scale N] WORKBOOK SHEET NAME OUT.png"_s, workbookForm({u"scale"_s}, 4),
         renderChartCommand},
        {u"locate"_s,
         u"[--home DIR] WORKBOOK SHEET --pic-range TEXT --relative-to top|bottom|contents --content-match TEXT "
         "[--adjust]"_s,
         locateForm(), locateCommand},
        {u"refresh"_s, u"[--home DIR] PROJECT [DASHBOARD]"_s, projectForm(1, 2, {u"home"_s}), refreshCommand},
        {u"snapshot"_s, u"[--home DIR] PROJECT DASHBOARD OUT.png"_s, projectForm(3, 3, {u"home"_s}), snapshotCommand},
        {u"export"_s, u"[--home DIR] PROJECT OUT.lvds [DASHBOARD...]"_s, sharingForm({}), exportCommand},
        {u"import"_s, u"[--home DIR] [--list] PROJECT SHARED.lvds [DASHBOARD...]"_s, sharingForm({u"list"_s}),
         importCommand},
        {u"sql"_s, u"PROJECT STATEMENT"_s, projectForm(2, 2), sqlCommand}};
    return list;
}

int refuse(const QString& reason, const QList<Command>& shown)
{
    printError(u"lumivanectl: "_s + reason);
    for (const Command& command : shown)
        printError(u"usage: lumivanectl %1 %2"_s.arg(command.name, command.usage));
    return 2;
}

} // namespace

int runCommand(const QStringList& words)
{
    const QString name = words.value(0);
    for (const Command& command : commands()) {
        if (command.name != name)
            continue;
        try {
            return command.run(CommandLine(words.mid(1), command.form));
        } catch (const UsageError& error) {
            return refuse(QString::fromUtf8(error.what()), {command});
        } catch (const std::exception& failure) {
            printError(u"lumivanectl: "_s + describedFailure(failure).description());
            return 1;
        }
    }
    return refuse(name.isEmpty() ? u"Which command?"_s : u"There is no command %1."_s.arg(name), commands());
}

} // namespace lumivane
