#include "services/modUtilsINI.h"

#include "platform/ApplicationInfo.h"
#include "platform/Checked.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <cmath>
#include <limits>
#include <optional>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestValue = 255;
constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

/// A settings file in memory.
struct IniText
{
    QList<QByteArray> lines; ///< each with its line end, as bytes: joined again they are the file. UTF-8 if it is wide.
    std::optional<QStringConverter::Encoding> wide; ///< the UTF-16 in which the file is written, where it is
};

QList<QByteArray> linesOf(const QByteArray& bytes)
{
    QList<QByteArray> lines;
    for (qsizetype start = 0; start < bytes.size();) {
        const qsizetype end = bytes.indexOf('\n', start);
        lines.append(bytes.sliced(start, (end < 0 ? bytes.size() : end + 1) - start));
        start += lines.last().size();
    }
    return lines;
}

/// Without lines when it is not there or cannot be read. A pipe or a device in its place would never come to an end.
IniText readIni(const QString& fileName)
{
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    // Some editors write UTF-16. Without a mark it could be anything, and is left alone.
    const auto encoding = QStringConverter::encodingForData(bytes);
    if (encoding == QStringConverter::Utf16LE || encoding == QStringConverter::Utf16BE) {
        QStringDecoder decoder(*encoding);
        return {linesOf(QString(decoder(bytes)).toUtf8()), encoding};
    }
    return bytes.contains('\0') ? IniText{} : IniText{linesOf(bytes), {}};
}

QByteArray bytesOf(const IniText& text)
{
    const QByteArray joined = text.lines.join();
    if (!text.wide)
        return joined;
    QStringEncoder encoder(*text.wide, QStringConverter::Flag::WriteBom);
    return encoder(QString::fromUtf8(joined));
}

/// Settings written by hand may be in an old 8-bit encoding; those that are no UTF-8 are read as such.
QString decoded(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

bool sameName(const QByteArray& bytes, const QString& name)
{
    return decoded(bytes.trimmed()).compare(name.trimmed(), Qt::CaseInsensitive) == 0;
}

bool isSectionLine(const QByteArray& line)
{
    return line.trimmed().startsWith('[');
}

bool isSectionNamed(QByteArray line, const QString& section)
{
    if (line.startsWith(byteOrderMark))
        line.remove(0, 3);
    line = line.trimmed();
    const qsizetype end = line.indexOf(']');
    return line.startsWith('[') && end > 0 && sameName(line.sliced(1, end - 1), section);
}

/// Where a key stands, or would be put. Of several sections or keys of one name the first counts.
struct IniPlace
{
    qsizetype section = -1; ///< line of the section's name, -1 without one
    qsizetype key = -1;     ///< line of the key, -1 without one
    qsizetype end = -1;     ///< line behind the section's last line that is not blank
};

IniPlace findPlace(const QList<QByteArray>& lines, const QString& section, const QString& key)
{
    IniPlace place;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines[i].trimmed();
        if (place.section < 0) {
            if (isSectionNamed(lines[i], section)) {
                place.section = i;
                place.end = i + 1;
            }
            continue;
        }
        if (isSectionLine(line))
            break;
        if (!line.isEmpty())
            place.end = i + 1;
        const qsizetype equals = line.indexOf('=');
        if (place.key < 0 && equals >= 0 && !line.startsWith(';') && sameName(line.first(equals), key))
            place.key = i;
    }
    return place;
}

bool isQuoted(const QString& value)
{
    return value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
}

QString readValue(const QByteArray& line)
{
    const QString value = decoded(line.sliced(line.indexOf('=') + 1)).trimmed();
    return isQuoted(value) ? value.sliced(1, value.size() - 2) : value;
}

/// Quotes are put round a value that would lose blanks or its own quotes when it is read.
QByteArray writtenValue(const QString& value)
{
    const bool needsQuotes = value != value.trimmed() || isQuoted(value);
    return (needsQuotes ? QString(u'"' + value + u'"') : value).toUtf8();
}

QByteArray lineEnd(const QByteArray& line)
{
    return line.endsWith("\r\n") ? "\r\n" : line.endsWith('\n') ? "\n" : "";
}

void putValue(QList<QByteArray>& lines, const QString& section, const QString& key, const QByteArray& value)
{
    const QByteArray newLine = lines.isEmpty() || lineEnd(lines.front()).isEmpty() ? "\n" : lineEnd(lines.front());
    const IniPlace place = findPlace(lines, section, key);
    if (place.key >= 0) {
        QByteArray& line = lines[place.key];
        line = line.first(line.indexOf('=') + 1) + value + lineEnd(line);
        return;
    }
    const QByteArray entry = key.toUtf8() + '=' + value + newLine;
    const qsizetype at = place.section >= 0 ? place.end : lines.size();
    if (at > 0 && lineEnd(lines[at - 1]).isEmpty())
        lines[at - 1] += newLine;
    if (place.section >= 0)
        lines.insert(at, entry);
    else
        lines << '[' + section.toUtf8() + ']' + newLine << entry;
}

bool hasLineBreak(const QString& text)
{
    return text.contains(u'\n') || text.contains(u'\r');
}

} // namespace

QString GetIniFile()
{
    return programFolder() + u'/' + executableName() + u".INI"_s;
}

QString GetIniString(const QString& File, const QString& Section, const QString& Key, const QString& Default)
{
    const QList<QByteArray> lines = readIni(File).lines;
    const IniPlace place = findPlace(lines, Section, Key);
    const QString value = place.key >= 0 ? readValue(lines[place.key]).left(longestValue) : QString();
    return value.isEmpty() ? Default : value;
}

qint32 GetIniInt(const QString& File, const QString& Section, const QString& Key, qint32 Default)
{
    const QString value = GetIniString(File, Section, Key, QString());
    if (value.isEmpty())
        return Default;
    const double number = std::trunc(leadingNumber(value));
    const bool fits = number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<qint32>::max();
    return fits ? static_cast<qint32>(number) : 0;
}

void SetIniString(const QString& File, const QString& Section, const QString& Key, const QString& Value)
{
    // A line break would make a second entry out of the value.
    if (hasLineBreak(Section) || hasLineBreak(Key) || hasLineBreak(Value))
        return;
    IniText text = readIni(File);
    if (text.lines.isEmpty() && QFileInfo::exists(File) && (!QFileInfo(File).isFile() || QFile(File).size() > 0))
        return; // there, but not readable: writing would lose what it holds
    putValue(text.lines, Section, Key, writtenValue(Value));
    QSaveFile file(File);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(bytesOf(text));
    file.commit();
}

} // namespace lumivane
