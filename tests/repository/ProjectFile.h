#pragma once

#include "repository/OtherProgram.h"
#include "repository/ProjectRows.h"
#include "repository/clsPanelSource.h"
#include "services/ProgramFolder.h"
#include "support/ThrownError.h"

#include <memory>

namespace lumivane::test {

/// An empty project that is open, in a program folder of its own.
class ProjectFile : public ProgramFolder
{
protected:
    ProjectFile()
    {
        Database::create(file);
        db = Database::open(file, databaseConnect());
        gDB = db;
        gSources = std::make_shared<clsSources>();
    }
    ~ProjectFile() override
    {
        gDB.reset();
        gSources.reset();
    }

    QStringList rows(const QString& sql) const { return rowsOf(*db, sql); }

    /// The sentence with which some work fails, or nothing.
    template <class Work>
    static QString failure(Work work)
    {
        return failureOf(work).text;
    }

    const QString file = path(QStringLiteral("lumivane.lvdu"));
    std::shared_ptr<Database> db;
};

} // namespace lumivane::test
