#pragma once

#include "platform/ApplicationInfo.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"
#include "services/modMain.h"
#include "services/modUtilsLog.h"
#include "support/QtPrinting.h"
#include "support/ScriptedPrompts.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumivane::test {

/// A program folder of its own for each test, with the log in it, a fixed clock and somebody who notes what is shown.
class ProgramFolder : public testing::Test
{
protected:
    ProgramFolder()
    {
        setProgramFolder(home.path());
        setPrompts(&user);
        Clock::setFixed(QDateTime(QDate(2026, 11, 24), QTime(10, 30, 5)));
        gSuppressMessages = false;
        InitFileLog(GetLogFile(), false);
    }
    ~ProgramFolder() override
    {
        setDatabaseLog(nullptr);
        setPrompts(nullptr);
        Clock::setFixed({});
        gLogToFile = false;
        setProgramFolder({});
    }

    QString path(const QString& name) const { return home.filePath(name); }
    static void write(const QString& fileName, const QByteArray& bytes)
    {
        QFile file(fileName);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << fileName.toStdString();
        file.write(bytes);
    }
    static QByteArray read(const QString& fileName)
    {
        QFile file(fileName);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    /// What the log holds behind the header of this start.
    QByteArray logged() const
    {
        const QByteArray all = read(GetLogFile());
        return all.sliced(all.indexOf("\tLumivane\r\n") + 11);
    }

    QTemporaryDir home;
    ScriptedPrompts user;
};

} // namespace lumivane::test
