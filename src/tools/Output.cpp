#include "tools/Output.h"

#include "platform/RuntimeError.h"
#include "platform/ShownText.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <cstdio>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

void printBytes(const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

/// What would act on a terminal stands in its escaped form, which means the same.
void printJsonDocument(const QJsonDocument& document)
{
    QString escaped;
    for (const QChar c : QString::fromUtf8(document.toJson(QJsonDocument::Compact)))
        escaped += isActing(c) ? QString(u"\\u%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'))) : QString(c);
    printBytes(escaped.toUtf8());
}

} // namespace

void printJson(const QJsonObject& object)
{
    printJsonDocument(QJsonDocument(object));
}

void printJson(const QJsonArray& array)
{
    printJsonDocument(QJsonDocument(array));
}

void printLine(const QString& line)
{
    printBytes(shownText(line).toUtf8());
}

void writePicture(const QImage& picture, const QString& file)
{
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly) || !picture.save(&target, "PNG") || !target.commit())
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The picture %1 cannot be written: %2."_s.arg(file, target.errorString()));
}

void printError(const QString& text, const char* remark)
{
    // Messages are made of several lines with the line ends of boxes.
    std::fprintf(stderr, "%s%s\n", shownText(text).remove(QChar(u'\r')).toLocal8Bit().constData(), remark);
}

} // namespace lumivane
