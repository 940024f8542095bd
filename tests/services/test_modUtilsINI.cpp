#include "services/ProgramFolder.h"
#include "services/modUtilsINI.h"
#include "support/TextTable.h"

#include <QFileInfo>
#include <QStringConverter>
#include <sys/stat.h>

namespace lumivane::test {

using namespace Qt::StringLiterals;

class SettingsFile : public ProgramFolder
{
protected:
    QString file = path(u"x.INI"_s);
};

TEST_F(SettingsFile, IsReadAsAProfile)
{
    for (const auto& [name, content, expected] : textTable<3>(R"(
        plain                    | [S]⏎K=v⏎              | v
        no line end              | [S]⏎K=v               | v
        case of section and key  | [s]⏎k=v               | v
        blanks around            | ··[S]⏎ K =  v w ⏎     | v w
        double quotes            | [S]⏎K=" v "⏎          | ·v·
        single quotes            | [S]⏎K='v'⏎            | v
        one pair of quotes only  | [S]⏎K=""v""⏎          | "v"
        lone quote               | [S]⏎K="⏎              | "
        first key wins           | [S]⏎K=v⏎K=w⏎          | v
        first section wins       | [S]⏎[S]⏎K=w⏎          | default
        comment line             | [S]⏎;K=w⏎K=v⏎         | v
        semicolon in a value     | [S]⏎K=a;b⏎            | a;b
        no escapes               | [S]⏎K=C:\new\table⏎   | C:\new\table
        equals sign in a value   | [S]⏎K=a=b⏎            | a=b
        key before any section   | K=w⏎[S]⏎              | default
        line without equals sign | [S]⏎K⏎K=v⏎            | v
        empty value              | [S]⏎K=⏎               | default
        section without end      | [S⏎K=v⏎               | default)")) {
        for (const QString& lineEnd : {u"\n"_s, u"\r\n"_s}) {
            write(file, QString(content).replace(u"\n"_s, lineEnd).toUtf8());
            EXPECT_EQ(GetIniString(file, u"S"_s, u"K"_s, u"default"_s), expected) << name;
        }
    }
    const auto valueOf = [&](const QByteArray& content) {
        write(file, content);
        return GetIniString(file, u"S"_s, u"K"_s, u"default"_s);
    };
    EXPECT_EQ(valueOf("\xEF\xBB\xBF[S]\n\tK=v\t"), u"v"_s) << "byte order mark, tabs";
    EXPECT_EQ(valueOf("[S]\nK=Gr\xF6\xDF\x65\n"), u"Größe"_s) << "old encoding";
}

TEST_F(SettingsFile, OfSixteenBitCharactersStaysOne)
{
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
        QStringEncoder encode(encoding, QStringConverter::Flag::WriteBom);
        write(file, encode(u"[S]\r\nK=Größe\r\n"_s));
        EXPECT_EQ(GetIniString(file, u"S"_s, u"K"_s, {}), u"Größe"_s);
        SetIniString(file, u"S"_s, u"L"_s, u"ä"_s);
        QStringEncoder again(encoding, QStringConverter::Flag::WriteBom);
        EXPECT_EQ(read(file), QByteArray(again(u"[S]\r\nK=Größe\r\nL=ä\r\n"_s)));
    }
    const QByteArray unmarked("[\0S\0]\0\n\0", 8);
    write(file, unmarked);
    SetIniString(file, u"S"_s, u"K"_s, u"v"_s);
    EXPECT_EQ(read(file), unmarked) << "left alone";
}

TEST_F(SettingsFile, APipeInItsPlaceHoldsNothingUp)
{
    ASSERT_EQ(mkfifo(file.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(GetIniString(file, u"S"_s, u"K"_s, u"default"_s), u"default"_s);
    SetIniString(file, u"S"_s, u"K"_s, u"v"_s);
    EXPECT_FALSE(QFileInfo(file).isFile());
}

TEST_F(SettingsFile, CutsLongValues)
{
    write(file, "[S]\nK=" + QByteArray(300, 'x'));
    EXPECT_EQ(GetIniString(file, u"S"_s, u"K"_s, {}).size(), 255);
}

TEST_F(SettingsFile, ReadsNumbers)
{
    for (const auto& [value, number] :
         textPairs("10 → 10 | -1 → -1 | 12min → 12 | x → 0 | → 7 | 16777215 → 16777215 | 99999999999 → 0")) {
        write(file, "[S]\nK=" + value.toUtf8());
        EXPECT_EQ(GetIniInt(file, u"S"_s, u"K"_s, 7), number.toInt()) << value;
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
    for (const QString& value : {u" blank "_s, u"\"quoted\""_s, u"Größe ; x=1"_s}) {
        SetIniString(file, u"S"_s, u"K"_s, value);
        EXPECT_EQ(GetIniString(file, u"S"_s, u"K"_s, {}), value) << value;
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
