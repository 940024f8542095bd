#pragma once

#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "services/ProgramFolder.h"
#include "support/ThrownError.h"

#include <QVariant>
#include <memory>
#include <sqlite3.h>

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

    /// The rows of a query as text, columns separated by "|", null as "-".
    QStringList rows(const QString& sql) const
    {
        QStringList lines;
        const auto rs = db->OpenRecordset(sql);
        for (; !rs->EOF_(); rs->MoveNext()) {
            QStringList values;
            for (const QString& name : rs->fieldNames())
                values.append(rs->isNull(name) ? QStringLiteral("-") : rs->text(name));
            lines.append(values.join(u'|'));
        }
        return lines;
    }

    /// The sentence with which some work fails, or nothing.
    template <class Work>
    static QString failure(Work work)
    {
        return failureOf(work).text;
    }

    /// Changes a file behind the store's back, as another program would.
    static void runRaw(const QString& fileName, const char* sql)
    {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(fileName.toUtf8().constData(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }

    const QString file = path(QStringLiteral("lumivane.lvdu"));
    std::shared_ptr<Database> db;
};

} // namespace lumivane::test
