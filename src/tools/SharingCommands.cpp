#include "platform/RuntimeError.h"
#include "sharing/DashboardExport.h"
#include "sharing/DashboardImport.h"
#include "tools/Commands.h"
#include "tools/OpenProject.h"
#include "tools/Output.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void giveUp(const QString& sentence)
{
    throw RuntimeError(RuntimeError::ApplicationDefined, sentence);
}

/// The entries with these names, all of them without a name. Throws for a name that is not there.
std::vector<DashboardEntry> chosenDashboards(const std::vector<DashboardEntry>& entries, const QStringList& names)
{
    if (names.isEmpty())
        return entries;
    std::vector<DashboardEntry> chosen;
    for (const QString& name : names) {
        const auto entry = std::find_if(entries.begin(), entries.end(), [&](const DashboardEntry& candidate) {
            return candidate.text.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (entry == entries.end())
            giveUp(u"There is no dashboard \"%1\" to choose."_s.arg(name));
        chosen.push_back(*entry);
    }
    return chosen;
}

std::vector<qint32> idsOf(const std::vector<DashboardEntry>& entries)
{
    std::vector<qint32> ids;
    for (const DashboardEntry& entry : entries)
        ids.push_back(entry.ID);
    return ids;
}

QJsonArray namesOf(const std::vector<DashboardEntry>& entries)
{
    QJsonArray names;
    for (const DashboardEntry& entry : entries)
        names.append(entry.text);
    return names;
}

QJsonArray foldersJson(const std::vector<ImportFolder>& folders)
{
    QJsonArray list;
    for (const ImportFolder& folder : folders)
        list.append(QJsonObject{{u"path"_s, folder.path},
                                {u"read"_s, folder.isRead},
                                {u"written"_s, folder.isWritten},
                                {u"exists"_s, folder.exists}});
    return list;
}

void runImport(DashboardImport& import, const std::vector<DashboardEntry>& chosen)
{
    const bool isDone = import.ImportDashboard(idsOf(chosen));
    if (!isDone || !import.faults().isEmpty())
        giveUp(u"The import is not complete, and what was written stays. "_s + import.faults().join(u'\n'));
}

} // namespace

int exportCommand(const CommandLine& line)
{
    const OpenProject project(line.argument(0), line.option(u"home"_s));
    std::vector<DashboardEntry> entries;
    if (!exportableDashboards(entries))
        giveUp(u"The dashboards of %1 cannot be read."_s.arg(line.argument(0)));
    const auto chosen = chosenDashboards(entries, line.argumentsFrom(2));
    if (chosen.empty())
        giveUp(u"There are no saved dashboards to export."_s);
    if (!ExportDashboard(line.argument(1), idsOf(chosen)))
        giveUp(u"%1 was not written as it should be."_s.arg(line.argument(1)));
    printJson(QJsonObject{{u"dashboards"_s, namesOf(chosen)}});
    return 0;
}

int importCommand(const CommandLine& line)
{
    const OpenProject project(line.argument(0), line.option(u"home"_s));
    DashboardImport import(line.argument(1));
    std::vector<DashboardEntry> entries;
    if (!import.Open() || !import.importableDashboards(entries))
        giveUp(u"Nothing was imported."_s);
    if (entries.empty())
        giveUp(u"There are no dashboards to import from."_s);
    const auto chosen = chosenDashboards(entries, line.argumentsFrom(2));
    const auto preview = import.preview(idsOf(chosen));
    if (!preview)
        giveUp(preview.reason());
    const bool onlyList = line.flag(u"list"_s);
    if (!onlyList)
        runImport(import, chosen);
    printJson(QJsonObject{{u"dashboards"_s, namesOf(chosen)},
                          {u"panels"_s, preview.value().panels},
                          {u"sources"_s, preview.value().sources},
                          {u"folders"_s, foldersJson(preview.value().folders)},
                          {u"missing"_s, QJsonArray::fromStringList(preview.value().missingWorkbooks)},
                          {u"imported"_s, !onlyList}});
    return 0;
}

} // namespace lumivane
