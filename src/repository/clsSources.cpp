#include "platform/ApplicationInfo.h"
#include "platform/Clock.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"

namespace lumivane {

std::shared_ptr<clsSources> gSources;

using namespace Qt::StringLiterals;

void clsSources::ClearFlags()
{
    for (const auto& source : m_sources)
        source->ClearFlags();
}

std::shared_ptr<clsPanelSource> clsSources::Source(int ID) const
{
    const auto found = m_byId.find(ID);
    return found == m_byId.end() ? nullptr : found->second;
}

std::shared_ptr<clsPanelSource> clsSources::SourceByIndex(int Ndx) const
{
    return Ndx >= 1 && Ndx <= Count() ? m_sources[size_t(Ndx) - 1] : nullptr;
}

int clsSources::Count() const
{
    return int(m_sources.size());
}

qint16 clsSources::AddSource(const QString& FullPath)
{
    const auto isThisFile = [&](const QString& path) { return isSameFile(path, FullPath); };
    for (const auto& source : m_sources) {
        if (isThisFile(source->DestFolder + source->NewestFile) ||
            (source->ownsFullPath() && isThisFile(source->FullPath)))
            return source->ID;
    }
    const auto source = std::make_shared<clsPanelSource>();
    source->FullPath = FullPath;
    source->DestFolder = withDelimiter(FileFolder(FullPath));
    source->NewestFile = FilePart(FullPath);
    source->Mask = source->NewestFile;
    source->CheckEvery = 1000;
    source->LastChecked = Clock::now();
    source->UpdateType = u"default"_s;
    source->LastUpdated = FileDateTime(FullPath);
    source->SaveToDB(gDB);
    add(source);
    return source->ID;
}

bool clsSources::LoadAll(const std::shared_ptr<Database>& DB)
{
    std::shared_ptr<Recordset> rs;
    if (!SQL_OpenRecordset(DB, rs, u"SELECT * FROM LvnPanelSource"_s, true, u"clsPanelSource"_s, u"LoadFromDB"_s))
        return false;
    try {
        for (; !rs->EOF_(); rs->MoveNext()) {
            const auto source = std::make_shared<clsPanelSource>();
            source->LoadFromRecSet(rs);
            source->chkHasCustom(source->ID, DB);
            add(source);
        }
        return true;
    } catch (const RuntimeError& error) {
        LogError(u"clsSources"_s, u"LoadAll"_s, error.number(), error.description(), false);
        return false;
    }
}

void clsSources::Cleanup() {}

void clsSources::add(const std::shared_ptr<clsPanelSource>& source)
{
    if (!m_byId.emplace(source->ID, source).second)
        throw RuntimeError(457, u"A source with the id %1 is there already."_s.arg(source->ID));
    m_sources.push_back(source);
}

} // namespace lumivane
