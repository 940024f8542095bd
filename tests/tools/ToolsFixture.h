#pragma once

#include "Book.h"
#include "support/QtPrinting.h"
#include "tools/Commands.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumivane::test {

/// What a call of lumivanectl left behind.
struct Outcome
{
    int status = -1;
    QString output, errors;

    QJsonObject object() const { return QJsonDocument::fromJson(output.toUtf8()).object(); }
    QJsonArray array() const { return QJsonDocument::fromJson(output.toUtf8()).array(); }
};

/// Runs commands on files in a folder of its own.
class ToolsFixture : public testing::Test
{
protected:
    Outcome call(const QStringList& words)
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        Outcome outcome;
        outcome.status = runCommand(words);
        outcome.output = QString::fromStdString(testing::internal::GetCapturedStdout());
        outcome.errors = QString::fromStdString(testing::internal::GetCapturedStderr());
        return outcome;
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }

    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace lumivane::test
