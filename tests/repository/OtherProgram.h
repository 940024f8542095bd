#pragma once

#include <QByteArray>
#include <QString>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace lumivane::test {

/// Another program that works on a project file behind the store's back, for as long as this object lives.
class OtherProgram
{
public:
    explicit OtherProgram(const QString& fileName)
    {
        EXPECT_EQ(sqlite3_open(fileName.toUtf8().constData(), &m_handle), SQLITE_OK);
    }
    ~OtherProgram() { sqlite3_close(m_handle); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void run(const QByteArray& sql)
    {
        EXPECT_EQ(sqlite3_exec(m_handle, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_handle) << "\n"
            << sql.left(300).constData();
    }

private:
    sqlite3* m_handle = nullptr;
};

inline void runRaw(const QString& fileName, const QByteArray& sql)
{
    OtherProgram(fileName).run(sql);
}

} // namespace lumivane::test
