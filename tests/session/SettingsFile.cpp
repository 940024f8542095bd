#include "session/ProgramFolder.h"
#include "session/modUtilsINI.h"

#include <QFileInfo>

namespace lumivane::test {

using namespace Qt::StringLiterals;

class SettingsFile : public ProgramFolder
{
protected:
    QString file = path(u"x.INI"_s);
};

TEST_F(SettingsFile, IsReadAsAProfile)
{
    const struct
    {
        const char* name;
        QByteArray content;
        const char* expected;
    } rows[] = {
        {"plain", "[S]\nK=v\n", "v"},
        {"CR LF", "[S]\r\nK=v\r\n", "v"},
        {"no line end", "[S]\nK=v", "v"},
        {"case of section and key", "[s]\nk=v", "v"},
        {"blanks around", "  [S]\n \tK =  v w \t\n", "v w"},
        {"byte order mark", "\xEF\xBB\xBF[S]\nK=v", "v"},
        {"double quotes", "[S]\nK=\" v \"\n", " v "},
        {"single quotes", "[S]\nK='v'\n", "v"},
        {"one pair of quotes only", "[S]\nK=\"\"v\"\"\n", "\"v\""},
        {"lone quote", "[S]\nK=\"\n", "\""},
        {"first key wins", "[S]\nK=v\nK=w\n", "v"},
        {"first section wins", "[S]\n[S]\nK=w\n", "default"},
        {"comment line", "[S]\n;K=w\nK=v\n", "v"},
        {"semicolon in a value", "[S]\nK=a;b\n", "a;b"},
        {"no escapes", "[S]\nK=C:\\new\\table\n", "C:\\new\\table"},
        {"equals sign in a value", "[S]\nK=a=b\n", "a=b"},
        {"other section", "[T]\nK=w\n", "default"},
        {"key before any section", "K=w\n[S]\n", "default"},
        {"line without equals sign", "[S]\nK\nK=v\n", "v"},
        {"empty value", "[S]\nK=\n", "default"},
        {"old encoding",
         "[S]\nK=Gr\xF6\xDF"
         "e\n",
         "Größe"},
        {"section without end", "[S\nK=v\n", "default"},
    };
    for (const auto& row : rows) {
        write(file, row.content);
        EXPECT_EQ(GetIniString(file, u"S"_s, u"K"_s, u"default"_s), QString::fromUtf8(row.expected)) << row.name;
    }
}

TEST_F(SettingsFile, CutsLongValues)
{
    write(file, "[S]\nK=" + QByteArray(300, 'x'));
    EXPECT_EQ(GetIniString(file, u"S"_s, u"K"_s, {}).size(), 255);
}

TEST_F(SettingsFile, ReadsNumbers)
{
    const struct
    {
        QByteArray value;
        int expected;
    } rows[] = {{"10", 10}, {"-1", -1}, {"12min", 12}, {"x", 0}, {"", 7}, {"16777215", 16777215}, {"99999999999", 0}};
    for (const auto& row : rows) {
        write(file, "[S]\nK=" + row.value);
        EXPECT_EQ(GetIniInt(file, u"S"_s, u"K"_s, 7), row.expected) << row.value.constData();
    }
}

TEST_F(SettingsFile, ChangesOneLineAndNothingElse)
{
    const struct
    {
        const char* name;
        QByteArray before;
        QByteArray after;
    } rows[] = {
        {"new file", "", "[S]\nK=v\n"},
        {"value in place", "; top\r\n[S]\r\n K = w \r\nL=1\r\n", "; top\r\n[S]\r\n K =v\r\nL=1\r\n"},
        {"first of two keys", "[S]\nk=1\nK=2\n", "[S]\nk=v\nK=2\n"},
        {"new key behind the last, before blank lines", "[S]\r\nL=1\r\n; end\r\n\r\n[T]\r\n",
         "[S]\r\nL=1\r\n; end\r\nK=v\r\n\r\n[T]\r\n"},
        {"new key at an open end", "[S]\nL=1", "[S]\nL=1\nK=v\n"},
        {"new section at an open end", "[T]\r\nK=w", "[T]\r\nK=w\r\n[S]\r\nK=v\r\n"},
        {"commented key stays", "[S]\n;K=w\n", "[S]\n;K=w\nK=v\n"},
        {"strange bytes stay", "\xEF\xBB\xBF[S]\nX=\xFF\x01\n\n\n\rK=w\nL=%20,\\\n",
         "\xEF\xBB\xBF[S]\nX=\xFF\x01\n\n\n\rK=v\nL=%20,\\\n"},
        {"last line without end keeps none", "[S]\nK=w", "[S]\nK=v"},
    };
    for (const auto& row : rows) {
        write(file, row.before);
        SetIniString(file, u"S"_s, u"K"_s, u"v"_s);
        EXPECT_EQ(read(file), row.after) << row.name;
    }
}

TEST_F(SettingsFile, GivesBackWhatWasWritten)
{
    for (const QString& value : {u"C:\\Data\\new"_s, u" blank "_s, u"\"quoted\""_s, u"Größe ; x=1"_s, u"a,b"_s}) {
        SetIniString(file, u"S"_s, u"K"_s, value);
        EXPECT_EQ(GetIniString(file, u"S"_s, u"K"_s, {}), value) << value.toStdString();
    }
}

TEST_F(SettingsFile, ALineBreakCannotSmuggleInAnEntry)
{
    write(file, "[S]\nK=w\n");
    SetIniString(file, u"S"_s, u"K"_s, u"v\n[Settings]\nLog DB=/x"_s);
    EXPECT_EQ(read(file), "[S]\nK=w\n");
}

TEST_F(SettingsFile, AFolderThatIsNotThereIsSurvived)
{
    SetIniString(path(u"none/x.INI"_s), u"S"_s, u"K"_s, u"v"_s);
    EXPECT_FALSE(QFileInfo::exists(path(u"none"_s)));
    EXPECT_EQ(GetIniInt(path(u"none/x.INI"_s), u"S"_s, u"K"_s, -1), -1);
}

} // namespace lumivane::test
